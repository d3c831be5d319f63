// The author's window through its real controls, on real files; and the one that installs a pack.
#include "oficina/documento.h"
#include "oficina/editordefonte.h"
#include "oficina/escolhafigura.h"
#include "oficina/instalador.h"
#include "oficina/janelaoficina.h"
#include "oficina/previa.h"

#include "pacote/montagem.h"
#include "platform/costuras.h"
#include "startup/estado.h"
#include "startup/quorel_zeto.h"
#include "support/acesso.h"
#include "support/suporte.h"
#include "support/table.h"

#include <QDir>
#include <QDropEvent>
#include <QImage>
#include <QLabel>
#include <QLayout>
#include <QListView>
#include <QListWidget>
#include <QMimeData>
#include <QPushButton>
#include <QSignalSpy>

using namespace quorel;
using namespace quorel::teste;

static const QByteArray kFonte = "tema: t\nobjetivo: o.\n\nROTEIRO 5 Um\ndesc: d\n\n"
                                 "AULA Zeto escolha: Cores\ntexto: Qual?\n* azul\n- verde\n\n"
                                 "AULA Zeto leia: Fim\ntexto: fim\n";

class TstOficina final : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup() { mWindow.reset(); }
    void theBlockOfASource_data();
    void theBlockOfASource();
    void whatIsWrittenIsSeen();
    void buttonsInsert();
    void findingsLeadToTheirLines();
    void savingMakesTheBlock();
    void aBlockFileIsWrittenAgain();
    void anotherEditorSaves();
    void figuresAreChosenAndDropped();
    void closingAsksFirst();
    void whatCannotBeOpened();
    void fitsASmallScreenAndTheKeyboard();
    void aPackIsInstalledAndTakenAway();
    void aBadPackIsTold();

private:
    void open(const QString &name = "/F1/0226PO.txt", const QByteArray &bytes = kFonte)
    {
        mDir->put(name, bytes);
        QString fault;
        mWindow = std::make_unique<JanelaOficina>(*Documento::abre(mDir->native(name), fault), true);
        mWindow->show();
        QVERIFY(QTest::qWaitForWindowActive(mWindow.get()));
    }
    EditorDeFonte &editor() { return child<EditorDeFonte>(*mWindow, "TxtFonte"); }
    JanelaLicao &player() { return *child<Previa>(*mWindow, "Previa").player(); }
    QString heading() { return child<QLabel>(*mWindow, "LblAula").text(); }
    QString foot() { return child<QLabel>(*mWindow, "LblRodape").text(); }
    void press(const QString &name) { QTest::mouseClick(&child<QPushButton>(*mWindow, name), Qt::LeftButton); }
    /// Every text that the player shows.
    QString seen()
    {
        QStringList all;
        for (const QLabel *each : player().findChildren<QLabel *>())
            all += each->text();
        for (const QAbstractButton *each : player().findChildren<QAbstractButton *>())
            all += each->text();
        return all.join('|');
    }

    std::unique_ptr<ScratchDir> mDir;
    std::unique_ptr<JanelaOficina> mWindow;
};

void TstOficina::init()
{
    failOnWarnings();
    reiniciaStartup();
    mDir = std::make_unique<ScratchDir>();
    qputenv("QUOREL_WINDIR", mDir->native("/win").toUtf8());
    gConfig.SetaCFG("ZETO_MM=" + mDir->at("\\mm") + "\r\nDBBLOCOS=" + mDir->at("\\blocos")
        + "\r\nDIRQUOREL=" + mDir->at("\\win\\QUOREL2001") + "\r\n");
}

void TstOficina::theBlockOfASource_data()
{
    const Table<QString, QString> row("source", "block");
    row("month, year, discipline in a level's folder", "/x/F1/0226po.txt", "/x/F1/0226POF1.EDB");
    row("with its level", "/x/0226MAI2.txt", "/x/0226MAI2.EDB");
    row("in another folder", "/x/lições/0226MA.txt", "");
    row("another name", "/x/F1/frações.txt", "");
}

void TstOficina::theBlockOfASource()
{
    QFETCH(QString, source);
    QFETCH(QString, block);
    const QString made = blocoDaFonte(source); // absolute, with its drive where there are drives
    QVERIFY2(block.isEmpty() ? made.isEmpty() : made.endsWith(block), qPrintable(made));
}

void TstOficina::whatIsWrittenIsSeen()
{
    open();
    QCOMPARE(heading(), "Roteiro 1, aula 1 de 2"); // above the first Roteiro
    QTRY_VERIFY(seen().contains("Qual?") && seen().contains("azul"));
    editor().vaiPara({8, 8});
    QTest::keyClicks(&editor(), "Que cor? ");
    QTRY_VERIFY(seen().contains("Que cor? Qual?"));
    QVERIFY(editor().hasFocus()); // a lesson takes the focus where it can
    editor().vaiPara({12, 1});
    QTRY_COMPARE(heading(), "Roteiro 1, aula 2 de 2");
    QVERIFY(seen().contains("fim"));
    QTest::keyClick(&editor(), Qt::Key_PageUp, Qt::ControlModifier);
    QCOMPARE(heading(), "Roteiro 1, aula 1 de 2");
    QTest::keyClick(&editor(), Qt::Key_PageDown, Qt::ControlModifier);
    QCOMPARE(editor().linha(), 12);
    press("CmdAulaAnterior");
    QCOMPARE(editor().linha(), 7);
    // Answered as by a pupil; what is not changed is not begun anew.
    emit player().proxima();
    QCOMPARE(editor().linha(), 12);
    editor().clear();
    QTRY_VERIFY(seen().contains("Escreva um roteiro"));
}

void TstOficina::buttonsInsert()
{
    open("/F1/0226PO.txt", "");
    press("CmdEscolha"); // the first one brings its Roteiro
    QVERIFY(editor().toPlainText().startsWith("ROTEIRO 90001 "));
    for (const char *name : {"CmdLeia", "CmdMarque", "CmdEscreva", "CmdOrdene", "CmdDesenhe", "CmdHistoria"})
        press(name);
    QCOMPARE(heading(), "Roteiro 1, aula 7 de 7");
    QTest::keyClick(&editor(), Qt::Key_1, Qt::ControlModifier);
    QCOMPARE(heading(), "Roteiro 1, aula 8 de 8");
    editor().moveCursor(QTextCursor::Start);
    QTest::keyClick(&editor(), Qt::Key_2, Qt::ControlModifier); // behind the Roteiro's head
    QCOMPARE(heading(), "Roteiro 1, aula 1 de 9");
    editor().undo();
    press("CmdRoteiro");
    QVERIFY(editor().toPlainText().contains("ROTEIRO 90002 "));
}

void TstOficina::findingsLeadToTheirLines()
{
    open("/F1/0226PO.txt", QByteArray(kFonte).replace("* azul", "* azul 日") + "resposta? 5\n");
    auto &list = child<QListWidget>(*mWindow, "LstAchados");
    QVERIFY(list.count() >= 2);
    QVERIFY2(list.item(0)->text().startsWith("linha 9: "), qPrintable(list.item(0)->text()));
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(list.item(0)).center());
    QCOMPARE(editor().linha(), 9);
    QVERIFY(editor().hasFocus());
    QTest::keyClick(&editor(), Qt::Key_F4);
    QVERIFY(editor().linha() > 9);
    QVERIFY(!editor().extraSelections().isEmpty());
}

void TstOficina::savingMakesTheBlock()
{
    open();
    editor().vaiPara({8, 8});
    QTest::keyClicks(&editor(), "Ah! ");
    QVERIFY(mWindow->windowTitle().startsWith("* 0226PO.txt"));
    QTest::keyClick(&editor(), Qt::Key_S, Qt::ControlModifier);
    QVERIFY(!mWindow->windowTitle().startsWith("*"));
    QVERIFY(mDir->get("/F1/0226PO.txt").contains("texto: Ah! Qual?\n"));
    QVERIFY(mDir->get("/F1/0226POF1.EDB").contains("Ah! Qual?"));
    QVERIFY(foot().contains("Feito: "));
    QCOMPARE(QDir(mDir->native("/F1")).entryList(QDir::Files).size(), 2);
    // What can't be understood leaves the block as it was.
    const QByteArray block = mDir->get("/F1/0226POF1.EDB");
    editor().setPlainText("isto não é nada");
    press("CmdSalvar");
    QCOMPARE(mDir->get("/F1/0226PO.txt"), "isto não é nada");
    QCOMPARE(mDir->get("/F1/0226POF1.EDB"), block);
    QVERIFY(foot().contains("não foi feito"));
}

void TstOficina::aBlockFileIsWrittenAgain()
{
    const QByteArray edb = makeBlock(kFonte, "f", blockFile("F1/0226POF1.EDB")).edb;
    open("/F1/0226POF1.EDB", edb);
    QVERIFY(editor().toPlainText().contains("AULA Zeto escolha: Cores\n"));
    press("CmdSalvar");
    QCOMPARE(mDir->get("/F1/0226POF1.EDB"), edb);
}

void TstOficina::anotherEditorSaves()
{
    open();
    const auto saves = [this](const char *text) { // a new file in the place of the old one
        mDir->put("/F1/novo", QByteArray(kFonte).replace("Qual?", text));
        QFile::remove(mDir->native("/F1/0226PO.txt"));
        QFile::rename(mDir->native("/F1/novo"), mDir->native("/F1/0226PO.txt"));
    };
    editor().vaiPara({9, 1});
    saves("Outro?");
    QTRY_VERIFY(seen().contains("Outro?"));
    QCOMPARE(editor().linha(), 9);
    QVERIFY(!mWindow->windowTitle().startsWith("*"));
    QTest::keyClicks(&editor(), "# ");
    auto &notice = child<QWidget>(*mWindow, "PnlAviso");
    saves("Terceiro?");
    QTRY_VERIFY(notice.isVisible());
    QVERIFY(editor().toPlainText().contains("# * azul")); // nothing of ours is lost unasked
    press("CmdFicar");
    QVERIFY(!notice.isVisible() && editor().toPlainText().contains("# * azul"));
    saves("Quarto?");
    QTRY_VERIFY(notice.isVisible());
    press("CmdRecarregar");
    QVERIFY(editor().toPlainText().contains("Quarto?"));
    QTRY_VERIFY(seen().contains("Quarto?"));
}

void TstOficina::figuresAreChosenAndDropped()
{
    QImage picture(20, 10, QImage::Format_RGB32);
    picture.fill(Qt::red);
    QDir().mkpath(mDir->native("/mm/Fig/G/_"));
    QDir().mkpath(mDir->native("/mm/Fig/C/_"));
    QVERIFY(picture.save(mDir->native("/mm/Fig/G/_/GATO.BMP")) && picture.save(mDir->native("/mm/Fig/C/_/CAO.BMP")));
    open();
    const auto choose = [this](const QString &typed) {
        NextWindow<EscolhaFigura> next([typed](EscolhaFigura &window) {
            QTest::keyClicks(&child<QWidget>(window, "TxtBusca"), typed);
            QCOMPARE(child<QListView>(window, "LstFiguras").model()->rowCount(), 1);
            QVERIFY(!child<QListView>(window, "LstFiguras").currentIndex().data(Qt::DecorationRole).isNull());
            QTest::mouseClick(&child<QPushButton>(window, "CmdUsar"), Qt::LeftButton);
        });
        press("CmdFigura");
        QVERIFY(next.came());
    };
    editor().vaiPara({10, 3});
    choose("gat");
    QVERIFY(editor().toPlainText().contains("- verde @GATO\n"));
    choose("CAO");
    QVERIFY(editor().toPlainText().contains("- verde @CAO\n"));
    editor().vaiPara({8, 1});
    choose("gato");
    QVERIFY(editor().toPlainText().contains("texto: Qual?\nfig: GATO\n"));
    QVERIFY(picture.save(mDir->native("/praia.png")));
    BoxScript boxes;
    boxes.respondeTexto("PRAIA");
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(mDir->native("/praia.png"))});
    const QPointF at = editor().cursorRect().center();
    QDragEnterEvent enter(at.toPoint(), Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(editor().viewport(), &enter);
    QDropEvent drop(at, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(editor().viewport(), &drop);
    QVERIFY(QFile::exists(mDir->native("/mm/Fig/P/A/PRAIA.BMP")));
    QVERIFY(editor().toPlainText().contains("fig: PRAIA\n"));
}

void TstOficina::closingAsksFirst()
{
    open();
    BoxScript boxes{Resposta::Cancela, Resposta::Ok};
    QTest::keyClicks(&editor(), "#");
    QVERIFY(!mWindow->close());
    QVERIFY(mWindow->close());
    QCOMPARE(mDir->get("/F1/0226PO.txt"), kFonte);
}

void TstOficina::whatCannotBeOpened()
{
    QString fault;
    QVERIFY(!Documento::abre(mDir->native("/nada.txt"), fault));
    mDir->put("/grande.txt", QByteArray(3 << 20, 'x'));
    QVERIFY(!Documento::abre(mDir->native("/grande.txt"), fault) && fault.contains("2 MB"));
    mDir->put("/uma.txt", QByteArray(1 << 20, 'x')); // one endless line
    QVERIFY(!Documento::abre(mDir->native("/uma.txt"), fault));
    open("/binario.txt", QByteArray("\0\xff\xfe\x01", 4).repeated(1000));
}

void TstOficina::fitsASmallScreenAndTheKeyboard()
{
    open();
    mWindow->resize(900, 520);
    QVERIFY(mWindow->minimumSizeHint().width() <= 1004 && mWindow->minimumSizeHint().height() <= 554);
    QVERIFY(player().width() >= player().minimumWidth() && player().height() >= player().minimumHeight());
    child<QWidget>(*mWindow, "PnlAviso").show();
    mWindow->layout()->activate();
    child<QWidget>(*mWindow, "PnlAviso").layout()->activate();
    textosCabem(*mWindow);
    QTest::keyClick(&editor(), Qt::Key_F6);
    QVERIFY(child<QWidget>(*mWindow, "VistaLicao").hasFocus());
    QTest::keyClick(&child<QWidget>(*mWindow, "VistaLicao"), Qt::Key_F6);
    QVERIFY(editor().hasFocus());
    const QStringList round = voltaDoTab(*mWindow);
    for (const char *name : {"TxtFonte", "CmdSalvar", "CmdEscolha", "CmdFigura", "LstAchados", "CmdProximaAula"})
        QVERIFY2(round.contains(name), qPrintable(name + (": " + round.join(' '))));
}

void TstOficina::aPackIsInstalledAndTakenAway()
{
    mDir->put("/p/manifesto.json", pacote::manifestoDeExemplo());
    mDir->put("/p/blocos/F1/0226PO.txt", kFonte);
    mDir->put("/blocos/F1/0226POF1.EDB", "da escola");
    QCOMPARE(pacote::gravaPacote(pacote::leiaPasta(mDir->native("/p")), mDir->native("/p.quorel")), QString());
    Instalador window(mDir->native("/p.quorel"));
    window.show();
    QCOMPARE(child<QListWidget>(window, "LstPassos").item(0)->text(),
        "já existe com outro conteúdo: " + QDir::toNativeSeparators(mDir->native("/blocos/F1/0226POF1.EDB")));
    QTest::mouseClick(&child<QPushButton>(window, "CmdInstalar"), Qt::LeftButton);
    QCOMPARE(mDir->get("/blocos/F1/0226POF1.EDB"), "da escola");
    child<QAbstractButton>(window, "ChkSubstitui").setChecked(true);
    QTest::mouseClick(&child<QPushButton>(window, "CmdInstalar"), Qt::LeftButton);
    QVERIFY(mDir->get("/blocos/F1/0226POF1.EDB").contains("NomeRot =Um"));
    QVERIFY(child<QLabel>(window, "LblResultado").text().startsWith("1 arquivos postos"));
    QVERIFY(!child<QPushButton>(window, "CmdInstalar").isEnabled());
    window.layout()->activate();
    textosCabem(window);
    QTest::mouseClick(&child<QPushButton>(window, "CmdRetirar"), Qt::LeftButton);
    QCOMPARE(mDir->get("/blocos/F1/0226POF1.EDB"), "da escola");
}

void TstOficina::aBadPackIsTold()
{
    mDir->put("/mau.quorel", "não é um zip");
    Instalador window(mDir->native("/mau.quorel"));
    QVERIFY(!child<QPushButton>(window, "CmdInstalar").isEnabled());
    QVERIFY(child<QListWidget>(window, "LstPassos").item(0)->text().startsWith("não é um pacote"));
}

QTEST_MAIN(TstOficina)
#include "tst_oficina.moc"
