// Programs that are started, turns of events, and the end of the program.
#include "platform/aplicacao.h"
#include "platform/eventos.h"
#include "platform/programas.h"

#include "filho_em_teste.h"

#include <QDesktopServices>
#include <QUrl>

#include <optional>

using namespace quorel;
using namespace quorel::teste;

/// A directory with scripts in the place of programs.
struct Scripts : ScratchDir
{
    QString add(const QString &name, const QByteArray &text) const
    {
        put(name, "#!/bin/sh\n" + text);
        QFile::setPermissions(native(name), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return native(name);
    }
};

class TstProgramas : public QObject
{
    Q_OBJECT
private slots:
    void init() { failOnWarnings(); }
    void commandLineIsJoined();
    void aProgramGetsItsArguments();
    void whatCantBeStarted();
    void theStartWaitsForTheAddressOrTheEnd();
    void aTurnRunsWhatIsQueuedHeldOrNot();
    void handlesOfWidgets();
    void documentsAreFoundByTheirDirectory_data();
    void documentsAreFoundByTheirDirectory();
    void roundRegion();
    void theEndOfTheProgram();
};

void TstProgramas::commandLineIsJoined()
{
    char program[] = "shell", first[] = "/NOMECLASSE:\"Tobi e Nina\"", second[] = "/ESC:";
    char *words[] = {program, first, second};
    QCOMPARE(rawCommandLine(3, words), "/NOMECLASSE:\"Tobi e Nina\" /ESC:");
    QCOMPARE(rawCommandLine(1, words), "");
}

void TstProgramas::aProgramGetsItsArguments()
{
    const Scripts scripts;
    const QString program = scripts.add("/Jogo Um.exe",
        "echo \"$*\" >\"$0.out\"; for a; do echo \"[$a]\"; done >>\"$0.out\"; mv \"$0.out\" \"$0.txt\"\n");
    QVERIFY(startProgramNow({program, "/A  *.txt $HOME;ls \"a b\""}));
    QTRY_COMPARE(le(program + ".txt"),
        "/A  *.txt $HOME;ls \"a b\"\n"
        "[/A]\n[ *.txt]\n[$HOME;ls]\n[\"a]\n[b\"]\n"); // no interpreter sees them, and no blank is lost
}

void TstProgramas::whatCantBeStarted()
{
    const Scripts scripts;
    scripts.put("/texto.exe", "no program");
    for (const QString &program : {scripts.native("/falta.exe"), scripts.native("/texto.exe"), QString()})
        QVERIFY(!startProgramNow({program, "", true}));
}

void TstProgramas::theStartWaitsForTheAddressOrTheEnd()
{
    const Scripts scripts;
    const QString ends = scripts.add("/Acaba.exe", "touch \"$0.done\"\n");
    QVERIFY(startProgramNow({ends, "", true}));
    QVERIFY(QFile::exists(ends + ".done")); // it had ended when the start returned
    QVERIFY(startProgramNow({QUOREL_BIN "/filho_teste", "Pronto Dentro", true}));
    const Janela filho = findWindow(u"Pronto", false);
    QVERIFY(filho != 0 && findWindow(u"Dentro", false) != 0);
    QCOMPARE(sendCopyData(filho, 0, kDie, 0, {}), 0);
    QTRY_COMPARE(findWindow(u"Pronto", false), Janela(0));
}

void TstProgramas::aTurnRunsWhatIsQueuedHeldOrNot()
{
    for (const bool held : {true, false}) {
        std::optional<HeldUserInput> hold;
        if (held)
            hold.emplace();
        bool turned = false;
        QMetaObject::invokeMethod(
            this, [&] { turned = true; }, Qt::QueuedConnection);
        eventTurn();
        QVERIFY(turned);
    }
}

void TstProgramas::handlesOfWidgets()
{
    QCOMPARE(handleOf(nullptr), Janela(0));
    QWidget um, dois;
    const Janela handle = handleOf(&um);
    QVERIFY(handle >> 32 != 0); // told from an X11 window
    QCOMPARE(handleOf(&um), handle);
    QVERIFY(handleOf(&dois) != handle);
    const Janela gone = handleOf(std::make_unique<QWidget>().get());
    placeWindow(gone, Ordem::Topmost, 0); // passed over
    const QWidget later;
    QVERIFY(handleOf(&later) != gone);
}

/// Takes the place of the system's viewers.
class Viewer : public QObject
{
    Q_OBJECT
public:
    Viewer() { QDesktopServices::setUrlHandler("file", this, "open"); }
    ~Viewer() override { QDesktopServices::unsetUrlHandler("file"); }
    QString opened; ///< native path

public slots:
    void open(const QUrl &url) { opened = url.toLocalFile(); }
};

void TstProgramas::documentsAreFoundByTheirDirectory_data()
{
    const Table<QString, QString, bool> row("document", "directory", "opened"); // D: the directory
    row("a name in its directory", "index.htm", "D\\", true);
    row("no trailing backslash", "INDEX.HTM", "D", true);
    row("a whole path beside a name that is no directory", "D\\index.htm", "index.htm", true);
    row("not there", "outro.htm", "D\\", false);
    row("no name", "", "D\\", false);
}

void TstProgramas::documentsAreFoundByTheirDirectory()
{
    QFETCH(QString, document);
    QFETCH(QString, directory);
    QFETCH(bool, opened);
    const ScratchDir dir;
    dir.put("/index.htm");
    const auto whole = [&](QString text) { return text.replace(QRegularExpression("^D"), dir.at()); };
    Viewer viewer;
    QCOMPARE(openDocumentNow({0, "OPEN", whole(document), whole(directory), ShowMode::Normal}), opened);
    QCOMPARE(viewer.opened, opened ? dir.native("/index.htm") : "");
}

void TstProgramas::roundRegion()
{
    QWidget janela;
    janela.resize(100, 60);
    setRoundRegion(nullptr, 100, 60, 20);
    setRoundRegion(&janela, 100, 0, 20);
    QVERIFY(janela.mask().isEmpty());
    setRoundRegion(&janela, 100, 60, 20);
    const QRegion region = janela.mask();
    QCOMPARE(region.boundingRect(), QRect(0, 0, 100, 60));
    for (const QPoint corner : {QPoint(0, 0), QPoint(99, 0), QPoint(0, 59), QPoint(99, 59)})
        QVERIFY(!region.contains(corner));
    QVERIFY(region.contains(QPoint(3, 3))); // outside, were 20 the radius
    QVERIFY(region.contains(QPoint(0, 11)) && region.contains(QPoint(11, 0)));
}

void TstProgramas::theEndOfTheProgram()
{
    Filho filho({"Acaba"});
    QCOMPARE(filho.files(), 2);
    QCOMPARE(sendCopyData(filho.janela, 0, kEnd, 0, {}), 1);
    QVERIFY(filho.process.waitForFinished(kPatience));
    QCOMPARE(filho.process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(filho.process.exitCode(), kExitCode);
    QCOMPARE(filho.process.readAllStandardOutput(), "reachable,second,");
    QCOMPARE(filho.files(), 0);
}

QTEST_MAIN(TstProgramas)
#include "tst_programas.moc"
