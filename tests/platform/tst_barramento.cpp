#include "platform/endereco.h"
#include "platform/eventos.h"
#include "platform/linux/busdirectory.h"
#include "platform/linux/frame.h"
#include "platform/preparo.h"
#include "support/suporte.h"

#include "filho_em_teste.h"

#include <QDir>
#include <QProcess>
#include <QtEndian>

#include <sys/fsuid.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>

using namespace quorel;
using namespace quorel::teste;
using namespace Qt::StringLiterals;

static constexpr int kShortLimit = 1000; ///< ms; instead of the 5 s, where a test has to wait for it
static constexpr uid_t kNobody = 65534;

class TstBarramento : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { preparePlatform(); }
    void init();
    void sizeAndBytesTravelApart_data();
    void sizeAndBytesTravelApart();
    void aDirectCallReachesTheOwnWindow();
    void theReceiverMaySendBackWhileItIsWaitedFor();
    void theChainEndsAtDepth500();
    void aSendEndsWith0_data();
    void aSendEndsWith0();
    void timeOfOurHandlersIsNotSilence();
    void badFramesCloseTheirConnectionOnly_data();
    void badFramesCloseTheirConnectionOnly();
    void anOversizedSendIsDroppedAndAnswered();
    void aFloodIsServedOneByOne();
    void aPeerThatNeverReadsIsGivenUp();
    void whatAPeerSentBeforeItsEndIsStillServed();
    void anotherUserIsRefused();
    void aDirectoryOpenToOthersIsNotUsed();
};

void TstBarramento::init()
{
    failOnWarnings();
    setSendLimit(5000);
}

void TstBarramento::sizeAndBytesTravelApart_data()
{
    QTest::addColumn<qint32>("size");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<qintptr>("result");
    QTest::addColumn<QByteArray>("back");
    const QByteArray largest(kMaxCopyData, 'x');
    QTest::newRow("size 0") << 0 << "abc"_ba << qintptr(1000) << ""_ba;
    QTest::newRow("a negative size keeps its sign, no bytes") << -5 << "abc"_ba << qintptr(995) << ""_ba;
    QTest::newRow("size 1 is the NUL alone") << 1 << QByteArray(1, '\0') << qintptr(1001) << QByteArray(1, '\0');
    QTest::newRow("text without NUL") << 3 << "abc"_ba << qintptr(1003) << "abc"_ba;
    QTest::newRow("size below the bytes") << 2 << "abc"_ba << qintptr(1002) << "ab"_ba;
    QTest::newRow("size beyond the bytes: zeros") << 4 << "ab"_ba << qintptr(1004) << QByteArray("ab\0\0", 4);
    QTest::newRow("the largest") << qint32(kMaxCopyData) << largest << qintptr(1000 + kMaxCopyData) << largest;
    QTest::newRow("one more is refused") << qint32(kMaxCopyData + 1) << largest + 'x' << qintptr(0) << ""_ba;
}

void TstBarramento::sizeAndBytesTravelApart()
{
    QFETCH(qint32, size);
    QFETCH(QByteArray, bytes);
    QFETCH(qintptr, result);
    QFETCH(QByteArray, back);
    Casa casa;
    Filho filho({u"Eco"_s});
    QCOMPARE(casa.send(filho.janela(), kSizePlus1000, size, bytes), result);
    const qintptr expected = result == 0 ? 0 : 2;
    QCOMPARE(casa.send(filho.janela(), kSendBack, size, bytes), expected);
    if (expected != 0)
        QCOMPARE(casa.came, QList<QByteArray>{back});
}

void TstBarramento::aDirectCallReachesTheOwnWindow()
{
    Casa casa;
    casa.handler = [](Janela, quint32) { return insideSend() ? 5 : 6; };
    QCOMPARE(casa.send(casa.endereco.handle(), 2109, 2, QByteArrayView("7\0", 2)), 5);
    QCOMPARE(casa.came, QList<QByteArray>{QByteArray("7\0", 2)});
    Endereco fresh;
    fresh.publish(u"Novo"_s);
    QCOMPARE(casa.send(fresh.handle(), 2060), 1);
    const WindowProc old = fresh.replaceProc(nullptr);
    QCOMPARE(casa.send(fresh.handle(), 2060), 0);
    QCOMPARE(callWindowProc(old, 1, kCopyData, 0, 0), 1);
    QCOMPARE(callWindowProc(old, 1, kCopyData + 1, 0, 0), 0);
}

void TstBarramento::theReceiverMaySendBackWhileItIsWaitedFor()
{
    Casa casa;
    Filho filho({u"Eco"_s});
    // Our handler sends to the child again, which is still waiting for us: three levels.
    int level = 0;
    casa.handler = [&](Janela sender, quint32 code) {
        return ++level == 1 ? casa.send(sender, code, 1, QByteArray(1, '\0')) + 10 : 100;
    };
    QCOMPARE(casa.send(filho.janela(), kSendBack, 2, "a"), 100 + 1 + 10 + 1);
    QCOMPARE(casa.came, (QList<QByteArray>{QByteArray("a\0", 2), QByteArray(1, '\0')}));
}

void TstBarramento::theChainEndsAtDepth500()
{
    Casa casa;
    Filho filho({u"Eco"_s});
    casa.handler = [&](Janela sender, quint32 code) { return casa.send(sender, code) + 1; };
    // 500 sends of ours and as many of the child; the next one is ours and answers 0.
    QCOMPARE(casa.send(filho.janela(), kBounce), 2 * 500);
    QCOMPARE(casa.deepest, 500);
    QVERIFY(!insideSend());
}

void TstBarramento::aSendEndsWith0_data()
{
    QTest::addColumn<quint32>("code");
    QTest::addColumn<int>("limit");
    QTest::newRow("the receiver dies in its handler") << quint32(kDie) << 60000;
    QTest::newRow("the receiver withdraws in its handler") << quint32(kWithdrawAndHang) << 60000;
    QTest::newRow("the receiver is silent") << quint32(kHang) << kShortLimit;
}

void TstBarramento::aSendEndsWith0()
{
    QFETCH(quint32, code);
    QFETCH(int, limit);
    Casa casa;
    Filho filho({u"Mau"_s});
    Filho outro({u"Bom"_s});
    setSendLimit(limit);
    QCOMPARE(casa.send(filho.janela(), code), 0);
    QCOMPARE(casa.send(outro.janela(), kSizePlus1000), 1000);
    filho.kill();
    QCOMPARE(casa.send(filho.janela(), kSizePlus1000), 0);
    QCOMPARE(casa.send(0, kSizePlus1000), 0);
    QCOMPARE(casa.send(outro.janela() + 1, kSizePlus1000), 0);
}

void TstBarramento::timeOfOurHandlersIsNotSilence()
{
    Casa casa;
    Filho filho({u"Eco"_s});
    setSendLimit(kShortLimit);
    casa.handler = [](Janela, quint32) {
        QTest::qSleep(kShortLimit + kShortLimit / 4);
        return 1;
    };
    QCOMPARE(casa.send(filho.janela(), kSendBack), 2);
}

/// A connection to this process that speaks the bus by hand.
static int rawConnection()
{
    timeval patience{20, 0};
    bus::BusDirectory::Connected raw = bus::BusDirectory().connect(::getpid());
    const int fd = ::dup(raw.socket.get());
    ::setsockopt(fd, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
    return fd;
}

static void writeRaw(const bus::UnixFd &fd, QByteArrayView bytes)
{
    qsizetype done = 0;
    QTRY_VERIFY(
        (done += std::max<ssize_t>(
             0, ::send(fd.get(), bytes.data() + done, std::size_t(bytes.size() - done), MSG_DONTWAIT | MSG_NOSIGNAL)))
        == bytes.size());
}

/// Reads until so many bytes are there, or the other side closes.
static QByteArray readRaw(const bus::UnixFd &fd, qsizetype wanted)
{
    QByteArray got;
    bool ended = false;
    const bool enough = QTest::qWaitFor(
        [&] {
            char bytes[256];
            const ssize_t n = ::recv(fd.get(), bytes, sizeof bytes, MSG_DONTWAIT);
            got.append(bytes, std::max<ssize_t>(n, 0));
            ended = n == 0 || (n < 0 && errno != EAGAIN);
            return ended || got.size() >= wanted;
        },
        20000);
    return enough && got.isEmpty() ? "closed"_ba : got;
}

static QByteArray sendFrame(Janela target, quint32 code, qint32 size, QByteArrayView bytes = {})
{
    const auto head = bus::encode(bus::SendHead{7, code, target, 0, size});
    return QByteArray(head.data(), head.size()).append(bytes);
}

static QByteArray withLength(QByteArray frame, quint32 length)
{
    qToLittleEndian(length, frame.data());
    return frame;
}

void TstBarramento::badFramesCloseTheirConnectionOnly_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QByteArray empty = sendFrame(1, 1, 0);
    QTest::newRow("length 0") << QByteArray(8, '\0');
    QTest::newRow("unknown kind") << QByteArray("\x10\0\0\0\x09\0\0\0", 8);
    QTest::newRow("reply of a wrong length") << QByteArray("\x11\0\0\0\2\0\0\0", 8);
    QTest::newRow("placing of a wrong length") << QByteArray("\x08\0\0\0\3\0\0\0", 8);
    QTest::newRow("send shorter than its head") << withLength(empty, 35);
    QTest::newRow("4 GB claimed") << withLength(empty, 0xffffffff);
    QTest::newRow("size claims more than came") << sendFrame(1, 1, 9, "abc").replace(0, 1, QByteArray(1, 39));
    QTest::newRow("bytes without a size") << withLength(empty + "abc", 39);
    QTest::newRow("bytes with a negative size") << withLength(sendFrame(1, 1, -3) + "abc", 39);
    QTest::newRow("text of a program that took the wrong door") << "GET / HTTP/1.1\r\nHost: x\r\n\r\n"_ba;
}

void TstBarramento::badFramesCloseTheirConnectionOnly()
{
    QFETCH(QByteArray, bytes);
    Casa casa;
    const bus::UnixFd bad(rawConnection()), good(rawConnection()), half(rawConnection());
    const QByteArray frame = sendFrame(casa.endereco.handle(), 1, 4, "abc\0"_ba.left(4).append('\0').left(4));
    writeRaw(half, frame.first(frame.size() - 1)); // and dies before the end of it
    writeRaw(bad, bytes);
    QCOMPARE(readRaw(bad, 1), "closed"_ba);
    ::shutdown(half.get(), SHUT_RDWR);
    writeRaw(good, frame);
    QCOMPARE(readRaw(good, bus::kReplyBytes).size(), qsizetype(bus::kReplyBytes));
    QCOMPARE(casa.came.size(), 1);
}

void TstBarramento::anOversizedSendIsDroppedAndAnswered()
{
    Casa casa;
    const bus::UnixFd raw(rawConnection());
    const QByteArray bytes(kMaxCopyData + 1, 'x');
    writeRaw(raw,
        sendFrame(casa.endereco.handle(), 1, qint32(bytes.size()))
            .append(bytes)
            .replace(0, 4, withLength("    ", 36 + quint32(bytes.size()))));
    const auto refused = bus::encode(bus::Reply{7, 0});
    QCOMPARE(readRaw(raw, bus::kReplyBytes), QByteArray(refused.data(), refused.size()));
    writeRaw(raw, sendFrame(casa.endereco.handle(), 1, 0));
    const auto taken = bus::encode(bus::Reply{7, 1});
    QCOMPARE(readRaw(raw, bus::kReplyBytes), QByteArray(taken.data(), taken.size()));
    QCOMPARE(casa.came, QList<QByteArray>{""_ba});
}

void TstBarramento::aFloodIsServedOneByOne()
{
    Casa casa;
    Filho filho({u"Enchente"_s});
    casa.handler = [](Janela, quint32) {
        eventTurn();
        return 1;
    };
    const qintptr sent = casa.send(filho.janela(), kSendFlood);
    QVERIFY(sent > 100);
    QTRY_COMPARE_WITH_TIMEOUT(casa.came.size(), sent, 30000);
    QVERIFY(casa.deepest <= 2);
    QCOMPARE(casa.send(filho.janela(), kSizePlus1000), 1000);
}

void TstBarramento::aPeerThatNeverReadsIsGivenUp()
{
    Casa casa;
    Filho filho({u"Parado"_s});
    ::kill(pid_t(filho.pid()), SIGSTOP);
    setSendLimit(50);
    const QByteArray large(kMaxCopyData, 'x');
    for (int i = 0; i < 20; ++i)
        QCOMPARE(casa.send(filho.janela(), kSizePlus1000, qint32(large.size()), large), 0);
    ::kill(pid_t(filho.pid()), SIGCONT);
    setSendLimit(20000);
    QCOMPARE(casa.send(filho.janela(), kSizePlus1000), 1000);
}

void TstBarramento::whatAPeerSentBeforeItsEndIsStillServed()
{
    Casa casa;
    {
        const bus::UnixFd raw(rawConnection());
        writeRaw(raw, sendFrame(casa.endereco.handle(), 1, 1, QByteArrayView("A", 1)));
        writeRaw(raw, sendFrame(casa.endereco.handle(), 1, 1, QByteArrayView("E", 1)));
    }
    QTRY_COMPARE(casa.came, (QList<QByteArray>{"A"_ba, "E"_ba}));
}

void TstBarramento::anotherUserIsRefused()
{
    Casa casa;
    struct stat st = {};
    QCOMPARE(::stat(qgetenv("XDG_RUNTIME_DIR") + "/quorel", &st), 0);
    QCOMPARE(st.st_mode & 07777, 0700u);
    QCOMPARE(st.st_uid, ::getuid());
    const QByteArray frame = sendFrame(casa.endereco.handle(), 1, 0);
    const bus::UnixFd own(rawConnection());
    writeRaw(own, frame);
    QCOMPARE(readRaw(own, bus::kReplyBytes).size(), qsizetype(bus::kReplyBytes));
    casa.came.clear();
    if (::getuid() != 0) { // nobody else can be played, and the kernel keeps this user from becoming somebody
        QVERIFY(::seteuid(kNobody) != 0);
        return;
    }
    QCOMPARE(::seteuid(kNobody), 0);
    ::setfsuid(0); // past the directory, as no real other user would come
    bus::UnixFd raw(rawConnection());
    QCOMPARE(::seteuid(0), 0);
    ::setfsuid(0);
    QVERIFY(raw);
    ::send(raw.get(), frame.constData(), bus::kSendHeadBytes, MSG_NOSIGNAL);
    QCOMPARE(readRaw(raw, 1), "closed"_ba);
    QVERIFY(casa.came.isEmpty());
}

void TstBarramento::aDirectoryOpenToOthersIsNotUsed()
{
    const QByteArray before = qgetenv("XDG_RUNTIME_DIR");
    const QByteArray other = before + "/outro";
    ::mkdir(other.constData(), 0700);
    qputenv("XDG_RUNTIME_DIR", other);
    ::mkdir((other + "/quorel").constData(), 0755);
    ::chmod((other + "/quorel").constData(), 0755);
    QVERIFY(!bus::BusDirectory().listen());
    QCOMPARE(::rmdir((other + "/quorel").constData()), 0);
    QCOMPARE(::symlink((before + "/quorel").constData(), (other + "/quorel").constData()), 0);
    QVERIFY(!bus::BusDirectory().listen());
    qputenv("XDG_RUNTIME_DIR", before);
}

QTEST_MAIN(TstBarramento)
#include "tst_barramento.moc"
