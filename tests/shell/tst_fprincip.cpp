#include "cenario.h"

#include "catalogue/estado.h"
#include "platform/erro.h"
#include "shell/estado.h"
#include "shell/faux.h"
#include "shell/fblocos.h"
#include "shell/fprincip.h"
#include "shell/imagem.h"
#include "support/suporte.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

/// The first window, from pointing at a block to the roteiro window and back.
class TstFPrincip : public QObject
{
    Q_OBJECT
private slots:
    void showsTheBlocksOfTheMonth();
    void layoutIsInTwips_data();
    void layoutIsInTwips();
    void pointingShowsTheTip();
    void blockWithoutObjectiveStillHasItsName();
    void monthWithoutTheDisciplineIsRed();
    void numberLeftByTheOtherWindowFailsTheTick();
    void bareWindowForgetsThePicture();
    void overTheTipOnlyTheTipHides();
    void clickOpensTheDiscipline();
    void keysOpenTheDiscipline_data();
    void keysOpenTheDiscipline();
    void drawingToolIsLookedForAtLoad();
    void comingBackFromABoxIsNoActivation();
};

static QWidget &tip(fPrincip &janela)
{
    return child<QWidget>(janela, u"FrmTip"_s);
}

static QString tipText(fPrincip &janela)
{
    const auto *texto = janela.findChild<QPlainTextEdit *>(u"TxtInf"_s);
    return texto ? texto->toPlainText() : QString(); // made with the first text
}

static QColor tipColour(fPrincip &janela)
{
    return child<QPlainTextEdit>(janela, u"TxtInf"_s).palette().color(QPalette::Text);
}

void TstFPrincip::showsTheBlocksOfTheMonth()
{
    Cenario c;
    QString visiveis;
    for (int i = 1; i <= 12; ++i) {
        if (c.principal().bloco(i).isVisible())
            visiveis += u"%1:%2 "_s.arg(i).arg(c.principal().bloco(i).tag());
    }
    QCOMPARE(visiveis, u"9:0 10:1 "_s);
    QCOMPARE(c.principal().windowTitle(), u"Série: Fundamental I"_s);
    QVERIFY(c.principal().isVisible());
    QVERIFY(c.painel().isVisible());
    QVERIFY(!c.blocos().isVisible());
    QCOMPARE(c.principal().pos(), QPoint(0, 0));
    const int frame = c.principal().frameGeometry().width() - c.principal().width();
    QCOMPARE(c.painel().pos(), QPoint(527 + frame, 0)); // (7920 - 10) / 15
    QCOMPARE(c.painel().height(), c.principal().height());
    for (const int indice : {0, 13})
        QVERIFY_EXCEPTION_THROWN(c.principal().bloco(indice), ErroExecucao);
}

void TstFPrincip::layoutIsInTwips_data()
{
    QTest::addColumn<QString>("nome");
    QTest::addColumn<QRect>("lugar"); // pixels
    QTest::newRow("block") << u"ImgBloco(5)"_s << QRect(223, 404, 85, 85);
    QTest::newRow("block without picture") << u"ImgBloco(12)"_s << QRect(330, 404, 85, 85);
    QTest::newRow("title") << u"LblTitulo"_s << QRect(3, 4, 542, 22);
    QTest::newRow("unused label below the edge") << u"LblMes"_s << QRect(16, 564, 21, 22);
    QTest::newRow("help") << u"CmdHelp"_s << QRect(470, 504, 37, 37);
    QTest::newRow("tip") << u"FrmTip"_s << QRect(176, 152, 226, 37);
}

void TstFPrincip::layoutIsInTwips()
{
    QFETCH(QString, nome);
    QFETCH(QRect, lugar);
    Cenario c;
    QCOMPARE(c.principal().size(), QSize(528, 551));
    QCOMPARE(child<QWidget>(c.principal(), nome).geometry(), lugar);
}

void TstFPrincip::pointingShowsTheTip()
{
    Cenario c;
    QTest::mouseMove(&c.principal().bloco(9), QPoint(20, 20));
    QTRY_COMPARE(gImgApontada, qint16(9));
    QTRY_VERIFY(tip(c.principal()).isVisible());
    QCOMPARE(tipText(c.principal()), u"Matemática - Contar até 10"_s);
    const QRect texto = child<QPlainTextEdit>(c.principal(), u"TxtInf"_s).geometry();
    QCOMPARE(QRect(texto.topLeft(), QSize(texto.width(), 1)), QRect(4, 8, 221, 1)); // its height is the text's
    QCOMPARE(tipColour(c.principal()), QColor(0, 0, 255));
    const QPoint fora(1645 / 15 + 1, (945 + 1275 - 105) / 15); // right of the block, 105 over its lower edge
    QCOMPARE(tip(c.principal()).pos(), fora);
    QCOMPARE(gImgDica, qint16(9));
}

void TstFPrincip::blockWithoutObjectiveStillHasItsName()
{
    Cenario c;
    gImgApontada = 10;
    QTRY_COMPARE(tipText(c.principal()), u"Português - "_s);
}

void TstFPrincip::monthWithoutTheDisciplineIsRed()
{
    Cenario c;
    gImgApontada = 2;
    QTRY_COMPARE(tipText(c.principal()), u"ROTEIROS NÃO DISPONÍVEIS. ESCOLHA OUTRO MÊS."_s);
    QCOMPARE(tipColour(c.principal()), QColor(255, 0, 0));
    QCOMPARE(gImgApontada, qint16(2));
}

void TstFPrincip::numberLeftByTheOtherWindowFailsTheTick()
{
    Cenario c;
    const QPoint antes = tip(c.principal()).pos();
    gImgApontada = 14;
    QTRY_COMPARE(gImgApontada, qint16(-1));
    QVERIFY(tip(c.principal()).isVisible());
    QCOMPARE(tipText(c.principal()), u"ROTEIROS NÃO DISPONÍVEIS. ESCOLHA OUTRO MÊS."_s);
    QCOMPARE(tip(c.principal()).pos(), antes);
}

void TstFPrincip::bareWindowForgetsThePicture()
{
    Cenario c;
    gImgApontada = 9;
    QTRY_VERIFY(tip(c.principal()).isVisible());
    QTest::mouseMove(&c.principal(), QPoint(400, 470));
    QTRY_COMPARE(gImgApontada, qint16(-1));
    QVERIFY(!tip(c.principal()).isVisible());
}

void TstFPrincip::overTheTipOnlyTheTipHides()
{
    Cenario c;
    gImgApontada = 9;
    QTRY_VERIFY(tip(c.principal()).isVisible());
    QTest::mouseMove(&tip(c.principal()), QPoint(100, 2));
    QTRY_VERIFY(!tip(c.principal()).isVisible());
    QCOMPARE(gImgApontada, qint16(9));
    QTRY_VERIFY(tip(c.principal()).isVisible()); // the next tick brings it back
}

void TstFPrincip::clickOpensTheDiscipline()
{
    Cenario c;
    QTest::mouseClick(&c.principal().bloco(9), Qt::LeftButton);
    QVERIFY(!c.principal().isVisible());
    QVERIFY(c.blocos().isVisible());
    QCOMPARE(gDisciplina, qint16(9));
    QCOMPARE(gNomeDisciplina, u"Matemática"_s);
    QCOMPARE(child<QLabel>(c.blocos(), u"LblTitulo"_s).text(), u"Roteiros de Matemática"_s);
    QTest::mouseClick(&child<QPushButton>(c.blocos(), u"cmdVoltar"_s), Qt::LeftButton);
    QVERIFY(c.principal().isVisible());
    QVERIFY(!c.blocos().isVisible());
}

void TstFPrincip::keysOpenTheDiscipline_data()
{
    QTest::addColumn<Qt::Key>("tecla");
    QTest::newRow("Enter") << Qt::Key_Return;
    QTest::newRow("Space") << Qt::Key_Space;
}

void TstFPrincip::keysOpenTheDiscipline()
{
    QFETCH(Qt::Key, tecla);
    Cenario c;
    QTest::keyClick(&c.principal().bloco(10), tecla);
    QVERIFY(c.blocos().isVisible());
    QCOMPARE(gDisciplina, qint16(10));
}

void TstFPrincip::drawingToolIsLookedForAtLoad()
{
    {
        Cenario c;
        QVERIFY(!child<QPushButton>(c.principal(), u"CmdDesenho"_s).isVisible());
    }
    Cenario c(2, {u"exe/desenhos.exe"_s});
    QVERIFY(child<QPushButton>(c.principal(), u"CmdDesenho"_s).isVisible());
}

void TstFPrincip::comingBackFromABoxIsNoActivation()
{
    Cenario c;
    QVERIFY(QTest::qWaitForWindowActive(&c.principal()));
    gImgApontada = 9;
    QTRY_VERIFY(tip(c.principal()).isVisible());
    QTimer::singleShot(0, [] {
        QWidget *box = QApplication::activeModalWidget();
        QTRY_VERIFY(box);
        QTest::keyClick(box, Qt::Key_Escape);
    });
    mostraCaixa({u"Texto"_s});
    c.principal().activateWindow(); // as a desktop does when a box goes
    QVERIFY(QTest::qWaitForWindowActive(&c.principal()));
    QVERIFY(tip(c.principal()).isVisible()); // the Activate handler would hide it
}

QTEST_MAIN(TstFPrincip)
#include "tst_fprincip.moc"
