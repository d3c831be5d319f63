#include "cenario_cadastro.h"

#include "data/bd.h"
#include "register/estado.h"
#include "register/login.h"
#include "startup/estado.h"
#include "support/suporte.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

/// What becomes of a pupil or a class that was begun and not saved when another button is pressed: the record stays
/// pending behind whatever the windows show, and the next save goes into it.
class TstPendentes : public QObject
{
    Q_OBJECT
private slots:
    void newPupilAndOtherButtons_data();
    void newPupilAndOtherButtons();
    void newClassAndOtherButtons_data();
    void newClassAndOtherButtons();
    void cancelledClassGoesToTheMarkOfTheNewPupil();
    void firstClassPendingAsksForAPassword();
};

/// Presses buttons in turn, the password given before each; a window that was closed is shown again.
static void aperta(CenarioCadastro &c, const QStringList &botoes)
{
    for (const QString &botao : botoes) {
        if (!c.alunos().isVisible())
            c.alunos().mostra();
        gSenhaOK = true;
        c.aperta(botao);
    }
}

void TstPendentes::newPupilAndOtherButtons_data()
{
    QTest::addColumn<QStringList>("botoes"); // after a name was typed
    QTest::addColumn<QString>("mostrado");
    QTest::addColumn<QString>("gravado"); // name of the new record
    QTest::addColumn<bool>("ligado"); // whether it gets a class
    const QString novo = u"Eva, Novo"_s;
    const QString dora = u"Dora, 1 / 1"_s; // another one on display goes into the pending record, and stays alone
    QTest::newRow("performance") << QStringList{u"CmdAluno(4)"_s} << novo << u"Eva"_s << true;
    QTest::newRow("classes browsed: the class shown stays")
        << QStringList{u"cmdCadClasses"_s, u"CmdProfUlt"_s} << novo << u"Eva"_s << true;
    QTest::newRow("a new class begun and cancelled")
        << QStringList{u"cmdCadClasses"_s, u"CmdProfNovo"_s, u"CmdProfCancela"_s} << novo << u"Eva"_s << true;
    QTest::newRow("New again: begins anew") << QStringList{u"CmdAulaNova"_s} << u", Novo"_s << u"Eva"_s << true;
    QTest::newRow("the register again") << QStringList{u"CmdAluno(3)"_s} << dora << u"Dora"_s << false;
    QTest::newRow("selection and register")
        << QStringList{u"CmdAluno(2)"_s, u"CmdAluno(3)"_s} << dora << u"Dora"_s << false;
    QTest::newRow("window closed and opened")
        << QStringList{u"CmdFecha"_s, u"CmdAluno(3)"_s} << dora << u"Dora"_s << false;
    QTest::newRow("the class saved") << QStringList{u"cmdCadClasses"_s, u"CmdProfProx"_s, u"CmdProfProx"_s,
        u"CmdProfSalvar"_s} << dora << u"Dora"_s
                                     << false;
}

void TstPendentes::newPupilAndOtherButtons()
{
    QFETCH(QStringList, botoes);
    QFETCH(QString, mostrado);
    QFETCH(QString, gravado);
    QFETCH(bool, ligado);
    CenarioCadastro c;
    c.abreCadastro(2);
    c.aperta(u"CmdAulaNova"_s);
    c.digita(u"TxtAluno"_s, u"Eva"_s);
    aperta(c, botoes);
    QCOMPARE(c.campo(u"TxtAluno"_s).text() + u", "_s + c.campo(u"TxtAulaInf"_s).text(), mostrado);
    QCOMPARE(alunos(c).size(), 4);
    if (c.campo(u"TxtAluno"_s).text().isEmpty())
        c.digita(u"TxtAluno"_s, u"Eva"_s);
    c.aperta(u"CmdAulaGrava"_s);
    QCOMPARE(alunos(c), (QStringList{u"1|Ari"_s, u"2|Bia"_s, u"3|Caio"_s, u"4|Dora"_s, u"10000|"_s + gravado}));
    QStringList esperadas{u"1|1"_s, u"2|1"_s, u"3|1"_s, u"4|2"_s};
    if (ligado)
        esperadas << u"10000|2"_s;
    QCOMPARE(ligacoes(c), esperadas);
}

void TstPendentes::newClassAndOtherButtons_data()
{
    QTest::addColumn<QStringList>("botoes"); // after the class was typed
    QTest::addColumn<QString>("mostrada");
    QTest::addColumn<QString>("gravada"); // the new record
    QTest::addColumn<qint32>("corrente"); // the current class then, found by its teacher
    const QString digitada = u"|Turma D|Davi|uva"_s;
    const QString generica = u"|Genérica|Genérica|Chavema"_s;
    QTest::newRow("a pupil saved") << QStringList{u"CmdAulaGrava"_s} << u"Turma D, Novo"_s << digitada << 10000;
    QTest::newRow("a new pupil begun and cancelled")
        << QStringList{u"CmdAulaNova"_s, u"CmdAulaCancela"_s} << u"Turma D, Novo"_s << digitada << 10000;
    QTest::newRow("New again: begins anew") << QStringList{u"CmdProfNovo"_s} << u", Novo"_s << digitada << 10000;
    QTest::newRow("next: the last goes into it as well")
        << QStringList{u"CmdProfProx"_s} << u"Turma C, 4 / 5"_s << u"|Turma C|Ana Lima|"_s << 1;
    QTest::newRow("first: likewise") << QStringList{u"CmdProfPrim"_s} << u"Genérica, 1 / 5"_s << generica << 9999;
    QTest::newRow("frame closed and opened")
        << QStringList{u"cmdCadClasses"_s, u"cmdCadClasses"_s} << u"Genérica, 1 / 5"_s << generica << 9999;
    QTest::newRow("selection and register")
        << QStringList{u"CmdAluno(2)"_s, u"CmdAluno(3)"_s} << u"Genérica, 1 / 5"_s << generica << 9999;
    QTest::newRow("window closed and opened")
        << QStringList{u"CmdFecha"_s, u"CmdAluno(3)"_s, u"cmdCadClasses"_s} << u"Genérica, 1 / 5"_s << generica << 9999;
}

void TstPendentes::newClassAndOtherButtons()
{
    QFETCH(QStringList, botoes);
    QFETCH(QString, mostrada);
    QFETCH(QString, gravada);
    QFETCH(qint32, corrente);
    CenarioCadastro c;
    c.abreCadastro(2);
    aperta(c, {u"cmdCadClasses"_s, u"CmdProfNovo"_s});
    const QStringList antes = classes(c);
    const auto digita = [&] {
        c.digita(u"TxtNomeClasse"_s, u"Turma D"_s);
        c.digita(u"TxtNomeProf"_s, u"Davi"_s);
        c.digita(u"TxtProfSenh"_s, u"uva"_s);
    };
    digita();
    aperta(c, botoes);
    QCOMPARE(c.campo(u"TxtNomeClasse"_s).text() + u", "_s + c.campo(u"TxtProfResult"_s).text(), mostrada);
    QCOMPARE(classes(c), antes);
    if (c.campo(u"TxtNomeClasse"_s).text().isEmpty())
        digita();
    c.aperta(u"CmdProfSalvar"_s);
    QCOMPARE(classes(c), antes + QStringList{u"10000"_s + gravada});
    QCOMPARE(gClasse, corrente);
    QCOMPARE(ligacoes(c), (QStringList{u"1|1"_s, u"2|1"_s, u"3|1"_s, u"4|2"_s}));
}

// One mark serves both registers: the fourth pupil's, by name, leads to the fourth class.
void TstPendentes::cancelledClassGoesToTheMarkOfTheNewPupil()
{
    CenarioCadastro c;
    c.abreCadastro(2);
    aperta(c, {u"cmdCadClasses"_s, u"CmdProfProx"_s, u"CmdProfNovo"_s, u"CmdAulaNova"_s, u"CmdProfCancela"_s});
    QCOMPARE(c.campo(u"TxtNomeClasse"_s).text() + u", "_s + c.campo(u"TxtProfResult"_s).text(), u"Turma C, 4 / 4"_s);
    c.digita(u"TxtAluno"_s, u"Eva"_s);
    c.aperta(u"CmdAulaGrava"_s);
    QCOMPARE(alunos(c).last(), u"10000|Eva"_s);
    QCOMPARE(ligacoes(c).last(), u"10000|2"_s);
    QCOMPARE(classes(c).size(), 4);
}

// A class that is only begun counts: the register that was free to open is locked, and an empty entry opens it.
void TstPendentes::firstClassPendingAsksForAPassword()
{
    CenarioCadastro c(QString{});
    c.sql(u"DELETE FROM CL_Classes"_s);
    gBD->ReAtualizaRecordSet(u"rsClasses"_s);
    c.aperta(u"CmdAluno(3)"_s);
    c.aperta(u"CmdProfNovo"_s);
    c.digita(u"TxtNomeClasse"_s, u"Primeira"_s);
    c.aperta(u"CmdAluno(3)"_s);
    QVERIFY(c.login().isVisible());
    c.aperta(u"cmdOK"_s);
    QVERIFY(!c.login().isVisible());
    QVERIFY(c.aberto(u"frmClasses"_s));
    c.digita(u"TxtNomeClasse"_s, u"Primeira"_s);
    c.aperta(u"CmdProfSalvar"_s);
    const QStringList gravadas = c.sql(u"SELECT CL_Nome, CL_Prof, CL_Senha FROM CL_Classes"_s);
    QCOMPARE(gravadas, QStringList{u"Primeira||"_s});
}

QTEST_MAIN(TstPendentes)
#include "tst_pendentes.moc"
