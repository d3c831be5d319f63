#include "cenario_cadastro.h"

#include "data/bd.h"
#include "data/cadastros.h"
#include "lessons/andamento.h"
#include "lessons/gancho.h"
#include "platform/costuras.h"
#include "platform/fim.h"
#include "register/estado.h"
#include "register/login.h"
#include "startup/estado.h"
#include "support/suporte.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

namespace quorel::teste {

using namespace Qt::StringLiterals;

QString linhasDeSempre()
{
    return u"INSERT INTO CL_Classes (CL_Cod, CL_Nome, CL_Prof, CL_Senha) VALUES (1, 'Turma A', 'Ana Lima', 'amora'), "
           "(2, 'Turma B', 'Beto Reis', 'Caju'), (3, 'Turma C', 'Ana Lima', '');"
           "INSERT INTO AL_Alunos (AL_Cod, AL_Nome) VALUES (1, 'Ari'), (2, 'Bia'), (3, 'Caio'), (4, 'Dora');"
           "INSERT INTO CLxAL (AL_Cod, CL_Cod, CLxAL_DataIngr) VALUES (1, 1, '2020-02-03 08:00:00'), "
           "(2, 1, '2020-02-03 08:00:00'), (3, 1, '2020-02-03 08:00:00'), (4, 2, '2020-02-03 08:00:00')"_s;
}

CenarioCadastro::CenarioCadastro(const QString &linhas)
{
    failOnWarnings();
    reiniciaStartup();
    reiniciaLessons();
    reiniciaRegister();
    reiniciaFim();
    if (!linhas.isEmpty())
        sql(linhas);
    mRegistro.open();
    CriaGenericos();
    AbreTabelasCadastro();
    gNomeNivel = u"Fundamental I"_s;
    gEscolas = true;
    gAluno = kGenerico;
    gClasse = kGenerico;
    InstalaGancho(janelaBlocos());
    mAlunos = std::make_unique<fAlunos>(mAtiva,
        Arredores{.lugarDoPainel =
                      [] {
                          return Lugar{1500, 900, 3270, 8160};
                      },
            .mostraPainel = [this] { ++paineis; },
            .setTituloPrincipal = [this](const QString &titulo) { titulos << titulo; },
            .mostraDesempenho = [this] { ++desempenhos; }});
    alunos().mostra();
}

CenarioCadastro::~CenarioCadastro()
{
    mAlunos.reset();
    reiniciaLessons();
    reiniciaData();
    reiniciaCosturas();
}

Login &CenarioCadastro::login()
{
    return alunos().login();
}

template <typename T>
static T &inEither(CenarioCadastro &cenario, const QString &nome)
{
    T *found = cenario.login().findChild<T *>(nome);
    return found ? *found : child<T>(cenario.alunos(), nome);
}

QPushButton &CenarioCadastro::botao(const QString &nome)
{
    return inEither<QPushButton>(*this, nome);
}

QLineEdit &CenarioCadastro::campo(const QString &nome)
{
    return inEither<QLineEdit>(*this, nome);
}

QComboBox &CenarioCadastro::combo(const QString &nome)
{
    return child<QComboBox>(alunos(), nome);
}

bool CenarioCadastro::aberto(const QString &quadro)
{
    return child<QWidget>(alunos(), quadro).isVisible();
}

void CenarioCadastro::aperta(const QString &nome)
{
    QPushButton &alvo = botao(nome);
    QVERIFY2(alvo.isVisible() && alvo.isEnabled(), qPrintable(nome));
    QTest::mouseClick(&alvo, Qt::LeftButton);
}

void CenarioCadastro::digita(const QString &nome, const QString &texto)
{
    QLineEdit &alvo = campo(nome);
    alvo.selectAll();
    QTest::keyClick(&alvo, Qt::Key_Delete);
    tecla(alvo, texto);
}

void CenarioCadastro::escolhe(const QString &nome, const QString &texto)
{
    QComboBox &alvo = combo(nome);
    const int linha = alvo.findText(texto);
    QVERIFY2(linha >= 0, qPrintable(texto));
    alvo.showPopup();
    alvo.view()->setCurrentIndex(alvo.model()->index(linha, 0));
    QTest::keyClick(alvo.view(), Qt::Key_Return);
    QCOMPARE(alvo.currentText(), texto);
}

void CenarioCadastro::abreCadastro(qint32 classe)
{
    gClasse = classe;
    gSenhaOK = true;
    aperta(u"CmdAluno(3)"_s);
}

void tecla(QWidget &alvo, const QString &texto)
{
    for (const QChar letra : texto)
        QTest::sendKeyEvent(QTest::Click, &alvo, Qt::Key_unknown, QString(letra), Qt::NoModifier);
}

void passaPor(QWidget &controle)
{
    controle.window()->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(controle.window()));
    controle.setFocus();
    QVERIFY(controle.hasFocus());
    QTest::keyClick(&controle, Qt::Key_Tab);
    QVERIFY(!controle.hasFocus());
}

QStringList itens(const QComboBox &combo)
{
    QStringList textos;
    for (int i = 0; i < combo.count(); ++i)
        textos << combo.itemText(i);
    return textos;
}

QStringList alunos(const CenarioCadastro &c)
{
    return c.sql(u"SELECT AL_Cod, AL_Nome FROM AL_Alunos WHERE AL_Cod <> 9999 ORDER BY AL_Cod"_s);
}

QStringList ligacoes(const CenarioCadastro &c)
{
    return c.sql(u"SELECT AL_Cod, CL_Cod FROM CLxAL WHERE AL_Cod <> 9999 ORDER BY CLxAL_Id"_s);
}

QStringList classes(const CenarioCadastro &c)
{
    return c.sql(u"SELECT CL_Cod, CL_Nome, CL_Prof, CL_Senha FROM CL_Classes ORDER BY CL_Cod"_s);
}

} // namespace quorel::teste
