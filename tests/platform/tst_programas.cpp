// Programs that are started, turns of events, and the end of the program.
#include "platform/aplicacao.h"
#include "platform/endereco.h"
#include "platform/eventos.h"
#include "platform/programas.h"
#include "support/suporte.h"

#include "filho_teste.h"

#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QUrl>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

static constexpr int kPatience = 20000; ///< ms until something that has to come counts as missing

/// A directory with scripts in the place of programs.
class Scripts
{
public:
    QString file(const QString &name) const { return mDir.filePath(name); }
    QString add(const QString &name, const QByteArray &text) const
    {
        escreve(file(name), "#!/bin/sh\n" + text);
        QFile::setPermissions(file(name), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return file(name);
    }

private:
    QTemporaryDir mDir;
};

class TstProgramas : public QObject
{
    Q_OBJECT
private slots:
    void init();
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

void TstProgramas::init()
{
    failOnWarnings();
}

void TstProgramas::commandLineIsJoined()
{
    char program[] = "shell", first[] = "/NOMECLASSE:\"Tobi e Nina\"", second[] = "/ESC:";
    char *words[] = {program, first, second};
    QCOMPARE(rawCommandLine(3, words), u"/NOMECLASSE:\"Tobi e Nina\" /ESC:"_s);
    QCOMPARE(rawCommandLine(1, words), QString());
}

void TstProgramas::aProgramGetsItsArguments()
{
    const Scripts scripts;
    const QString program =
        scripts.add(u"Jogo Um.exe"_s, "for a; do echo \"[$a]\"; done >\"$0.out\"; mv \"$0.out\" \"$0.txt\"\n");
    QVERIFY(startProgramNow({program, u"/A  *.txt $HOME;ls \"a b\""_s}));
    const QString told = program + u".txt"_s;
    QTRY_VERIFY(QFileInfo::exists(told));
    QCOMPARE(le(told), "[/A]\n[*.txt]\n[$HOME;ls]\n[\"a]\n[b\"]\n"_ba); // no interpreter sees them
}

void TstProgramas::whatCantBeStarted()
{
    const Scripts scripts;
    QVERIFY(!startProgramNow({scripts.file(u"falta.exe"_s), QString(), true}));
    escreve(scripts.file(u"texto.exe"_s), "no program");
    QVERIFY(!startProgramNow({scripts.file(u"texto.exe"_s), QString(), true}));
    QVERIFY(!startProgramNow({QString(), QString()}));
}

void TstProgramas::theStartWaitsForTheAddressOrTheEnd()
{
    const Scripts scripts;
    const QString ends = scripts.add(u"Acaba.exe"_s, "touch \"$0.done\"\n");
    QVERIFY(startProgramNow({ends, QString(), true}));
    QVERIFY(QFileInfo::exists(ends + u".done"_s)); // it had ended when the start returned
    QVERIFY(startProgramNow({QStringLiteral(QUOREL_BIN "/filho_teste"), u"Pronto"_s, true}));
    const Janela filho = findWindow(u"Pronto", false);
    QVERIFY(filho != 0);
    QCOMPARE(sendCopyData(filho, 0, kDie, 0, {}), 0);
    QTRY_COMPARE(findWindow(u"Pronto", false), Janela(0));
}

void TstProgramas::aTurnRunsWhatIsQueuedHeldOrNot()
{
    for (const bool held : {false, true}) {
        holdUserInput(held);
        bool turned = false;
        QMetaObject::invokeMethod(
            this, [&] { turned = true; }, Qt::QueuedConnection);
        eventTurn();
        QVERIFY(turned);
    }
    holdUserInput(false);
    QVERIFY(!insideSend());
}

void TstProgramas::handlesOfWidgets()
{
    QCOMPARE(handleOf(nullptr), Janela(0));
    QWidget um, dois;
    const Janela handle = handleOf(&um);
    QVERIFY(handle >> 32 != 0); // told from an X11 window
    QCOMPARE(handleOf(&um), handle);
    QVERIFY(handleOf(&dois) != handle);
    Janela gone = 0;
    {
        const QWidget janela;
        gone = handleOf(&janela);
    }
    placeWindow(gone, Ordem::Topmost, 0); // passed over
    const QWidget later;
    QVERIFY(handleOf(&later) != gone);
}

/// Takes the place of the system's viewers.
class Viewer : public QObject
{
    Q_OBJECT
public:
    Viewer() { QDesktopServices::setUrlHandler(u"file"_s, this, "open"); }
    ~Viewer() override { QDesktopServices::unsetUrlHandler(u"file"_s); }
    QString opened; ///< native path

public slots:
    void open(const QUrl &url) { opened = url.toLocalFile(); }
};

void TstProgramas::documentsAreFoundByTheirDirectory_data()
{
    QTest::addColumn<QString>("document"); // D: the directory
    QTest::addColumn<QString>("directory");
    QTest::addColumn<bool>("opened");
    QTest::newRow("a name in its directory") << u"index.htm"_s << u"D\\"_s << true;
    QTest::newRow("no trailing backslash") << u"INDEX.HTM"_s << u"D"_s << true;
    QTest::newRow("a whole path beside a name that is no directory") << u"D\\index.htm"_s << u"index.htm"_s << true;
    QTest::newRow("not there") << u"outro.htm"_s << u"D\\"_s << false;
    QTest::newRow("no name") << QString() << u"D\\"_s << false;
}

void TstProgramas::documentsAreFoundByTheirDirectory()
{
    QFETCH(QString, document);
    QFETCH(QString, directory);
    QFETCH(bool, opened);
    const QTemporaryDir dir;
    escreve(dir.filePath(u"index.htm"_s), "x");
    const auto whole = [&](const QString &text) {
        return text.startsWith(u'D') ? barras(dir.path()) + text.mid(1) : text;
    };
    Viewer viewer;
    QCOMPARE(openDocumentNow({0, u"OPEN"_s, whole(document), whole(directory), ShowMode::Normal}), opened);
    QCOMPARE(viewer.opened, opened ? dir.filePath(u"index.htm"_s) : QString());
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
    QProcess filho;
    filho.start(QStringLiteral(QUOREL_BIN "/filho_fim"), QStringList());
    QTRY_VERIFY_WITH_TIMEOUT(findWindow(u"Acaba", false) != 0, kPatience);
    const QDir bus(qEnvironmentVariable("XDG_RUNTIME_DIR") + u"/quorel"_s);
    const QStringList its{QString::number(filho.processId()) + u".*"_s};
    QCOMPARE(bus.entryList(its, QDir::AllEntries | QDir::System).size(), 2);
    filho.write("\n");
    QVERIFY(filho.waitForFinished(kPatience));
    QCOMPARE(filho.exitStatus(), QProcess::NormalExit);
    QCOMPARE(filho.exitCode(), 7);
    QCOMPARE(filho.readAllStandardOutput(), "reachable,second,"_ba);
    QCOMPARE(bus.entryList(its, QDir::AllEntries | QDir::System).size(), 0);
}

QTEST_MAIN(TstProgramas)
#include "tst_programas.moc"
