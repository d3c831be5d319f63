#include "cenario.h"

#include "apoio.h"
#include "catalogue/estado.h"
#include "data/bd.h"
#include "lessons/andamento.h"
#include "platform/erro.h"
#include "platform/protocolo.h"
#include "shell/opcao_mes.h"
#include "startup/estado.h"

#include <QContextMenuEvent>
#include <QLineEdit>
#include <QListView>
#include <QScrollBar>
#include <QToolTip>
#include <QWheelEvent>
#include <QWindow>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

/// The panel: months, their scrolling, the mode boxes.
class TstFAux : public QObject
{
    Q_OBJECT
private slots:
    void monthChangesTheBlocks();
    void captionsArePlainAndElided();
    void scrollBarComesWithTheEleventh();
    void focusScrollsTheMonths();
    void aPressScrollsOnceItsClickHasRun();
    void wheelScrollsTheMonths();
    void theHeadingIsNoTextToCopy();
    void listIsAskedForAtTheEndOfSelection();
    void buttonsOpenTheOtherWindows();
    void tipsShowBesideTheActiveWindow();
    void singleUserIsTheGenericPupil();
    void dormantPupilListTellsTheHook();
};

static QScrollBar &barra(Cenario &c)
{
    return child<QScrollBar>(c.painel(), u"scrVertical"_s);
}

void TstFAux::monthChangesTheBlocks()
{
    Cenario c;
    QCOMPARE(c.painel().selectedMonth(), u"1"_s);
    QVERIFY(c.painel().opcao(1).isChecked());
    c.clica(u"OptMeses(2)"_s);
    QCOMPARE(c.painel().selectedMonth(), u"2"_s);
    QVERIFY(!c.principal().bloco(9).isVisible() && c.principal().bloco(2).isVisible());
    QVERIFY(c.principal().isVisible()); // fBlocos is not up: nothing is opened
    c.painel().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&c.painel()));
    QTest::keyClick(&c.painel().opcao(2), Qt::Key_Up);
    QCOMPARE(c.painel().selectedMonth(), u"1"_s);
    QTest::keyClick(&c.painel().opcao(1), Qt::Key_Down);
    QCOMPARE(c.painel().selectedMonth(), u"2"_s);
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
    QVERIFY(!barra(dez).isVisible());
    Cenario onze(11);
    QVERIFY(barra(onze).isVisible());
    QCOMPARE(barra(onze).minimum(), 675);
    QCOMPARE(barra(onze).maximum(), 2700);
    QCOMPARE(failureOf([&] { onze.painel().setScrollMaximum(32768); }), int(kFalhaEstouro));
    QCOMPARE(failureOf([&] { onze.painel().opcao(12); }), int(kFalhaControle));
}

void TstFAux::focusScrollsTheMonths()
{
    Cenario c(12);
    c.painel().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&c.painel()));
    QCOMPARE(barra(c).maximum(), 3150);
    c.painel().opcao(12).setFocus();
    QCOMPARE(barra(c).value(), 3150);
    QCOMPARE(c.painel().opcao(12).lugar().Top, 5400.0 - 2475);
    QCOMPARE(c.painel().opcao(0).lugar().Top, -2475.0); // the template moves with them
    c.painel().opcao(1).setFocus(); // Top 450 - 2475: 2025 above the frame
    QCOMPARE(barra(c).value(), 3150 - 2055);
    QCOMPARE(c.painel().opcao(1).lugar().Top, 30.0);
}

void TstFAux::aPressScrollsOnceItsClickHasRun()
{
    Cenario c(12);
    c.painel().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&c.painel()));
    QWindow *window = c.painel().windowHandle();
    const QPoint nono = c.painel().opcao(9).mapTo(&c.painel(), QPoint(20, 7));
    QTest::mousePress(window, Qt::LeftButton, {}, nono);
    QCOMPARE(barra(c).value(), 675);
    QTest::mouseRelease(window, Qt::LeftButton, {}, nono);
    QCOMPARE(c.painel().selectedMonth(), u"9"_s);
    QCOMPARE(barra(c).value(), 675 + 9 * 450 + 210 + 30 - 2760);
    barra(c).setValue(675);
    c.principal().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&c.principal()));
    c.painel().activateWindow(); // has given the focus to nobody anew
    QVERIFY(QTest::qWaitForWindowActive(&c.painel()));
    QVERIFY(c.painel().opcao(9).hasFocus());
    QCOMPARE(barra(c).value(), 675);
    c.abreMatematica(); // the click then takes the activation away
    QTest::mouseClick(window, Qt::LeftButton, {}, nono);
    QCOMPARE(c.painel().selectedMonth(), u"9"_s);
    QVERIFY(c.blocos().isVisible());
}

void TstFAux::theHeadingIsNoTextToCopy()
{
    Cenario c;
    auto &temas = child<QLineEdit>(c.painel(), u"txtSelecMes"_s);
    temas.selectAll();
    QVERIFY(!temas.hasSelectedText());
    QContextMenuEvent menu(QContextMenuEvent::Mouse, QPoint(90, 5), temas.mapToGlobal(QPoint(90, 5)));
    QApplication::sendEvent(&temas, &menu);
    QCOMPARE(QApplication::activePopupWidget(), nullptr);
}

// What the bar does not take comes back to the panel, which must not hand it on again.
void TstFAux::wheelScrollsTheMonths()
{
    Cenario c(12);
    const auto turn = [&c](int delta) {
        const QPointF meio(100, 200);
        QWheelEvent roda(meio, c.painel().mapToGlobal(meio), QPoint(), QPoint(0, delta), Qt::NoButton, Qt::NoModifier,
            Qt::NoScrollPhase, false);
        QApplication::sendEvent(&c.painel(), &roda);
    };
    turn(120);
    QCOMPARE(barra(c).value(), barra(c).minimum());
    turn(-120);
    QVERIFY(barra(c).value() > 675);
    QCOMPARE(c.painel().opcao(1).lugar().Top, 450.0 - (barra(c).value() - 675));
    for (int i = 0; i < 5; ++i)
        turn(-120);
    QCOMPARE(barra(c).value(), barra(c).maximum());
}

void TstFAux::listIsAskedForAtTheEndOfSelection()
{
    Cenario c;
    const QString arquivo = noWindows(u"QUOREL2001/RotSelec.cfg"_s);
    escreve(arquivo, "31\r\n");
    gRotSelec = u"31\r\n"_s;
    c.clica(u"chkSelec"_s);
    QVERIFY(gSelecionando);
    QVERIFY(gRotSelec.isEmpty());
    gRotSelec = u"7\r\n"_s;
    BoxScript boxes{Resposta::Sim};
    QTest::keyClick(&c.controle(u"chkSelec"_s), Qt::Key_Space);
    QCOMPARE(boxes.last().titulo, u"Substituição da Lista"_s);
    QVERIFY(!gSelecionando);
    QCOMPARE(le(arquivo), QByteArray("7\r\n"));
}

void TstFAux::buttonsOpenTheOtherWindows()
{
    Cenario c;
    QVERIFY(!c.controle(u"CmdDesemp"_s).isVisible()); // several users
    c.clica(u"CmdDesemp"_s);
    QCOMPARE(c.desempenhos, 1);
    QVERIFY(c.painel().isVisible());
    c.clica(u"CmdAluno"_s);
    QCOMPARE(c.alunos, 1);
    QVERIFY(!c.painel().isVisible());
}

void TstFAux::tipsShowBesideTheActiveWindow()
{
    Cenario c;
    QVERIFY(QTest::qWaitForWindowActive(&c.principal()));
    QTest::mouseMove(&c.controle(u"CmdInternet"_s), QPoint(9, 9));
    QTest::mouseMove(&c.controle(u"CmdInternet"_s), QPoint(12, 12));
    QTRY_VERIFY(QToolTip::isVisible());
    QCOMPARE(QApplication::activeWindow(), &c.principal());
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
    QVERIFY(c.controle(u"CmdDesemp"_s).isVisible());
    QVERIFY(!c.controle(u"CmdAluno"_s).isVisible() && !c.controle(u"chkSelec"_s).isVisible());
}

void TstFAux::dormantPupilListTellsTheHook()
{
    Registro registro;
    registro.sql(u"INSERT INTO AL_Alunos VALUES (12, 'Iná'), (13, 'Rui');"
                 "INSERT INTO CLxAL (AL_Cod, CL_Cod) VALUES (12, 5), (13, 6)"_s);
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
    QVERIFY(!c.controle(u"FrmSelecAluno"_s).isVisible());
}

QTEST_MAIN(TstFAux)
#include "tst_faux.moc"
