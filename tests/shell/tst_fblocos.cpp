#include "cenario.h"

#include "catalogue/estado.h"
#include "lessons/andamento.h"
#include "lessons/gancho.h"
#include "lessons/mensagens.h"
#include "platform/costuras.h"
#include "platform/erro.h"
#include "shell/estado.h"
#include "startup/estado.h"

#include <QDir>
#include <QFileInfo>
#include <QImage>
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
    void picturesOfTheDiscipline();
    void whatIsNotThereIsAFailure();
    void clickRunsTheRoteiroIfTheListHasIt();
    void selectionWinsOverCopying();
    void copyingAsksAndUnticks();
    void fiveReloads();
    void closingHidesAndTheMainWindowStopsTheTimer();
    void monthWithoutTheDiscipline();
    void messageInTheMiddleOfAnOpening();
    void monthClickInTheMiddleOfAnOpening();
    void tipIsTheTagAtThePicture();
    void focusBeginsOnTheFirstPicture();
    void aDoubleClickRunsARoteiroOnceAndListsItTwice();
    void theImagePointedAtIsTheOneOfTheWindowOnTop();
    void aMonthBringsAMinimisedWindowBack();
    void timersKeepTheirBeat();
    void cornersOfAPictureLetThePageThrough();
};

void TstFBlocos::picturesOfTheDiscipline()
{
    Cenario c;
    c.abreMatematica();
    QCOMPARE(c.roteiros(), u"1 2 3"_s);
    QCOMPARE(c.blocos().botao(2).tag(), u"Roteiro 2 - Descrição 2"_s);
    QCOMPARE(c.blocos().botao(2).accessibleName(), u"Roteiro 2 - Descrição 2"_s);
    const QColor meio = c.blocos().botao(1).grab().toImage().pixelColor(c.blocos().botao(1).rect().center());
    QCOMPARE(meio, QColor(Qt::darkGreen)); // the figure is really on the button
    QCOMPARE(c.blocos().windowTitle(), u"Série: Fundamental I"_s);
    for (int k = 0; k <= 48; ++k)
        QVERIFY(child<QPushButton>(c.blocos(), u"CmdJogos(%1)"_s.arg(k)).isHidden());
}

void TstFBlocos::whatIsNotThereIsAFailure()
{
    Cenario c;
    escreve(noWindows(u"estragada.gif"_s), "GIF89a no picture at all");
    const QString estragada = barras(noWindows(u"estragada.gif"_s));
    QCOMPARE(failureOf([&] { c.blocos().loadPicture(3, estragada); }), int(kFalhaFigura));
    QCOMPARE(failureOf([&] { c.blocos().loadPicture(17, {}); }), int(kFalhaControle));
    QCOMPARE(failureOf([&] { c.blocos().focusBlocos(); }), int(kFalhaFoco)); // of a hidden window
    QVERIFY(!c.blocos().isVisible());
}

void TstFBlocos::clickRunsTheRoteiroIfTheListHasIt()
{
    Cenario c(2, {u"exe/Zeto.exe"_s});
    QStringList started;
    costuras().startProgram = [&](const ProgramRequest &request) {
        started << QFileInfo(request.program).fileName();
        return false;
    };
    c.abreMatematica();
    gRotSelec = u"12610\r\n"_s;
    BoxScript boxes{Resposta::Ok};
    c.clica(u"ImgBotao(3)"_s);
    QCOMPARE(boxes.last().texto, u"Roteiro não autorizado"_s);
    QVERIFY(gEmRoteiro); // a refusal sets it too
    QCOMPARE(gCodRoteiro, 0);
    QVERIFY(started.isEmpty());
    QTest::keyClick(&c.blocos().botao(2), Qt::Key_Space);
    QCOMPARE(started, QStringList{u"Zeto.exe"_s});
    QCOMPARE(gRotAtual, qint16(2));
    QCOMPARE(gAulaAtual, qint16(1));
    QCOMPARE(gCodRoteiro, 12610);
    QCOMPARE(gNomeRoteiro, u"Roteiro 2"_s);
}

// The last picture stands there though a newer reading has no such roteiro: each step that fails is passed over alone.
void TstFBlocos::selectionWinsOverCopying()
{
    Cenario c;
    c.clica(u"chkSelec"_s);
    c.clica(u"ChkFig"_s);
    c.abreMatematica();
    BoxScript boxes{Resposta::Ok, Resposta::Ok, Resposta::Ok, Resposta::Ok};
    for (const QString &figura : {u"ImgBotao(1)"_s, u"ImgBotao(1)"_s, u"ImgBotao(9)"_s}) {
        c.clica(figura);
        QCOMPARE(boxes.last().texto, u"Roteiro Incluído"_s);
    }
    QCOMPARE(gRotSelec, u"261\r\n261\r\n"_s); // the same one twice is listed twice
    QCOMPARE(gRotAtual, qint16(0));
    QVERIFY(c.painel().copiaFiguras());
    gSelecionando = false;
    c.clica(u"ChkFig"_s);
    gRotSelec = u"10\r\n"_s;
    c.clica(u"ImgBotao(9)"_s);
    QCOMPARE(boxes.last().texto, u"Roteiro não autorizado"_s); // nothing of it is in the list, not even a 0
}

void TstFBlocos::copyingAsksAndUnticks()
{
    Cenario c;
    gDirFiguras = barras(noWindows(u"destino"_s));
    c.clica(u"ChkFig"_s);
    c.abreMatematica();
    const QString linha = u"(1,1)"_s + u"<SPÇ>"_s.repeated(10) + u"figura<SPÇ><PÇ><VAA>(1)x<VOA>(1)<VCM>"_s;
    gRoteiros.edit(1).Aulas.edit(1).Linha = linha;
    BoxScript boxes{Resposta::Nao, Resposta::Sim, Resposta::Ok};
    c.clica(u"ImgBotao(1)"_s);
    QVERIFY(c.painel().copiaFiguras()); // refused, it stays ticked
    QCOMPARE(boxes.last(),
        (Caixa{u"Deseja Copiar as Figuras deste Roteiro ?"_s, u"Tobi e Nina seus colegas na escola"_s, Icone::Nenhum,
            Botoes::SimNao}));
    c.clica(u"ImgBotao(1)"_s);
    QCOMPARE(boxes.last(),
        Caixa{.texto = u"Fim da cópia das figuras\r\nForam copiadas no diretório: "_s
                + QDir::toNativeSeparators(noWindows(u"destino"_s))});
    QVERIFY(QFile::exists(noWindows(u"destino/figura.GIF"_s)));
    QCOMPARE(gRoteiros[1].Aulas[1].Linha, linha); // only a copy was taken apart
    QVERIFY(!c.painel().copiaFiguras());
    QCOMPARE(gCodRoteiro, 0); // nothing ran
}

void TstFBlocos::fiveReloads()
{
    Cenario c;
    c.abreMatematica();
    QVERIFY(QTest::qWaitForWindowActive(&c.blocos()));
    escreve(noWindows(u"QUOREL2001/DBBLOCOS/F1/0124MAF1.EDB"_s), textoBloco(u"T"_s, u"O"_s, {1, 2, 3, 4, 5}));
    QTest::keyClick(&c.blocos().botao(1), Qt::Key_F5); // the window sees the key before the picture
    QCOMPARE(c.roteiros(), u"1 2 3 4 5"_s);
}

void TstFBlocos::closingHidesAndTheMainWindowStopsTheTimer()
{
    Cenario c;
    c.abreMatematica();
    gImgApontada = 2;
    QTRY_VERIFY(c.blocos().findChild<QPlainTextEdit *>(u"TxtInf"_s));
    QVERIFY(!c.blocos().close());
    QVERIFY(!c.blocos().isVisible() && c.principal().isVisible() && c.painel().isVisible());
    QCOMPARE(c.roteiros(), QString());
    QVERIFY(gJanelaGancho != 0); // hidden, never unloaded
    gImgApontada = 9; // two tips of the main window later, a tick here would have emptied the text
    QWidget &tip = child<QWidget>(c.principal(), u"FrmTip"_s);
    QTRY_VERIFY(tip.isVisible());
    QTest::mouseMove(&tip, QPoint(100, 2));
    QTRY_VERIFY(!tip.isVisible());
    QTRY_VERIFY(tip.isVisible());
    QCOMPARE(child<QPlainTextEdit>(c.blocos(), u"TxtInf"_s).toPlainText(), u"Roteiro 2 - Descrição 2"_s);
}

void TstFBlocos::monthWithoutTheDiscipline()
{
    Cenario c;
    c.abreMatematica();
    c.clica(u"OptMeses(2)"_s);
    QVERIFY(c.blocos().isVisible());
    QCOMPARE(c.tituloBlocos(), u"ROTEIROS NÃO DISPONÍVEIS"_s);
    QCOMPARE(c.roteiros(), QString());
    QCOMPARE(gRoteiros.upperBound(), 3); // the old ones stay
}

// The opening of a discipline without a file lets events run; a message then closes the window, and the opening, which
// goes on, shows it again.
void TstFBlocos::messageInTheMiddleOfAnOpening()
{
    Cenario c;
    c.abreMatematica();
    bool came = false;
    QTimer::singleShot(0, &c.blocos(), [&] {
        came =
            EnviaTexto(janelaBlocos(), handleOf(&c.painel()), MSG_FECHA_BLOCOS, QString()) && !c.blocos().isVisible();
    });
    c.clica(u"OptMeses(2)"_s);
    QVERIFY(came);
    QVERIFY(c.blocos().isVisible());
    QCOMPARE(c.tituloBlocos(), u"ROTEIROS NÃO DISPONÍVEIS"_s);
    QCOMPARE(c.roteiros(), u"1 2 3"_s); // its activation finds picture 1 hidden and reads the last text again
}

// The same with the user going back to the other month: what the newer opening has shown is hidden by the older one.
void TstFBlocos::monthClickInTheMiddleOfAnOpening()
{
    Cenario c;
    c.abreMatematica();
    QTimer::singleShot(0, &c.blocos(), [&] { c.clica(u"OptMeses(1)"_s); });
    c.clica(u"OptMeses(2)"_s);
    QCOMPARE(c.painel().selectedMonth(), u"1"_s);
    QVERIFY(c.blocos().isVisible());
    QCOMPARE(gRoteiros.upperBound(), 3);
    QCOMPARE(c.tituloBlocos(), u"Roteiros de Matemática"_s);
}

void TstFBlocos::tipIsTheTagAtThePicture()
{
    Cenario c;
    c.abreMatematica();
    QWidget &tip = child<QWidget>(c.blocos(), u"FrmTip"_s);
    QTest::mouseMove(&c.blocos().botao(2), QPoint(40, 40));
    QTRY_VERIFY(tip.isVisible());
    const auto &texto = child<QPlainTextEdit>(c.blocos(), u"TxtInf"_s);
    QCOMPARE(texto.toPlainText(), u"Roteiro 2 - Descrição 2"_s);
    QCOMPARE(tip.pos(), QPoint((2220 + 1275 + 55) / 15 + 1, (540 + 1275) / 15));
    QTest::mouseMove(&c.blocos(), QPoint(300, 400));
    QTRY_VERIFY(!tip.isVisible());
    gImgApontada = 12; // a picture without a roteiro has no tag: the tick ends there
    QTRY_COMPARE(texto.toPlainText(), QString());
    QVERIFY(!tip.isVisible());
    QCOMPARE(gImgApontada, qint16(12));
}

void TstFBlocos::focusBeginsOnTheFirstPicture()
{
    Cenario c;
    for (int i = 0; i < 2; ++i) {
        QTest::keyClick(&c.principal().bloco(9), Qt::Key_Return);
        QVERIFY(QTest::qWaitForWindowActive(&c.blocos()));
        QTRY_COMPARE(QApplication::focusWidget(), &c.blocos().botao(1));
        QTest::keyClick(&c.blocos().botao(1), Qt::Key_F5);
        QCOMPARE(QApplication::focusWidget(), &c.blocos().botao(1));
        c.clica(u"cmdVoltar"_s); // the second time the window has had the focus elsewhere
    }
}

void TstFBlocos::aDoubleClickRunsARoteiroOnceAndListsItTwice()
{
    Cenario c(2, {u"exe/Zeto.exe"_s});
    int started = 0;
    costuras().startProgram = [&](const ProgramRequest &) {
        ++started;
        return false;
    };
    c.abreMatematica();
    const auto doubleClick = [&c] {
        QTest::mouseClick(&c.blocos().botao(2), Qt::LeftButton);
        QTest::mouseDClick(&c.blocos().botao(2), Qt::LeftButton);
        QTest::mouseRelease(&c.blocos().botao(2), Qt::LeftButton);
    };
    doubleClick();
    QCOMPARE(started, 1);
    QTest::keyClick(&c.blocos().botao(2), Qt::Key_Space);
    QCOMPARE(started, 2);
    gSelecionando = true;
    BoxScript boxes{Resposta::Ok, Resposta::Ok};
    doubleClick();
    QCOMPARE(gRotSelec, u"12610\r\n12610\r\n"_s);
}

void TstFBlocos::theImagePointedAtIsTheOneOfTheWindowOnTop()
{
    Cenario c;
    const auto point = [](const Imagem &at) { QCursor::setPos(at.mapToGlobal(at.rect().center())); };
    point(c.blocos().botao(1)); // where fPrincip has block 9
    QTest::keyClick(&c.principal().bloco(10), Qt::Key_Space);
    QCOMPARE(gImgApontada, qint16(1));
    gImgApontada = 2; // as the keyboard leaves it
    QTest::keyClick(&c.controle(u"cmdVoltar"_s), Qt::Key_Space);
    QCOMPARE(gImgApontada, qint16(9));
    point(c.blocos().botao(4)); // block 2, which this month hides
    QTest::keyClick(&c.principal().bloco(10), Qt::Key_Space);
    QCOMPARE(gImgApontada, qint16(-1)); // there is one roteiro
    gImgApontada = 2;
    c.blocos().close();
    QCOMPARE(gImgApontada, qint16(-1));
}

void TstFBlocos::aMonthBringsAMinimisedWindowBack()
{
    Cenario c;
    c.abreMatematica();
    c.blocos().showMinimized();
    QTRY_VERIFY(c.blocos().isMinimized());
    c.clica(u"OptMeses(1)"_s);
    QVERIFY(c.blocos().isVisible() && !c.blocos().isMinimized());
}

// However often the windows are activated meanwhile.
void TstFBlocos::timersKeepTheirBeat()
{
    Cenario c;
    for (JanelaBase *janela : std::initializer_list<JanelaBase *>{&c.principal(), &c.blocos()}) {
        QVERIFY(QTest::qWaitFor([&] {
            janela->mostra();
            gImgApontada = 9; // the first tick with one makes the text box
            return janela->findChild<QWidget *>(u"TxtInf"_s) != nullptr;
        }));
        gTextoDB = textoBloco(u"T"_s, u"O"_s, {1, 2, 3, 4, 5, 6, 7, 8, 9});
    }
}

void TstFBlocos::cornersOfAPictureLetThePageThrough()
{
    Cenario c;
    QImage branca(81, 81, QImage::Format_RGB32);
    branca.fill(Qt::white);
    QVERIFY(branca.save(noWindows(u"branca.png"_s)));
    c.blocos().loadPicture(1, barras(noWindows(u"branca.png"_s)));
    const QPixmap shown = c.blocos().botao(1).grab();
    for (const QPoint corner : {QPoint(3, 3), QPoint(81, 81)})
        QVERIFY(shown.toImage().pixelColor(corner * shown.devicePixelRatio()) != QColor(Qt::white));
}

QTEST_MAIN(TstFBlocos)
#include "tst_fblocos.moc"
