#include "cenario.h"

#include "catalogue/estado.h"
#include "platform/erro.h"
#include "shell/estado.h"
#include "shell/faux.h"
#include "shell/fblocos.h"
#include "shell/fprincip.h"
#include "shell/imagem.h"
#include "shell/opcao_mes.h"
#include "support/suporte.h"

#include "apoio.h"
#include "data/bd.h"
#include "lessons/andamento.h"
#include "platform/protocolo.h"
#include "startup/estado.h"

#include <QCheckBox>
#include <QListView>
#include <QPushButton>
#include <QScrollBar>
#include <QWheelEvent>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

/// The panel: months, their scrolling, the mode boxes.
class TstFAux : public QObject
{
    Q_OBJECT
private slots:
    void layoutIsInTwips_data();
    void layoutIsInTwips();
    void monthChangesTheBlocks();
    void arrowKeysChooseTheMonth();
    void captionsArePlainAndElided();
    void scrollBarComesWithTheEleventh();
    void focusScrollsTheMonths();
    void wheelScrollsTheMonths();
    void wheelStopsAtTheEnds();
    void tabPassesByThePupilsBehind();
    void barWithoutMonthsAboveIsNoMaximum();
    void listIsAskedForAtTheEndOfSelection_data();
    void listIsAskedForAtTheEndOfSelection();
    void buttonsOpenTheOtherWindows();
    void singleUserIsTheGenericPupil();
    void dormantPupilListTellsTheHook();
};

void TstFAux::layoutIsInTwips_data()
{
    QTest::addColumn<QString>("nome");
    QTest::addColumn<QRect>("lugar"); // pixels
    QTest::newRow("months") << u"FrmMeses"_s << QRect(0, 0, 217, 441);
    QTest::newRow("heading") << u"txtSelecMes"_s << QRect(-6, 0, 217, 19);
    QTest::newRow("template") << u"OptMeses(0)"_s << QRect(0, 0, 201, 14);
    QTest::newRow("second month") << u"OptMeses(2)"_s << QRect(1, 60, 201, 14);
    QTest::newRow("bar") << u"scrVertical"_s << QRect(204, 18, 14, 421);
    QTest::newRow("pupils") << u"FrmSelecAluno"_s << QRect(0, 0, 109, 321);
    QTest::newRow("pupil list") << u"LstAlunos"_s << QRect(4, 20, 101, 290);
    QTest::newRow("register") << u"CmdAluno"_s << QRect(42, 446, 49, 49);
    QTest::newRow("internet") << u"CmdInternet"_s << QRect(130, 446, 49, 49);
    QTest::newRow("selection") << u"chkSelec"_s << QRect(4, 502, 101, 33);
    QTest::newRow("copying") << u"ChkFig"_s << QRect(112, 506, 101, 33);
}

void TstFAux::layoutIsInTwips()
{
    QFETCH(QString, nome);
    QFETCH(QRect, lugar);
    Cenario c;
    QCOMPARE(c.painel().width(), 218);
    QCOMPARE(child<QWidget>(c.painel(), nome).geometry(), lugar);
}

void TstFAux::monthChangesTheBlocks()
{
    Cenario c;
    QCOMPARE(c.painel().selectedMonth(), u"1"_s);
    QVERIFY(c.painel().opcao(1).isChecked());
    QTest::mouseClick(&c.painel().opcao(2), Qt::LeftButton);
    QCOMPARE(c.painel().selectedMonth(), u"2"_s);
    QVERIFY(!c.principal().bloco(9).isVisible());
    QVERIFY(c.principal().bloco(2).isVisible());
    QVERIFY(c.principal().isVisible()); // fBlocos is not up: nothing is opened
}

void TstFAux::arrowKeysChooseTheMonth()
{
    Cenario c(3);
    c.painel().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&c.painel()));
    c.painel().opcao(1).setFocus();
    QTest::keyClick(&c.painel().opcao(1), Qt::Key_Down);
    QCOMPARE(c.painel().selectedMonth(), u"2"_s);
    QVERIFY(c.painel().opcao(2).hasFocus());
    QTest::keyClick(&c.painel().opcao(2), Qt::Key_Up);
    QCOMPARE(c.painel().selectedMonth(), u"1"_s);
}

void TstFAux::captionsArePlainAndElided()
{
    Cenario c;
    QCOMPARE(c.painel().opcao(1).text(), u"Números & cores"_s);
    QVERIFY(c.painel().opcao(1).shortcut().isEmpty());
    QVERIFY(c.painel().opcao(1).toolTip().isEmpty());
    QCOMPARE(c.painel().opcao(2).toolTip(), u"O tema de um mês que não cabe na largura do painel"_s);
    QCOMPARE(c.painel().opcao(2).accessibleName(), u"O tema de um mês que não cabe na largura do painel"_s);
}

void TstFAux::scrollBarComesWithTheEleventh()
{
    Cenario dez(10);
    QVERIFY(!child<QScrollBar>(dez.painel(), u"scrVertical"_s).isVisible());
    Cenario onze(11);
    const auto &barra = child<QScrollBar>(onze.painel(), u"scrVertical"_s);
    QVERIFY(barra.isVisible());
    QCOMPARE(barra.minimum(), 675);
    QCOMPARE(barra.maximum(), 2700);
    QCOMPARE(barra.singleStep(), 500);
    QCOMPARE(barra.pageStep(), 1000);
}

void TstFAux::focusScrollsTheMonths()
{
    Cenario c(12);
    c.painel().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&c.painel()));
    const auto &barra = child<QScrollBar>(c.painel(), u"scrVertical"_s);
    QCOMPARE(barra.maximum(), 3150);
    c.painel().opcao(12).setFocus();
    QCOMPARE(barra.value(), 3150);
    QCOMPARE(c.painel().opcao(12).lugar().Top, 5400.0 - 2475);
    QCOMPARE(c.painel().opcao(0).lugar().Top, -2475.0); // the template moves with them
    c.painel().opcao(1).setFocus(); // Top 450 - 2475: 2025 above the frame
    QCOMPARE(barra.value(), 3150 - 2055);
    QCOMPARE(c.painel().opcao(1).lugar().Top, 30.0);
}

// A notch of the wheel over the months.
static void turnWheel(fAux &painel, int delta)
{
    const QPointF meio(100, 200);
    QWheelEvent roda(meio, painel.mapToGlobal(meio), QPoint(), QPoint(0, delta), Qt::NoButton, Qt::NoModifier,
        Qt::NoScrollPhase, false);
    QApplication::sendEvent(&painel, &roda);
}

void TstFAux::wheelScrollsTheMonths()
{
    Cenario c(12);
    const auto &barra = child<QScrollBar>(c.painel(), u"scrVertical"_s);
    turnWheel(c.painel(), -120);
    QVERIFY(barra.value() > 675);
    QCOMPARE(c.painel().opcao(1).lugar().Top, 450.0 - (barra.value() - 675));
}

// What the bar does not take comes back to the panel, which must not hand it on again.
void TstFAux::wheelStopsAtTheEnds()
{
    Cenario c(12);
    const auto &barra = child<QScrollBar>(c.painel(), u"scrVertical"_s);
    turnWheel(c.painel(), 120);
    QCOMPARE(barra.value(), barra.minimum());
    for (int i = 0; i < 5; ++i)
        turnWheel(c.painel(), -120);
    QCOMPARE(barra.value(), barra.maximum());
}

void TstFAux::tabPassesByThePupilsBehind()
{
    Cenario c;
    c.painel().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&c.painel()));
    c.painel().opcao(1).setFocus();
    for (int i = 0; i < 10; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QVERIFY(QApplication::focusWidget()->objectName() != u"LstAlunos"_s);
    }
}

void TstFAux::barWithoutMonthsAboveIsNoMaximum()
{
    Cenario c;
    QVERIFY_EXCEPTION_THROWN(c.painel().setScrollMaximum(32768), ErroExecucao);
    QVERIFY_EXCEPTION_THROWN(c.painel().opcao(3), ErroExecucao);
}

void TstFAux::listIsAskedForAtTheEndOfSelection_data()
{
    QTest::addColumn<QString>("lista");
    QTest::addColumn<QString>("texto");
    QTest::addColumn<QString>("titulo");
    QTest::addColumn<bool>("grava");
    QTest::newRow("nothing chosen, yes empties the file")
        << QString() << u"Confirma a exclusão da lista dos Roteiros Selecionado"_s << u"Exclusão da Lista"_s << true;
    QTest::newRow("chosen, yes writes") << u"7\r\n"_s << u"Confirma a substituição da lista dos Roteiros Selecionado"_s
                                        << u"Substituição da Lista"_s << true;
    QTest::newRow("chosen, no restores") << u"7\r\n"_s << u"Confirma a substituição da lista dos Roteiros Selecionado"_s
                                         << u"Substituição da Lista"_s << false;
}

void TstFAux::listIsAskedForAtTheEndOfSelection()
{
    QFETCH(QString, lista);
    QFETCH(QString, texto);
    QFETCH(QString, titulo);
    QFETCH(bool, grava);
    Cenario c;
    const QString arquivo = noWindows(u"QUOREL2001/RotSelec.cfg"_s);
    escreve(arquivo, "31\r\n");
    gRotSelec = u"31\r\n"_s;
    auto &caixaSelec = child<QCheckBox>(c.painel(), u"chkSelec"_s);
    QTest::mouseClick(&caixaSelec, Qt::LeftButton);
    QVERIFY(gSelecionando);
    QVERIFY(gRotSelec.isEmpty());
    gRotSelec = lista;
    BoxScript boxes{grava ? Resposta::Sim : Resposta::Nao};
    QTest::keyClick(&caixaSelec, Qt::Key_Space);
    QCOMPARE(boxes.last(), (Caixa{texto, titulo, Icone::Informacao, Botoes::SimNao}));
    QVERIFY(!gSelecionando);
    const QString agora = grava ? lista : u"31\r\n"_s;
    QCOMPARE(gRotSelec, agora);
    QCOMPARE(le(arquivo), agora.toLatin1());
}

void TstFAux::buttonsOpenTheOtherWindows()
{
    Cenario c;
    QVERIFY(!child<QPushButton>(c.painel(), u"CmdDesemp"_s).isVisible()); // several users
    child<QPushButton>(c.painel(), u"CmdDesemp"_s).click();
    QCOMPARE(c.desempenhos, 1);
    QVERIFY(c.painel().isVisible());
    QTest::mouseClick(&child<QPushButton>(c.painel(), u"CmdAluno"_s), Qt::LeftButton);
    QCOMPARE(c.alunos, 1);
    QVERIFY(!c.painel().isVisible());
}

void TstFAux::singleUserIsTheGenericPupil()
{
    Registro registro;
    registro.open();
    Cenario c(2, {}, false);
    QCOMPARE(gAluno, 9999);
    QCOMPARE(gClasse, 9999);
    QVERIFY(gBD->ExisteAlias(u"RSLog"_s)); // the pupil's message opened the log
    QCOMPARE(gMensagem.Codigo, qint32(MSG_CLASSE)); // and the class's came last
    QVERIFY(child<QPushButton>(c.painel(), u"CmdDesemp"_s).isVisible());
    QVERIFY(!child<QPushButton>(c.painel(), u"CmdAluno"_s).isVisible());
    QVERIFY(!child<QCheckBox>(c.painel(), u"chkSelec"_s).isVisible());
}

void TstFAux::dormantPupilListTellsTheHook()
{
    Registro registro;
    registro.sql(u"INSERT INTO AL_Alunos (AL_Cod, AL_Nome) VALUES (12, 'Iná'), (13, 'Rui')"_s);
    registro.sql(u"INSERT INTO CLxAL (AL_Cod, CL_Cod) VALUES (12, 5), (13, 6)"_s);
    registro.open();
    Cenario c;
    const QString alias = u"RSAluno"_s;
    gBD->Records_Set(u"SELECT AL_Alunos.AL_Cod, AL_Nome, CL_Cod FROM AL_Alunos INNER JOIN CLxAL "
                     "ON AL_Alunos.AL_Cod = CLxAL.AL_Cod ORDER BY AL_Nome"_s,
        alias);
    auto &lista = child<QListView>(c.painel(), u"LstAlunos"_s);
    QString campo = u"AL_Nome"_s;
    gBD->List_Set(lista, alias, campo);
    gClasse = 0;
    const QModelIndex rui = lista.model()->index(1, 0);
    lista.setCurrentIndex(rui);
    emit lista.clicked(rui); // it lies behind the months, out of the mouse's reach
    QCOMPARE(gAluno, 13);
    QCOMPARE(gClasse, 6);
    QCOMPARE(gMensagem.Codigo, qint32(MSG_ALUNO));
    QCOMPARE(gMensagem.Texto, u"13"_s);
    QCOMPARE(c.painel().windowTitle(), u"ALUNO: RUI"_s);
    QVERIFY(!child<QWidget>(c.painel(), u"FrmSelecAluno"_s).isVisible());
}

QTEST_MAIN(TstFAux)
#include "tst_faux.moc"
