#include "platform/linux/busdirectory.h"
#include "platform/preparo.h"

#include "filho_em_teste.h"

#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>

using namespace quorel;
using namespace quorel::teste;

static constexpr uid_t kNobody = 65534;

/// How windows are found by their titles, and what becomes of them.
class TstTitulos : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { preparePlatform(); }
    void init() { failOnWarnings(); }
    void titlesAreFoundInFourPasses();
    void equalTitlesOwnFirstThenLowestHandle();
    void aKilledProcessLeavesNoEntry();
    void manyDeadEntriesAreReadOnce();
    void aRemovedDirectoryIsPublishedAgain();
    void theDirectoryIsOursAlone();
    void aChangedTitleIsFound();
    void placingReachesTheBody();
    void thePublishedWindowOfASender();
};

void TstTitulos::titlesAreFoundInFourPasses()
{
    const Filho livros({"Livros - Quorel", "Livros"});
    const Janela inner = findWindow(u"Livros", true);
    QVERIFY(inner != 0 && inner != livros.janela);
    QCOMPARE(findWindow(u"Livros - Quorel", true), livros.janela);
    QCOMPARE(findWindow(u"Livros - Q", true), livros.janela);
    QCOMPARE(findWindow(u"Livros - Q", false), Janela(0));
    QCOMPARE(findWindow(u"LIVROS", true), Janela(0));
    QCOMPARE(findWindow(u"Liv", true), livros.janela);
    QCOMPARE(findWindow(u"", true), Janela(0));
    QCOMPARE(Casa().send(inner, kSizePlus1000), 1000); // to the same procedure
    const Filho outro({"Livros"});
    QCOMPARE(findWindow(u"Livros", true), outro.janela); // no inner window before one of the desktop
}

void TstTitulos::equalTitlesOwnFirstThenLowestHandle()
{
    const Filho um({"Casa"}), dois({"Casa"});
    QCOMPARE(findWindow(u"Casa", false), std::min(um.janela, dois.janela));
    {
        const Casa casa;
        QCOMPARE(findWindow(u"Casa", false), casa.endereco.handle());
    }
    QVERIFY(findWindow(u"Casa", false) != 0);
    QWidget janela;
    janela.setWindowTitle("Uma janela");
    QCOMPARE(findWindow(u"Uma", true), Janela(0)); // not made yet
    janela.show();
    QCOMPARE(findWindow(u"Uma", true), handleOf(&janela));
}

void TstTitulos::aKilledProcessLeavesNoEntry()
{
    Filho filho({"Some"});
    QCOMPARE(filho.files(), 2);
    filho.process.end();
    QCOMPARE(findWindow(u"Some", true), Janela(0));
    QCOMPARE(filho.files(), 0);
}

static QString busPath(const QString &rest = {})
{
    return qEnvironmentVariable("XDG_RUNTIME_DIR") + "/quorel" + rest;
}

void TstTitulos::manyDeadEntriesAreReadOnce()
{
    static constexpr int kDead = 60, kFirst = 5'000'000; // numbers of no process
    for (int n = kFirst; n < kFirst + kDead; ++n)
        escreve(busPath(QString("/%1.janelas").arg(n)), QByteArray::number(qint64(n) << 32 | 1) + " 0 Morto\n");
    const int notes = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    QVERIFY(::inotify_add_watch(notes, QFile::encodeName(busPath()).constData(), IN_OPEN) >= 0);
    QCOMPARE(findWindow(u"Morto", true), Janela(0));
    qsizetype opened = 0;
    std::array<char, 65536> events{};
    for (ssize_t n = 0; (n = ::read(notes, events.data(), events.size())) > 0;)
        opened += QByteArrayView(events.data(), n).count(".janelas");
    ::close(notes);
    QVERIFY2(opened >= kDead && opened < 3 * kDead, qPrintable(QString::number(opened)));
    QVERIFY(QDir(busPath()).entryList({"5*.janelas"}).isEmpty());
}

void TstTitulos::aRemovedDirectoryIsPublishedAgain()
{
    Casa casa;
    const Filho filho({"Resta"});
    QDir(busPath()).removeRecursively(); // as far as it goes: the child may be quicker
    QTRY_COMPARE_WITH_TIMEOUT(findWindow(u"Resta", false), filho.janela, kPatience);
    QVERIFY(QFile::exists(busPath(QString("/%1.janelas").arg(QCoreApplication::applicationPid()))));
    QCOMPARE(casa.send(filho.janela, kSendBack), 2);
    const Filho novo({"Novo"}); // by a connection of its own
    QCOMPARE(casa.send(novo.janela, kSendBack), 2);
}

void TstTitulos::theDirectoryIsOursAlone()
{
    const QByteArray before = qgetenv("XDG_RUNTIME_DIR");
    const ScratchDir other;
    const QByteArray directory = other.native("/quorel").toUtf8();
    qputenv("XDG_RUNTIME_DIR", other.native().toUtf8());
    bus::BusDirectory used;
    QVERIFY(used.listen());
    for (const mode_t wrong : {0755u, 0577u, 0u}) {
        QCOMPARE(::chmod(directory.constData(), wrong), 0);
        QVERIFY(used.listen() && bus::BusDirectory().listen());
        struct stat st = {};
        QCOMPARE(::stat(directory.constData(), &st), 0);
        QCOMPARE(st.st_mode & 07777, 0700u);
    }
    if (::getuid() == 0) { // nobody else can give a directory away
        QCOMPARE(::chown(directory.constData(), kNobody, kNobody), 0);
        QVERIFY(!used.listen() && !bus::BusDirectory().listen());
    }
    QVERIFY(QDir(directory).removeRecursively());
    QCOMPARE(::symlink((before + "/quorel").constData(), directory.constData()), 0);
    QVERIFY(!used.listen() && !bus::BusDirectory().listen());
    qputenv("XDG_RUNTIME_DIR", before);
}

void TstTitulos::aChangedTitleIsFound()
{
    Casa casa;
    const Filho filho({"Antes"});
    for (const QString title : {"Histórias - Quorel", "com\nquebra", "Depois"}) {
        const QByteArray utf8 = title.toUtf8();
        QCOMPARE(casa.send(filho.janela, kSetTitle, qint32(utf8.size()), utf8), 1);
        QCOMPARE(findWindow(QString(title).replace('\n', ' '), false), filho.janela);
    }
    QCOMPARE(findWindow(u"Antes", true), Janela(0));
}

void TstTitulos::placingReachesTheBody()
{
    Casa casa;
    Filho filho({"Corpo", "dentro"});
    const auto body = [&] { return casa.send(filho.janela, kGeometry); };
    placeWindow(filho.janela, Ordem::Topmost, kKeepSize | kKeepPosition);
    QCOMPARE(body(), packed(kPlace));
    QCOMPARE(casa.send(filho.janela, kIsTopmost), 2);
    placeWindow(filho.janela, Ordem::NoTopmost, kKeepSize | kKeepPosition);
    QCOMPARE(casa.send(filho.janela, kIsTopmost), 1);
    placeWindow(filho.janela, Ordem::Top, kKeepSize);
    QCOMPARE(body(), packed({QPoint(0, 0), kPlace.size()}));
    placeWindow(findWindow(u"dentro", true), Ordem::Top, kKeepPosition);
    QCOMPARE(body(), packed({QPoint(0, 0), kLeast})); // the least size instead of 0
    filho.process.end();
    placeWindow(filho.janela, Ordem::Top, 0);
    QWidget own;
    own.setGeometry(50, 60, 70, 80);
    placeWindow(handleOf(&own), Ordem::Top, kKeepSize);
    QCOMPARE(own.geometry(), QRect(0, 0, 70, 80));
}

void TstTitulos::thePublishedWindowOfASender()
{
    Casa casa;
    const Filho filho({"Um", "Dois"});
    const Janela inner = findWindow(u"Dois", true);
    QCOMPARE(publishedWindowOf(inner, u"Um"), filho.janela);
    QCOMPARE(publishedWindowOf(inner, u"Casa"), Janela(0));
    const QWidget janela;
    QCOMPARE(publishedWindowOf(handleOf(&janela), u"Casa"), casa.endereco.handle());
    QCOMPARE(publishedWindowOf(1234, u"Casa"), Janela(0));
    QCOMPARE(publishedWindowOfParent(u"Casa"), Janela(0));
    leaveBus();
    QCOMPARE(publishedWindowOf(handleOf(&janela), u"Casa"), Janela(0));
    QCOMPARE(casa.send(filho.janela, kSizePlus1000), 1000); // a send needs no address of its own
}

QTEST_MAIN(TstTitulos)
#include "tst_titulos.moc"
