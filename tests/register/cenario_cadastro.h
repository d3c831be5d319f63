#pragma once

#include "apoio.h"
#include "platform/caixas.h"
#include "register/estado.h"
#include "register/falunos.h"
#include "register/login.h"
#include "startup/estado.h"
#include "support/suporte.h"
#include "visual/janela_ativa.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

namespace quorel::teste {

/// The rows of most tests: Turma A (1, of Ana Lima, "amora") with Ari, Bia and Caio, Turma B (2, of Beto Reis, "Caju")
/// with Dora, and Turma C (3, of Ana Lima, without a password) with nobody. The pupils' codes are 1 to 4.
QString linhasDeSempre();

/// A register opened as at the start of the program, the shell's hook, and the teacher's windows, shown.
class CenarioCadastro final
{
public:
    /// @param linhas  SQL that fills the tables before the start
    explicit CenarioCadastro(const QString &linhas = linhasDeSempre());
    ~CenarioCadastro();

    fAlunos &alunos() { return *mAlunos; }
    Login &login();
    QStringList sql(const QString &texto) const { return mRegistro.sql(texto); } ///< plain, on the file
    QString native() const { return mRegistro.native(); }

    QPushButton &botao(const QString &nome); ///< of either window
    QLineEdit &campo(const QString &nome); ///< likewise
    QComboBox &combo(const QString &nome);
    bool aberto(const QString &quadro); ///< whether a frame shows

    void aperta(const QString &botao); ///< with the mouse
    void digita(const QString &campo, const QString &texto); ///< in place of what stands there, key by key
    void escolhe(const QString &combo, const QString &texto); ///< from its list, by keys
    void escreve(const QString &combo, const QString &texto); ///< types over what stands there, and clicks there
    void abreCadastro(qint32 classe); ///< the pupils' register of a class, the password having been given

    /// Steps of a teacher, "; " between them: "CmdX" presses a button, "TxtX=text" types, "CmbX=text" chooses from a
    /// list, "CmbX~text" types there, "CmbX=" empties it, "X:Tab" comes to a control and presses a key, "X?text" fails
    /// the test unless X shows the text (see mostra). The password is given before each, and a window that was closed
    /// is shown again.
    void faz(const QString &passos);

    /// The text of a field or combo, "fechada" of one that is disabled; of a button "sim" when it can be pressed, else
    /// "não". By other names: "aluno" and "classe", what their frame has on display and its position; "gravados", how
    /// many pupils and classes the file has; "corrente", the current class; "foco", who has it.
    QString mostra(const QString &nome);
    void confirmaCaixas(); ///< from now on every box is answered with yes or OK, and kept in caixas

    std::vector<Caixa> caixas; ///< shown, in order; of what the data layer reports the title alone
    QStringList titulos; ///< captions that fPrincip was given
    int paineis = 0; ///< how often the panel was brought back
    int desempenhos = 0; ///< how often the performance window was asked for

private:
    Registro mRegistro;
    JanelaAtiva mAtiva;
    std::unique_ptr<fAlunos> mAlunos;
};

/// Types a text, accents included, key by key.
void tecla(QWidget &alvo, const QString &texto);

/// Gives a control the focus and presses a key there.
void teclaEm(QWidget &controle, Qt::Key key);

/// What a data combo lists.
QStringList itens(const QComboBox &combo);

// The rows as they stand in the file, ", " between them.
QString alunos(const CenarioCadastro &c); ///< code and name; without the generic one
QString ligacoes(const CenarioCadastro &c); ///< pupil and class, oldest first, "*" where dated kAgora; likewise
QString classes(const CenarioCadastro &c); ///< code, name, teacher, password
QString aulas(const CenarioCadastro &c); ///< the log: pupil, class, Roteiro, answers

// What they are at first.
inline const QString kAlunos = QStringLiteral("1|Ari, 2|Bia, 3|Caio, 4|Dora");
inline const QString kLigacoes = QStringLiteral("1|1, 2|1, 3|1, 4|2");
inline const QString kA = QStringLiteral("1|Turma A|Ana Lima|amora, ");
inline const QString kB = QStringLiteral("2|Turma B|Beto Reis|Caju, ");
inline const QString kC = QStringLiteral("3|Turma C|Ana Lima|, ");
inline const QString kGenerica = QStringLiteral("9999|Genérica|Genérica|Chavema");
inline const QString kClasses = kA + kB + kC + kGenerica;

/// A box in which the data layer reports a failure, as caixas has it.
inline Caixa relato(const QString &titulo)
{
    return {{}, titulo};
}

/// What a teacher does in the register, and what is then on view and in the file.
struct Historia
{
    QString antes = {}; ///< SQL before the start
    qint32 classe = 1; ///< the current one, whose register is opened
    QString passos = {}; ///< see CenarioCadastro::faz
    QString alunos = kAlunos;
    QString ligacoes = kLigacoes;
    QString classes = kClasses;
    std::vector<Caixa> caixas = {}; ///< see CenarioCadastro::confirmaCaixas
};

/// The clock of a story stands still at this moment.
inline constexpr char16_t kAgora[] = u"2026-03-04 09:05:06";

/// Plays a story; what comes out otherwise, or a message to the shell, fails the test.
void conta(const Historia &historia);

/// Plays the one of the test's row, column "historia".
void contaDaLinha();

/// A child program tells of an answer to the Roteiro 12, "Contar".
void reporta(const QString &resposta);

} // namespace quorel::teste
