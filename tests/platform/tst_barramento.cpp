#include "platform/costuras.h"
#include "platform/eventos.h"
#include "platform/linux/busdirectory.h"
#include "platform/linux/frame.h"
#include "platform/preparo.h"

#include "filho_em_teste.h"

#include <QThread>
#include <QtEndian>

#include <sys/fsuid.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <csignal>
#include <cstring>
#include <stop_token>
#include <thread>

using namespace quorel;
using namespace quorel::teste;

static constexpr int kShortLimit = 1000; ///< ms; instead of the 5 s, where a test has to wait for it
static constexpr int kFlood = 1000; ///< sends, each inside the handler of another
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
    void whatIsNoAnswerIsSilence_data();
    void whatIsNoAnswerIsSilence();
    void aChainEndsAfterOneSilence();
    void badFramesCloseTheirConnectionOnly_data();
    void badFramesCloseTheirConnectionOnly();
    void anOversizedSendIsDroppedAndAnswered();
    void aFloodIsServedOneByOne();
    void aPeerThatNeverReadsIsGivenUp();
    void aConnectionThatSaysNothingMakesRoom();
    void whatAPeerSentBeforeItsEndIsStillServed();
    void anotherUserIsRefused();
};

void TstBarramento::init()
{
    failOnWarnings();
    setSendLimit(5000);
}

void TstBarramento::sizeAndBytesTravelApart_data()
{
    const Table<qint32, QByteArray, int, QByteArray> row("size", "bytes", "result", "back");
    const QByteArray largest(kMaxCopyData, 'x');
    row("size 0", 0, "abc", 1000, "");
    row("a negative size keeps its sign, no bytes", -5, "abc", 995, "");
    row("size 1 is the NUL alone", 1, QByteArray(1, '\0'), 1001, QByteArray(1, '\0'));
    row("text without NUL", 3, "abc", 1003, "abc");
    row("size below the bytes", 2, "abc", 1002, "ab");
    row("size beyond the bytes: zeros", 4, "ab", 1004, QByteArray("ab\0\0", 4));
    row("the largest", kMaxCopyData, largest, 1000 + kMaxCopyData, largest);
    row("one more is refused", kMaxCopyData + 1, largest + 'x', 0, "");
}

void TstBarramento::sizeAndBytesTravelApart()
{
    QFETCH(qint32, size);
    QFETCH(QByteArray, bytes);
    QFETCH(int, result);
    QFETCH(QByteArray, back);
    Casa casa;
    const Filho filho({"Eco"});
    QCOMPARE(casa.send(filho.janela, kSizePlus1000, size, bytes), result);
    QCOMPARE(casa.send(filho.janela, kSendBack, size, bytes), result == 0 ? 0 : 2);
    QCOMPARE(casa.came, result == 0 ? QList<QByteArray>{} : QList<QByteArray>{back});
}

void TstBarramento::aDirectCallReachesTheOwnWindow()
{
    Casa casa;
    casa.handler = [](Janela, quint32) { return insideSend() ? 5 : 6; };
    QCOMPARE(casa.send(casa.endereco.handle(), 2109, 2, QByteArrayView("7\0", 2)), 5);
    QCOMPARE(casa.came, QList<QByteArray>{QByteArray("7\0", 2)});
    Endereco fresh;
    fresh.publish("Novo");
    QCOMPARE(casa.send(fresh.handle(), 2060), 1);
    const WindowProc old = fresh.replaceProc(nullptr);
    QCOMPARE(casa.send(fresh.handle(), 2060), 0);
    QCOMPARE(callWindowProc(old, 1, kCopyData, 0, 0), 1);
    QCOMPARE(callWindowProc(old, 1, kCopyData + 1, 0, 0), 0);
}

void TstBarramento::theReceiverMaySendBackWhileItIsWaitedFor()
{
    Casa casa;
    const Filho filho({"Eco"});
    // Our handler sends to the child again, which is still waiting for us: three levels.
    int level = 0;
    casa.handler = [&](Janela sender, quint32 code) {
        return ++level == 1 ? casa.send(sender, code, 1, QByteArray(1, '\0')) + 10 : 100;
    };
    QCOMPARE(casa.send(filho.janela, kSendBack, 2, "a"), 100 + 1 + 10 + 1);
    QCOMPARE(casa.came, (QList<QByteArray>{QByteArray("a\0", 2), QByteArray(1, '\0')}));
}

void TstBarramento::theChainEndsAtDepth500()
{
    Casa casa;
    const Filho filho({"Eco"});
    casa.handler = [&](Janela sender, quint32 code) { return casa.send(sender, code) + 1; };
    // 500 sends of ours and as many of the child; the next one is ours and answers 0.
    QCOMPARE(casa.send(filho.janela, kBounce), 2 * 500);
    QCOMPARE(casa.deepest, 500);
    QVERIFY(!insideSend());
}

void TstBarramento::aSendEndsWith0_data()
{
    const Table<quint32, int> row("code", "limit");
    row("the receiver dies in its handler", kDie, 60000);
    row("the receiver withdraws in its handler", kWithdrawAndHang, 60000);
    row("the receiver is silent", kHang, kShortLimit);
}

void TstBarramento::aSendEndsWith0()
{
    QFETCH(quint32, code);
    QFETCH(int, limit);
    Casa casa;
    Filho filho({"Mau"});
    const Filho outro({"Bom"});
    setSendLimit(limit);
    QCOMPARE(casa.send(filho.janela, code), 0);
    QCOMPARE(casa.send(outro.janela, kSizePlus1000), 1000);
    filho.process.end();
    for (const Janela none : {filho.janela, Janela(0), outro.janela + 1})
        QCOMPARE(casa.send(none, kSizePlus1000), 0);
}

void TstBarramento::timeOfOurHandlersIsNotSilence()
{
    Casa casa;
    const Filho filho({"Eco"});
    setSendLimit(kShortLimit);
    casa.handler = [](Janela, quint32) {
        QTest::qSleep(kShortLimit + kShortLimit / 4);
        return 1;
    };
    QCOMPARE(casa.send(filho.janela, kSendBack), 2);
}

/// A connection to this process that speaks the bus by hand.
struct Cru
{
    /// As many bytes as the bus takes, while it is served.
    void write(QByteArrayView bytes) const
    {
        qsizetype done = 0;
        const auto more = [&] {
            const auto left = std::size_t(bytes.size() - done);
            return std::max<ssize_t>(0, ::send(socket.get(), bytes.data() + done, left, MSG_DONTWAIT | MSG_NOSIGNAL));
        };
        QTRY_VERIFY((done += more()) == bytes.size());
    }
    /// What comes until an answer is whole, or the other side closes: "closed" when that is all.
    QByteArray read() const
    {
        std::array<char, bus::kReplyBytes> bytes{};
        ssize_t n = -1;
        bool closed = false;
        const auto ready = [&] {
            n = ::recv(socket.get(), bytes.data(), bytes.size(), MSG_DONTWAIT | MSG_PEEK);
            closed = n == 0 || (n < 0 && errno != EAGAIN);
            return closed || n == ssize_t(bytes.size());
        };
        if (!QTest::qWaitFor(ready, kPatience))
            return "less than an answer";
        ::recv(socket.get(), bytes.data(), bytes.size(), MSG_DONTWAIT);
        return closed ? QByteArray("closed") : QByteArray(bytes.data(), n);
    }
    const bus::UnixFd socket = bus::BusDirectory().connect(::getpid()).socket;
};

static QByteArray sendFrame(Janela target, qint32 size, QByteArrayView bytes = {})
{
    const auto head = bus::encode(bus::SendHead{7, 1, target, 0, size});
    return QByteArray(head.data(), head.size()).append(bytes);
}

static QByteArray answerFrame(qint64 result)
{
    const auto frame = bus::encode(bus::Reply{7, result});
    return QByteArray(frame.data(), frame.size());
}

/// A process in name only: takes one connection and writes the same bytes to it again and again.
class Tagarela
{
public:
    explicit Tagarela(const QByteArray &bytes)
    {
        const QByteArray path = qgetenv("XDG_RUNTIME_DIR") + "/quorel/" + QByteArray::number(kNumber) + ".sock";
        sockaddr_un address = {};
        address.sun_family = AF_UNIX;
        std::memcpy(
            address.sun_path, path.constData(), std::min(std::size_t(path.size()), sizeof address.sun_path - 1));
        ::unlink(path.constData());
        if (::bind(mSocket.get(), reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0
            || ::listen(mSocket.get(), 1) != 0)
            qFatal("no place on the bus");
        mThread = std::jthread([this, bytes](const std::stop_token &stop) {
            const bus::UnixFd peer(::accept(mSocket.get(), nullptr, nullptr));
            while (!stop.stop_requested()
                && ::send(peer.get(), bytes.constData(), std::size_t(bytes.size()), MSG_NOSIGNAL) >= 0)
                QThread::msleep(kShortLimit / 10);
        });
    }
    static constexpr pid_t kNumber = 5'000'000; ///< of no process
    const Janela janela = bus::handleIn(kNumber, 1);

private:
    bus::UnixFd mSocket{::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)};
    std::jthread mThread;
};

static QByteArray withLength(QByteArray frame, quint32 length)
{
    qToLittleEndian(length, frame.data());
    return frame;
}

void TstBarramento::whatIsNoAnswerIsSilence_data()
{
    const Table<QByteArray> row("bytes");
    const auto place = bus::encode(bus::Place{1, 0, 0});
    row("zeros of a send of 16 MB", withLength(sendFrame(1, 0), bus::kLargestClaim - bus::kLengthBytes));
    row("answers to nothing", answerFrame(1));
    row("places", QByteArray(place.data(), place.size()));
}

void TstBarramento::whatIsNoAnswerIsSilence()
{
    QFETCH(QByteArray, bytes);
    Casa casa;
    const Tagarela tagarela(bytes);
    setSendLimit(kShortLimit);
    QCOMPARE(casa.send(tagarela.janela, 2060), 0); // it ends
}

/// Were each level to wait as long again, the test would be over first.
void TstBarramento::aChainEndsAfterOneSilence()
{
    static constexpr int kDepth = 60;
    Casa casa;
    const Filho filho({"Eco"}), outro({"Outro"});
    setSendLimit(3 * kShortLimit);
    casa.handler = [&](Janela sender, quint32 code) {
        casa.send(sender, casa.deepest < kDepth ? code : quint32(kHang));
        return casa.send(sender, kSizePlus1000) + casa.send(outro.janela, kSizePlus1000);
    };
    QCOMPARE(casa.send(filho.janela, kBounce), 0);
    QCOMPARE(casa.deepest, kDepth);
    QCOMPARE(casa.send(outro.janela, kSizePlus1000), 1000);
}

void TstBarramento::badFramesCloseTheirConnectionOnly_data()
{
    const Table<QByteArray> row("bytes");
    const QByteArray empty = sendFrame(1, 0);
    row("length 0", QByteArray(8, '\0'));
    row("unknown kind", QByteArray("\x10\0\0\0\x09\0\0\0", 8));
    row("reply of a wrong length", QByteArray("\x11\0\0\0\2\0\0\0", 8));
    row("placing of a wrong length", QByteArray("\x08\0\0\0\3\0\0\0", 8));
    row("send shorter than its head", withLength(empty, 35));
    row("4 GB claimed", withLength(empty, 0xffffffff));
    row("size claims more than came", withLength(sendFrame(1, 9, "abc"), 39));
    row("bytes without a size", withLength(empty + "abc", 39));
    row("bytes with a negative size", withLength(sendFrame(1, -3) + "abc", 39));
    row("text of a program that took the wrong door", "GET / HTTP/1.1\r\nHost: x\r\n\r\n");
}

void TstBarramento::badFramesCloseTheirConnectionOnly()
{
    QFETCH(QByteArray, bytes);
    Casa casa;
    const Cru bad, good;
    bad.write(bytes);
    QCOMPARE(bad.read(), "closed");
    good.write(sendFrame(casa.endereco.handle(), 3, "abc"));
    QCOMPARE(good.read(), answerFrame(1));
    QCOMPARE(casa.came, QList<QByteArray>{"abc"});
}

void TstBarramento::anOversizedSendIsDroppedAndAnswered()
{
    Casa casa;
    const Cru raw;
    raw.write(sendFrame(casa.endereco.handle(), kMaxCopyData + 1, QByteArray(kMaxCopyData + 1, 'x')));
    QCOMPARE(raw.read(), answerFrame(0));
    raw.write(sendFrame(casa.endereco.handle(), 0));
    QCOMPARE(raw.read(), answerFrame(1));
    QCOMPARE(casa.came, QList<QByteArray>{""});
}

void TstBarramento::aFloodIsServedOneByOne()
{
    Casa casa;
    const Cru raw;
    const QByteArray frame = sendFrame(casa.endereco.handle(), 0); // of which nobody waits for the answer
    int left = kFlood;
    casa.handler = [&](Janela, quint32) {
        if (left-- > 0)
            raw.write(frame);
        eventTurn();
        return 1;
    };
    raw.write(frame.repeated(3));
    QTRY_COMPARE_WITH_TIMEOUT(casa.came.size(), kFlood + 3, kPatience);
    QCOMPARE(casa.deepest, 1);
}

void TstBarramento::aPeerThatNeverReadsIsGivenUp()
{
    Casa casa;
    const Filho filho({"Parado"});
    ::kill(pid_t(filho.pid), SIGSTOP);
    setSendLimit(50);
    const QByteArray large(kMaxCopyData, 'x');
    for (int i = 0; i < 20; ++i)
        QCOMPARE(casa.send(filho.janela, kSizePlus1000, qint32(large.size()), large), 0);
    ::kill(pid_t(filho.pid), SIGCONT);
    setSendLimit(20000);
    QCOMPARE(casa.send(filho.janela, kSizePlus1000), 1000);
}

void TstBarramento::aConnectionThatSaysNothingMakesRoom()
{
    Casa casa;
    const QByteArray frame = sendFrame(casa.endereco.handle(), 0);
    const Cru spoken;
    spoken.write(frame);
    QCOMPARE(spoken.read(), answerFrame(1));
    const Cru headOnly; // of a send that never comes whole
    headOnly.write(
        withLength(sendFrame(1, kMaxCopyData + 1), bus::kSendHeadBytes - bus::kLengthBytes + kMaxCopyData + 1));
    QCOMPARE(headOnly.read(), answerFrame(0));
    std::vector<std::unique_ptr<Cru>> mute;
    for (int i = 0; i < 254; ++i) { // with the two: as many as there is room for
        mute.push_back(std::make_unique<Cru>());
        QVERIFY(mute.back()->socket);
        QCoreApplication::processEvents();
    }
    QCOMPARE(Cru().read(), "closed");
    const auto later = QDateTime::currentDateTime().addSecs(31);
    costuras().now = [later] { return later; };
    const Cru late;
    late.write(frame);
    QCOMPARE(late.read(), answerFrame(1));
    QCOMPARE(headOnly.read(), "closed"); // the oldest of the mute
    spoken.write(frame);
    QCOMPARE(spoken.read(), answerFrame(1));
    reiniciaCosturas();
    mute.clear();
    QCoreApplication::processEvents(); // takes note of their ends
}

void TstBarramento::whatAPeerSentBeforeItsEndIsStillServed()
{
    Casa casa;
    {
        const Cru raw;
        for (const QByteArray answer : {"A", "E", "half"})
            raw.write(sendFrame(casa.endereco.handle(), qint32(answer.size()), answer).chopped(answer.size() / 2));
    }
    QTRY_COMPARE(casa.came.size(), 2);
    const Cru next;
    next.write(sendFrame(casa.endereco.handle(), 4, "next"));
    QTRY_COMPARE(casa.came.join(','), "A,E,next");
}

void TstBarramento::anotherUserIsRefused()
{
    Casa casa;
    struct stat st = {};
    QCOMPARE(::stat(qgetenv("XDG_RUNTIME_DIR") + "/quorel", &st), 0);
    QCOMPARE(st.st_mode & 07777, 0700u);
    QCOMPARE(st.st_uid, ::getuid());
    if (::getuid() != 0) { // nobody else can be played, and the kernel keeps this user from becoming somebody
        QVERIFY(::seteuid(kNobody) != 0);
        return;
    }
    QCOMPARE(::seteuid(kNobody), 0);
    ::setfsuid(0); // past the directory, as no real other user would come
    const Cru raw;
    QCOMPARE(::seteuid(0), 0);
    ::setfsuid(0);
    QVERIFY(raw.socket);
    raw.write(sendFrame(casa.endereco.handle(), 0));
    QCOMPARE(raw.read(), "closed");
    QVERIFY(casa.came.isEmpty());
}

QTEST_MAIN(TstBarramento)
#include "tst_barramento.moc"
