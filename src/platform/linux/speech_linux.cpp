#include "platform/linux/unixfd.h"
#include "platform/speech_engine.h"

#include <QByteArray>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QSocketNotifier>
#include <QStandardPaths>
#include <QTimer>

#include <sys/socket.h>
#include <sys/un.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>

namespace quorel {

using namespace Qt::StringLiterals;

static constexpr std::chrono::seconds kAnswerLimit{3}; ///< a server silent for longer hangs
static constexpr std::chrono::seconds kRetryAfter{20}; ///< after a server was not there, or hung
static constexpr std::chrono::milliseconds kStartPause{200}; ///< between looks for a server that is starting
static constexpr int kStartLooks = 15;

static QString socketPath()
{
    const QString named = qEnvironmentVariable("SPEECHD_ADDRESS");
    const QString prefix = u"unix_socket:"_s;
    if (named.startsWith(prefix))
        return named.sliced(prefix.size());
    return QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation) + u"/speech-dispatcher/speechd.sock"_s;
}

static bool startServer()
{
    QProcess server;
    server.setProgram(u"speech-dispatcher"_s);
    server.setArguments({u"--spawn"_s});
    server.setStandardOutputFile(QProcess::nullDevice());
    server.setStandardErrorFile(QProcess::nullDevice());
    return server.startDetached();
}

/// Connected without waiting; nothing when nobody listens there.
static bus::UnixFd connected(const QString &path)
{
    const QByteArray native = QFile::encodeName(path);
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    if (native.size() >= qsizetype(sizeof address.sun_path))
        return {};
    std::memcpy(address.sun_path, native.constData(), std::size_t(native.size()));
    bus::UnixFd socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    if (!socket || ::connect(socket.get(), reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0)
        return {};
    return socket;
}

/// A client of speech-dispatcher by its own line protocol: commands one by one, each sent when the answer to the one
/// before has come. Its library would end the program when the server dies, and wait for ever when it hangs.
class Speech::Engine::System final : public QObject
{
public:
    explicit System(std::function<void(bool)> tell);

    void prepare();
    void say(const QString &text);
    void stop();

private:
    enum class Step { Away, Starting, Name, Modules, Language, Voices, Ready, Cancelling, Announced, Saying };

    void look();
    void begin(bus::UnixFd socket);
    void ask(Step step, const QByteArray &line);
    void send(const QByteArray &bytes);
    void flush();
    void receive();
    void lineCame(const QByteArray &line);
    void answered(bool well);
    void next();
    void lose();

    std::function<void(bool)> mTell;
    Step mStep = Step::Away;
    bus::UnixFd mSocket;
    std::unique_ptr<QSocketNotifier> mReads, mWrites;
    QByteArray mIncoming, mOutgoing;
    QTimer mLimit;
    QElapsedTimer mLost; ///< since the server was found missing
    int mLooks = 0;
    bool mHasModule = false, mHasVoice = false;
    QString mText; ///< to be said next
    bool mCancel = false; ///< what is being said is to end
};

Speech::Engine::System::System(std::function<void(bool)> tell) : mTell(std::move(tell))
{
    mLimit.setSingleShot(true);
    connect(&mLimit, &QTimer::timeout, this, [this] {
        if (mStep == Step::Starting)
            look();
        else
            lose();
    });
}

void Speech::Engine::System::prepare()
{
    if (mStep != Step::Away || (mLost.isValid() && !mLost.hasExpired(std::chrono::milliseconds(kRetryAfter).count())))
        return;
    mLooks = kStartLooks;
    look();
}

/// Where no server runs, the first look starts one, as its own library does; it comes up in its own time.
void Speech::Engine::System::look()
{
    if (bus::UnixFd socket = connected(socketPath()))
        return begin(std::move(socket));
    const bool ours = !qEnvironmentVariableIsSet("SPEECHD_ADDRESS");
    const bool first = mLooks == kStartLooks;
    if (--mLooks <= 0 || !ours || (first && !startServer()))
        return lose();
    mStep = Step::Starting;
    mLimit.start(kStartPause);
}

void Speech::Engine::System::begin(bus::UnixFd socket)
{
    mSocket = std::move(socket);
    mReads = std::make_unique<QSocketNotifier>(mSocket.get(), QSocketNotifier::Read);
    mWrites = std::make_unique<QSocketNotifier>(mSocket.get(), QSocketNotifier::Write);
    mWrites->setEnabled(false);
    connect(mReads.get(), &QSocketNotifier::activated, this, [this] { receive(); });
    connect(mWrites.get(), &QSocketNotifier::activated, this, [this] { flush(); });
    mHasModule = mHasVoice = false;
    ask(Step::Name, "SET SELF CLIENT_NAME user:quorel:main");
}

void Speech::Engine::System::ask(Step step, const QByteArray &line)
{
    mStep = step;
    send(line + "\r\n");
    mLimit.start(kAnswerLimit);
}

void Speech::Engine::System::send(const QByteArray &bytes)
{
    mOutgoing += bytes;
    flush();
}

void Speech::Engine::System::flush()
{
    const ssize_t sent = ::send(mSocket.get(), mOutgoing.constData(), std::size_t(mOutgoing.size()), MSG_NOSIGNAL);
    if (sent < 0 && errno != EAGAIN && errno != EINTR)
        return lose();
    mOutgoing.remove(0, std::max<ssize_t>(sent, 0));
    mWrites->setEnabled(!mOutgoing.isEmpty());
}

void Speech::Engine::System::receive()
{
    static constexpr qsizetype kLongestLine = 64 * 1024;
    char buffer[16 * 1024];
    const ssize_t got = ::recv(mSocket.get(), buffer, sizeof buffer, 0);
    if (got < 0 && (errno == EAGAIN || errno == EINTR))
        return;
    if (got <= 0)
        return lose();
    mIncoming.append(buffer, got);
    qsizetype start = 0;
    for (qsizetype end; mSocket && (end = mIncoming.indexOf("\r\n", start)) >= 0; start = end + 2)
        lineCame(mIncoming.sliced(start, end - start));
    if (!mSocket)
        return;
    mIncoming.remove(0, start);
    if (mIncoming.size() > kLongestLine)
        lose();
}

/// A line is three digits and "-" or, in the last line of an answer, a blank; 7xx are events, which nobody waits for.
void Speech::Engine::System::lineCame(const QByteArray &line)
{
    static constexpr qsizetype kCode = 3; // digits
    if (line.size() <= kCode || line.front() == '7')
        return;
    if (line.at(kCode) == ' ')
        return answered(line.front() == '2');
    const QByteArray value = line.sliced(kCode + 1).toLower();
    if (mStep == Step::Modules)
        mHasModule = true;
    else if (mStep == Step::Voices) {
        const QList<QByteArray> fields = value.split('\t'); // name, language, variant
        mHasVoice = mHasVoice || (fields.size() > 1 && (fields[1] == "pt" || fields[1] == "pt-br"));
        mLimit.start(kAnswerLimit); // thousands of lines may come
    }
}

void Speech::Engine::System::answered(bool well)
{
    mLimit.stop();
    switch (mStep) {
    case Step::Name:
        return ask(Step::Modules, "LIST OUTPUT_MODULES");
    case Step::Modules:
        return mHasModule ? ask(Step::Language, "SET SELF LANGUAGE pt-BR") : lose();
    case Step::Language:
        return ask(Step::Voices, "LIST SYNTHESIS_VOICES");
    case Step::Voices:
        if (!well || !mHasVoice)
            return lose();
        mStep = Step::Ready;
        mTell(true);
        return next();
    case Step::Announced: {
        if (!well)
            return lose();
        QByteArray text = mText.toUtf8().replace("\r\n", "\n").replace('\r', '\n').replace('\n', "\r\n");
        mText.clear();
        if (text.startsWith('.'))
            text.prepend('.');
        return ask(Step::Saying, text.replace("\r\n.", "\r\n..") + "\r\n.");
    }
    case Step::Cancelling:
    case Step::Saying:
        mStep = Step::Ready;
        return next();
    case Step::Away:
    case Step::Starting:
    case Step::Ready:
        return;
    }
}

void Speech::Engine::System::next()
{
    if (mStep != Step::Ready)
        return;
    if (std::exchange(mCancel, false))
        ask(Step::Cancelling, "CANCEL SELF");
    else if (!mText.isEmpty())
        ask(Step::Announced, "SPEAK");
}

void Speech::Engine::System::say(const QString &text)
{
    if (mStep == Step::Away)
        return;
    mText = text;
    mText.remove(QChar::Null); // ends the line for the server
    mCancel = true;
    next();
}

void Speech::Engine::System::stop()
{
    mText.clear();
    mCancel = mStep >= Step::Ready;
    next();
}

void Speech::Engine::System::lose()
{
    mLimit.stop();
    for (auto *notifier : {&mReads, &mWrites}) {
        if (*notifier) { // may be the one that called
            (*notifier)->setEnabled(false);
            notifier->release()->deleteLater();
        }
    }
    mSocket.reset();
    mIncoming.clear();
    mOutgoing.clear();
    mText.clear();
    mCancel = false;
    mStep = Step::Away;
    mLost.start();
    mTell(false);
}

Speech::Engine::Engine(std::function<void(bool)> tell) : mSystem(std::make_unique<System>(std::move(tell))) { }
Speech::Engine::~Engine() = default;

void Speech::Engine::prepare()
{
    mSystem->prepare();
}

void Speech::Engine::say(const QString &text)
{
    mSystem->say(text);
}

void Speech::Engine::stop()
{
    mSystem->stop();
}

} // namespace quorel
