// The round trip of a message beside its floor: a raw blocking ping-pong of the same bytes over a local stream socket,
// answered by as many bytes as an answer of the bus has. Both processes on one core. The floor's ratio counts: at most
// 3 times. Run without a display: QT_QPA_PLATFORM=offscreen bench_bus
#include "platform/codec.h"
#include "platform/endereco.h"
#include "platform/preparo.h"

#include <QApplication>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <csignal>
#include <sched.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <vector>

using namespace quorel;
using namespace Qt::StringLiterals;

static constexpr std::size_t kAnswerBytes = 20;
static constexpr std::int64_t kLarge = 100'000;
static constexpr quint32 kCode = 2060;

static void stayOnOneCore()
{
    cpu_set_t one;
    CPU_ZERO(&one);
    CPU_SET(0, &one);
    ::sched_setaffinity(0, sizeof one, &one);
}

static bool readAll(int fd, char *bytes, std::size_t count)
{
    for (ssize_t got = 0; count > 0; bytes += got, count -= std::size_t(got)) {
        got = ::read(fd, bytes, count);
        if (got <= 0)
            return false;
    }
    return true;
}

/// The other end of the floor: reads `count` bytes, writes an answer, until the end of the stream.
[[noreturn]] static void floorChild(int fd, std::size_t count)
{
    std::vector<char> bytes(count);
    while (readAll(fd, bytes.data(), count) && ::write(fd, bytes.data(), kAnswerBytes) > 0) { }
    ::_exit(0);
}

static void floorPingPong(benchmark::State &state)
{
    const std::size_t count = std::size_t(state.range(0)) + 40; // a message has a head of 40 bytes
    int ends[2] = {};
    if (::socketpair(AF_UNIX, SOCK_STREAM, 0, ends) != 0)
        return state.SkipWithError("no socket");
    const pid_t child = ::fork();
    if (child == 0) {
        ::close(ends[0]);
        floorChild(ends[1], count);
    }
    ::close(ends[1]);
    std::vector<char> bytes(count);
    for (auto _ : state) {
        if (::write(ends[0], bytes.data(), count) < 0 || !readAll(ends[0], bytes.data(), kAnswerBytes))
            state.SkipWithError("the child is gone");
    }
    ::close(ends[0]);
    ::waitpid(child, nullptr, 0);
}

/// What EnviaTexto does: text to bytes, a NUL, the send; the child makes a text of it in its procedure.
static void roundTrip(benchmark::State &state)
{
    // A lesson's text: letters for the most part, an accent or a Ç here and there.
    const QString text =
        u"(1,1)2610<SPÇ>1<SPÇ>Quantas maçãs há na cesta de João? Conte uma a uma."_s.repeated(2000).first(
            state.range(0));
    const Janela echo = findWindow(u"Eco", false);
    QByteArray bytes;
    for (auto _ : state) {
        bytes.resize(0);
        encode1252(text, bytes);
        bytes.append('\0');
        if (sendCopyData(echo, 1, kCode, qint32(bytes.size()), bytes) != text.size() + 1)
            state.SkipWithError("not answered");
    }
}

static void searchByTitle(benchmark::State &state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(findWindow(u"Eco", true));
}

BENCHMARK(floorPingPong)->Arg(0)->Arg(kLarge)->UseRealTime();
BENCHMARK(roundTrip)->Arg(0)->Arg(kLarge)->UseRealTime();
BENCHMARK(searchByTitle)->UseRealTime();

static int echoProcess(int argc, char **argv)
{
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    QApplication app(argc, argv);
    QString text;
    Endereco endereco;
    endereco.replaceProc([&](Janela, quint32, quintptr, qintptr data) {
        const auto &copy = *reinterpret_cast<const CopyData *>(data);
        decode1252(QByteArrayView(static_cast<const char *>(copy.bytes), copy.size - 1), text);
        return qintptr(text.size()) + 1;
    });
    endereco.publish(u"Eco"_s);
    return QApplication::exec();
}

int main(int argc, char **argv)
{
    const QTemporaryDir runtime;
    qputenv("XDG_RUNTIME_DIR", runtime.path().toUtf8());
    preparePlatform();
    stayOnOneCore();
    const pid_t echo = ::fork();
    if (echo == 0)
        ::_exit(echoProcess(argc, argv));
    QApplication app(argc, argv);
    while (findWindow(u"Eco", false) == 0)
        ::usleep(1000);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    ::kill(echo, SIGKILL);
    ::waitpid(echo, nullptr, 0);
    return 0;
}
