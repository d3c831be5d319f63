#pragma once

#include "apoio.h"
#include "register/falunos.h"
#include "visual/janela_ativa.h"

#include <QString>
#include <QStringList>

#include <memory>

class QComboBox;
class QLineEdit;
class QPushButton;

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
    void abreCadastro(qint32 classe); ///< the pupils' register of a class, the password having been given

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

/// Gives a control the focus and takes it on with the Tab key.
void passaPor(QWidget &controle);

/// What a data combo lists.
QStringList itens(const QComboBox &combo);

// The rows as they stand in the file.
QStringList alunos(const CenarioCadastro &c); ///< code and name; without the generic one
QStringList ligacoes(const CenarioCadastro &c); ///< pupil and class, oldest first; without the generic one's
QStringList classes(const CenarioCadastro &c); ///< code, name, teacher, password

} // namespace quorel::teste
