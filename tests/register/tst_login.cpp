#include "cenario_cadastro.h"

#include <QLabel>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

/// The password of a class.
class TstLogin : public QObject
{
    Q_OBJECT
private slots:
    void passwords_data();
    void passwords();
    void wrongEntryIsReplacedByTheNext();
    void cancelForgetsAndUnloads();
    void loadNamesTheTeacher();
    void secondClickOnlyAsksForAnotherButton();
    void registerClosedMeanwhileIsSetUpHidden();
};

static QString pergunta(CenarioCadastro &c)
{
    return child<QLabel>(c.login(), u"lblLabels(0)"_s).text();
}

void TstLogin::passwords_data()
{
    QTest::addColumn<int>("classe");
    QTest::addColumn<QString>("entrada");
    QTest::addColumn<bool>("certa");
    QTest::newRow("as stored") << 1 << "amora" << true;
    QTest::newRow("in capitals") << 1 << "AMORA" << true;
    QTest::newRow("stored with a capital") << 2 << "caju" << true;
    QTest::newRow("accents too") << 4 << "MAÇÃ" << true;
    QTest::newRow("master password in any case") << 2 << "chaveMa" << true;
    QTest::newRow("another class's") << 1 << "caju" << false;
    QTest::newRow("empty") << 1 << "" << false;
    QTest::newRow("a blank more") << 1 << "amora " << false;
    QTest::newRow("an empty one takes an empty entry") << 3 << "" << true;
    QTest::newRow("an empty one takes nothing else") << 3 << "a" << false;
    QTest::newRow("a class that is not there: empty") << 77 << "" << true;
    QTest::newRow("a class that is not there: master") << 77 << "CHAVEMA" << true;
    QTest::newRow("a class that is not there: other") << 77 << "amora" << false;
    QTest::newRow("the generic class's row") << 9999 << "Chavema" << true;
    QTest::newRow("at most eight characters") << 5 << "abcdefghij" << true;
}

void TstLogin::passwords()
{
    QFETCH(int, classe);
    QFETCH(QString, entrada);
    QFETCH(bool, certa);
    CenarioCadastro c(linhasDeSempre()
        + u"; INSERT INTO CL_Classes VALUES (4, 'Turma D', 'Davi', 'maçã'), (5, 'Turma E', 'Eva', 'abcdefgh')"_s);
    gClasse = classe;
    c.aperta(u"CmdAluno(3)"_s);
    QCOMPARE(c.login().focusWidget(), &c.campo(u"txtPassword"_s));
    tecla(c.campo(u"txtPassword"_s), entrada);
    c.confirmaCaixas();
    c.aperta(u"cmdOK"_s);
    if (certa)
        QCOMPARE(c.campo(u"txtPassword"_s).text(), QString());
    else
        QCOMPARE(c.caixas.at(0), (Caixa{u"Senha inválida, tente novamente!"_s, u"Acesso Restrito"_s}));
    QCOMPARE(gSenhaOK, certa);
    QCOMPARE(c.login().isVisible(), !certa);
    QCOMPARE(c.aberto(u"FrmCadAluno"_s), certa);
}

void TstLogin::wrongEntryIsReplacedByTheNext()
{
    CenarioCadastro c;
    gClasse = 1;
    c.aperta(u"CmdAluno(3)"_s);
    BoxScript boxes{Resposta::Ok};
    auto &entrada = c.campo(u"txtPassword"_s);
    QTest::keyClicks(&entrada, u"pera"_s);
    QTest::keyClick(&entrada, Qt::Key_Enter);
    QCOMPARE(c.login().focusWidget(), &entrada);
    QTest::keyClicks(&entrada, u"amora"_s);
    QCOMPARE(entrada.text(), u"amora"_s);
    QTest::keyClick(&entrada, Qt::Key_Return);
    QVERIFY(gSenhaOK);
}

void TstLogin::cancelForgetsAndUnloads()
{
    CenarioCadastro c;
    gClasse = 1;
    c.aperta(u"CmdAluno(3)"_s);
    QTest::keyClicks(&c.campo(u"txtPassword"_s), u"amor"_s);
    gSenhaOK = true;
    QTest::keyClick(&c.campo(u"txtPassword"_s), Qt::Key_Escape);
    QVERIFY(!gSenhaOK);
    QVERIFY(!c.login().isVisible());
    QVERIFY(!c.aberto(u"FrmCadAluno"_s)); // the register stays as it was
    c.login().carrega(); // anew
    QCOMPARE(pergunta(c), u"Professor(a) Ana Lima digite sua senha."_s);
    QCOMPARE(c.campo(u"txtPassword"_s).text(), QString());
    c.aperta(u"CmdAluno(3)"_s);
    QVERIFY(c.login().isVisible());
}

void TstLogin::loadNamesTheTeacher()
{
    CenarioCadastro c;
    gClasse = 0;
    BoxScript boxes{Resposta::Ok};
    c.login().carrega();
    QCOMPARE(boxes.last(), (Caixa{u"Selecione uma classe primeiro"_s, u"Histórico"_s, Icone::Informacao}));
    QCOMPARE(pergunta(c), u"Professora "_s);
    c.login().descarrega();
    gClasse = 2;
    c.login().mostra();
    QCOMPARE(c.login().windowTitle(), u"Login"_s);
    QCOMPARE(pergunta(c), u"Professor(a) Beto Reis digite sua senha."_s);
    gClasse = 1;
    c.login().hide();
    c.login().mostra(); // hidden, not unloaded
    QCOMPARE(pergunta(c), u"Professor(a) Beto Reis digite sua senha."_s);
}

void TstLogin::secondClickOnlyAsksForAnotherButton()
{
    CenarioCadastro c;
    gClasse = 1;
    c.aperta(u"CmdAluno(3)"_s);
    QTest::keyClicks(&c.campo(u"txtPassword"_s), u"amo"_s);
    c.alunos().CmdAluno_Click(5);
    QCOMPARE(c.campo(u"txtPassword"_s).text(), u"amo"_s);
    QTest::keyClicks(&c.campo(u"txtPassword"_s), u"ra"_s);
    c.aperta(u"cmdOK"_s);
    QVERIFY(gSenhaOK);
    QVERIFY(!c.aberto(u"FrmCadAluno"_s)); // it is for the last one that asked
}

void TstLogin::registerClosedMeanwhileIsSetUpHidden()
{
    CenarioCadastro c;
    gClasse = 1;
    c.aperta(u"CmdAluno(3)"_s);
    c.aperta(u"CmdFecha"_s);
    QTest::keyClicks(&c.campo(u"txtPassword"_s), u"amora"_s);
    c.aperta(u"cmdOK"_s);
    QVERIFY(!c.alunos().isVisible());
    c.alunos().mostra();
    QCOMPARE(c.campo(u"TxtAulaInf"_s).text(), u"1 / 3"_s);
}

QTEST_MAIN(TstLogin)
#include "tst_login.moc"
