#include "cenario.h"

#include "catalogue/estado.h"
#include "lessons/andamento.h"
#include "lessons/gancho.h"
#include "lessons/mensagens.h"
#include "platform/costuras.h"
#include "platform/erro.h"
#include "shell/estado.h"
#include "shell/faux.h"
#include "shell/fblocos.h"
#include "shell/fprincip.h"
#include "shell/imagem.h"
#include "startup/estado.h"
#include "support/suporte.h"

#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

/// The window of the roteiros: its pictures, what a click does in each mode, its hiding.
class TstFBlocos : public QObject
{
    Q_OBJECT
private slots:
    void layoutIsInTwips_data();
    void layoutIsInTwips();
    void picturesOfTheDiscipline();
    void damagedFigureIsAFailure();
    void clickRunsTheRoteiro();
    void listDecidesWhatRuns_data();
    void listDecidesWhatRuns();
    void selectionWinsOverCopying();
    void pictureWithoutRoteiro();
    void copyingAsksAndUnticks();
    void refusedCopyLeavesTheBoxTicked();
    void fiveReloads();
    void closingHidesAndKeepsTheTimer();
    void monthWithoutTheDiscipline();
    void messageInTheMiddleOfAnOpening();
    void monthClickInTheMiddleOfAnOpening();
    void tipIsTheTagAtThePicture();
    void focusOnAHiddenWindowFails();
};

static void openMathematics(Cenario &c)
{
    QTest::mouseClick(&c.principal().bloco(9), Qt::LeftButton);
    QVERIFY(c.blocos().isVisible());
}

static QString shownPictures(fBlocos &janela)
{
    QString shown;
    for (int i = 1; i <= 16; ++i) {
        if (!janela.botao(i).isHidden())
            shown += QString::number(i) + u' ';
    }
    return shown;
}

void TstFBlocos::layoutIsInTwips_data()
{
    QTest::addColumn<QString>("nome");
    QTest::addColumn<QRect>("lugar"); // pixels
    QTest::newRow("first picture") << u"ImgBotao(1)"_s << QRect(16, 36, 85, 85);
    QTest::newRow("second row") << u"ImgBotao(7)"_s << QRect(292, 164, 85, 85);
    QTest::newRow("last picture") << u"ImgBotao(16)"_s << QRect(436, 420, 85, 85);
    QTest::newRow("game 0") << u"CmdJogos(0)"_s << QRect(4, 0, 21, 21);
    QTest::newRow("game 15, third of the fifth picture") << u"CmdJogos(15)"_s << QRect(80, 256, 21, 21);
    QTest::newRow("game 45 stands as the others") << u"CmdJogos(45)"_s << QRect(356, 512, 21, 21);
    QTest::newRow("game 46 stands 60 further") << u"CmdJogos(46)"_s << QRect(440, 512, 21, 21);
    QTest::newRow("manual") << u"CmdManual"_s << QRect(248, 516, 33, 33);
    QTest::newRow("back") << u"cmdVoltar"_s << QRect(488, 0, 33, 33);
    QTest::newRow("tip") << u"FrmTip"_s << QRect(64, 424, 294, 37);
}

void TstFBlocos::layoutIsInTwips()
{
    QFETCH(QString, nome);
    QFETCH(QRect, lugar);
    Cenario c;
    QCOMPARE(c.blocos().size(), QSize(528, 552));
    QCOMPARE(child<QWidget>(c.blocos(), nome).geometry(), lugar);
}

void TstFBlocos::picturesOfTheDiscipline()
{
    Cenario c;
    openMathematics(c);
    QCOMPARE(shownPictures(c.blocos()), u"1 2 3 "_s);
    QCOMPARE(c.blocos().botao(2).tag(), u"Roteiro 2 - Descrição 2"_s);
    QCOMPARE(c.blocos().botao(2).accessibleName(), u"Roteiro 2 - Descrição 2"_s);
    const QColor meio = c.blocos().botao(1).grab().toImage().pixelColor(c.blocos().botao(1).rect().center());
    QCOMPARE(meio, QColor(Qt::darkGreen)); // the figure is really on the button
    QCOMPARE(c.blocos().windowTitle(), u"Série: Fundamental I"_s);
    for (int k = 0; k <= 48; ++k)
        QVERIFY(child<QPushButton>(c.blocos(), u"CmdJogos(%1)"_s.arg(k)).isHidden());
}

void TstFBlocos::damagedFigureIsAFailure()
{
    Cenario c;
    escreve(noWindows(u"estragada.gif"_s), "GIF89a no picture at all");
    const QString estragada = barras(noWindows(u"estragada.gif"_s));
    try {
        c.blocos().loadPicture(3, estragada);
        QFAIL("a damaged picture was taken");
    } catch (const ErroExecucao &falha) {
        QCOMPARE(falha.numero(), int(kFalhaFigura));
    }
    try {
        c.blocos().loadPicture(17, QString());
        QFAIL("there is no seventeenth picture");
    } catch (const ErroExecucao &falha) {
        QCOMPARE(falha.numero(), int(kFalhaControle));
    }
}

void TstFBlocos::clickRunsTheRoteiro()
{
    Cenario c(2, {u"exe/Zeto.exe"_s});
    QStringList started;
    costuras().startProgram = [&](const ProgramRequest &request) {
        started << QFileInfo(request.program).fileName();
        return false;
    };
    openMathematics(c);
    QTest::keyClick(&c.blocos().botao(2), Qt::Key_Space);
    QCOMPARE(started, QStringList{u"Zeto.exe"_s});
    QCOMPARE(gRotAtual, qint16(2));
    QCOMPARE(gAulaAtual, qint16(1));
    QCOMPARE(gCodRoteiro, 12610);
    QCOMPARE(gNomeRoteiro, u"Roteiro 2"_s);
    QVERIFY(gEmRoteiro);
}

void TstFBlocos::listDecidesWhatRuns_data()
{
    QTest::addColumn<QString>("lista");
    QTest::addColumn<bool>("roda");
    QTest::newRow("no list") << QString() << true;
    QTest::newRow("listed") << u"261\r\n"_s << true;
    QTest::newRow("part of a longer code passes") << u"12610\r\n"_s << true;
    QTest::newRow("not listed") << u"31\r\n"_s << false;
    QTest::newRow("a blank line is a list") << u"\r\n"_s << false;
}

void TstFBlocos::listDecidesWhatRuns()
{
    QFETCH(QString, lista);
    QFETCH(bool, roda);
    Cenario c;
    gRotSelec = lista;
    openMathematics(c);
    BoxScript boxes(roda ? std::initializer_list<Resposta>{} : std::initializer_list<Resposta>{Resposta::Ok});
    QTest::mouseClick(&c.blocos().botao(1), Qt::LeftButton);
    QCOMPARE(gCodRoteiro, roda ? 261 : 0);
    QVERIFY(gEmRoteiro); // a refusal sets it too
    if (!roda)
        QCOMPARE(boxes.last(),
            (Caixa{u"Roteiro não autorizado"_s, u"Selecionador de Roteiros"_s, Icone::Informacao, Botoes::Ok}));
}

void TstFBlocos::selectionWinsOverCopying()
{
    Cenario c;
    child<QCheckBox>(c.painel(), u"chkSelec"_s).click();
    child<QCheckBox>(c.painel(), u"ChkFig"_s).click();
    openMathematics(c);
    {
        BoxScript boxes{Resposta::Ok, Resposta::Ok};
        for (int i = 0; i < 2; ++i)
            QTest::mouseClick(&c.blocos().botao(1), Qt::LeftButton);
        QCOMPARE(
            boxes.last(), (Caixa{u"Roteiro Incluído"_s, u"Selecionador de Roteiros"_s, Icone::Informacao, Botoes::Ok}));
    }
    QCOMPARE(gRotSelec, u"261\r\n261\r\n"_s); // the same one twice is listed twice
    QCOMPARE(gRotAtual, qint16(0));
    QVERIFY(c.painel().copiaFiguras());
}

// A picture that stands there though a newer reading has no such roteiro: each step that fails is passed over alone.
void TstFBlocos::pictureWithoutRoteiro()
{
    Cenario c;
    openMathematics(c);
    gSelecionando = true;
    gRotSelec = u"10\r\n"_s;
    BoxScript boxes{Resposta::Ok, Resposta::Ok};
    c.blocos().botao(9).click();
    QCOMPARE(boxes.last().texto, u"Roteiro Incluído"_s);
    QCOMPARE(gRotSelec, u"10\r\n"_s);
    gSelecionando = false;
    c.blocos().botao(9).click();
    QCOMPARE(boxes.last().texto, u"Roteiro não autorizado"_s); // nothing of it is in the list, not even a 0
}

void TstFBlocos::copyingAsksAndUnticks()
{
    Cenario c;
    gDirFiguras = barras(noWindows(u"destino"_s));
    child<QCheckBox>(c.painel(), u"ChkFig"_s).click();
    openMathematics(c);
    const QString linha = u"(1,1)"_s + u"<SPÇ>"_s.repeated(10) + u"figura<SPÇ><PÇ><VAA>(1)x<VOA>(1)<VCM>"_s;
    gRoteiros.edit(1).Aulas.edit(1).Linha = linha;
    {
        BoxScript boxes{Resposta::Sim, Resposta::Ok};
        QTest::mouseClick(&c.blocos().botao(1), Qt::LeftButton);
        QCOMPARE(boxes.shown().front(),
            (Caixa{u"Deseja Copiar as Figuras deste Roteiro ?"_s, u"Tobi e Nina seus colegas na escola"_s,
                Icone::Nenhum, Botoes::SimNao}));
        QCOMPARE(boxes.last().texto,
            u"Fim da cópia das figuras\r\nForam copiadas no diretório: "_s
                + QDir::toNativeSeparators(noWindows(u"destino"_s)));
        QCOMPARE(boxes.last().titulo, QString::fromUtf16(kTituloPadrao));
    }
    QVERIFY(QFile::exists(noWindows(u"destino/figura.GIF"_s)));
    QCOMPARE(gRoteiros[1].Aulas[1].Linha, linha); // only a copy was taken apart
    QVERIFY(!c.painel().copiaFiguras());
    QCOMPARE(gCodRoteiro, 0); // nothing ran
}

void TstFBlocos::refusedCopyLeavesTheBoxTicked()
{
    Cenario c;
    child<QCheckBox>(c.painel(), u"ChkFig"_s).click();
    openMathematics(c);
    BoxScript boxes{Resposta::Nao};
    QTest::mouseClick(&c.blocos().botao(1), Qt::LeftButton);
    QVERIFY(c.painel().copiaFiguras());
}

void TstFBlocos::fiveReloads()
{
    Cenario c;
    openMathematics(c);
    QVERIFY(QTest::qWaitForWindowActive(&c.blocos()));
    escreve(noWindows(u"QUOREL2001/DBBLOCOS/F1/0124MAF1.EDB"_s), textoBloco(u"T"_s, u"O"_s, {1, 2, 3, 4, 5}));
    QTest::keyClick(&c.blocos().botao(1), Qt::Key_F5); // the window sees the key before the picture
    QCOMPARE(shownPictures(c.blocos()), u"1 2 3 4 5 "_s);
}

void TstFBlocos::closingHidesAndKeepsTheTimer()
{
    Cenario c;
    openMathematics(c);
    QVERIFY(!c.blocos().close());
    QVERIFY(!c.blocos().isVisible());
    QVERIFY(c.principal().isVisible());
    QVERIFY(c.painel().isVisible());
    QCOMPARE(shownPictures(c.blocos()), QString());
    QVERIFY(gJanelaGancho != 0); // hidden, never unloaded
}

void TstFBlocos::monthWithoutTheDiscipline()
{
    Cenario c;
    openMathematics(c);
    QTest::mouseClick(&child<QWidget>(c.painel(), u"OptMeses(2)"_s), Qt::LeftButton);
    QVERIFY(c.blocos().isVisible());
    QCOMPARE(child<QLabel>(c.blocos(), u"LblTitulo"_s).text(), u"ROTEIROS NÃO DISPONÍVEIS"_s);
    QCOMPARE(shownPictures(c.blocos()), QString());
    QCOMPARE(gRoteiros.upperBound(), 3); // the old ones stay
}

// The opening of a discipline without a file lets events run; a message then closes the window, and the opening, which
// goes on, shows it again.
void TstFBlocos::messageInTheMiddleOfAnOpening()
{
    Cenario c;
    openMathematics(c);
    bool came = false;
    QTimer::singleShot(0, &c.blocos(), [&] {
        came =
            EnviaTexto(janelaBlocos(), handleOf(&c.painel()), MSG_FECHA_BLOCOS, QString()) && !c.blocos().isVisible();
    });
    QTest::mouseClick(&child<QWidget>(c.painel(), u"OptMeses(2)"_s), Qt::LeftButton);
    QVERIFY(came);
    QVERIFY(c.blocos().isVisible());
    QCOMPARE(child<QLabel>(c.blocos(), u"LblTitulo"_s).text(), u"ROTEIROS NÃO DISPONÍVEIS"_s);
    QCOMPARE(
        shownPictures(c.blocos()), u"1 2 3 "_s); // its activation finds picture 1 hidden and reads the last text again
}

// The same with the user going back to the other month: what the newer opening has shown is hidden by the older one.
void TstFBlocos::monthClickInTheMiddleOfAnOpening()
{
    Cenario c;
    openMathematics(c);
    QTimer::singleShot(
        0, &c.blocos(), [&] { QTest::mouseClick(&child<QWidget>(c.painel(), u"OptMeses(1)"_s), Qt::LeftButton); });
    QTest::mouseClick(&child<QWidget>(c.painel(), u"OptMeses(2)"_s), Qt::LeftButton);
    QCOMPARE(c.painel().selectedMonth(), u"1"_s);
    QVERIFY(c.blocos().isVisible());
    QCOMPARE(gRoteiros.upperBound(), 3);
    QCOMPARE(child<QLabel>(c.blocos(), u"LblTitulo"_s).text(), u"Roteiros de Matemática"_s);
}

void TstFBlocos::tipIsTheTagAtThePicture()
{
    Cenario c;
    openMathematics(c);
    QWidget &tip = child<QWidget>(c.blocos(), u"FrmTip"_s);
    QTest::mouseMove(&c.blocos().botao(2), QPoint(40, 40));
    QTRY_VERIFY(tip.isVisible());
    QCOMPARE(child<QPlainTextEdit>(c.blocos(), u"TxtInf"_s).toPlainText(), u"Roteiro 2 - Descrição 2"_s);
    QCOMPARE(tip.pos(), QPoint((2220 + 1275 + 55) / 15 + 1, (540 + 1275) / 15));
    QTest::mouseMove(&c.blocos(), QPoint(300, 400));
    QTRY_VERIFY(!tip.isVisible());
    gImgApontada = 12; // a picture without a roteiro has no tag: the tick ends there
    QTRY_COMPARE(child<QPlainTextEdit>(c.blocos(), u"TxtInf"_s).toPlainText(), QString());
    QVERIFY(!tip.isVisible());
    QCOMPARE(gImgApontada, qint16(12));
}

void TstFBlocos::focusOnAHiddenWindowFails()
{
    Cenario c;
    QVERIFY_EXCEPTION_THROWN(c.blocos().focusBlocos(), ErroExecucao);
    QVERIFY(!c.blocos().isVisible());
}

QTEST_MAIN(TstFBlocos)
#include "tst_fblocos.moc"
