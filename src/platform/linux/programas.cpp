#include "platform/programas.h"

#include "platform/linux/bus.h"

#include <QProcess>

#include <sys/wait.h>

#include <algorithm>
#include <chrono>

namespace quorel {

static constexpr std::chrono::seconds kReadyLimit{30}; // as long as on Windows

/// The programs started. A QProcess ends its program when it is destroyed, so these never are.
static QObject &started()
{
    static QObject &keeper = *std::make_unique<QObject>().release();
    return keeper;
}

/// Without taking the exit from the QProcess, which waits for it in the event loop.
static bool hasEnded(pid_t process)
{
    siginfo_t info = {};
    return ::waitid(P_PID, id_t(process), &info, WEXITED | WNOHANG | WNOWAIT) != 0 || info.si_pid == process;
}

/// Found by a title of its own: a program may make its inner window known first. A number may have belonged to a
/// program that died and left its entry.
static bool isOnBus(pid_t process)
{
    const auto &entries = bus::Bus::instance().entries();
    const auto its = [&](const bus::Entry &entry) {
        return bus::processOf(entry.handle) == process && entry.parent == 0;
    };
    return std::ranges::any_of(entries, its) && bus::Bus::instance().isAlive(process);
}

/// At blanks, of which more than one in a row may stand in a path: all but the first stay with the word behind them, so
/// that who joins the words by one blank has the text again.
static QStringList wordsOf(const QString &arguments)
{
    const QString text = arguments.trimmed();
    QStringList words;
    for (qsizetype from = 0; from < text.size();) {
        qsizetype letter = from;
        while (text[letter] == u' ')
            ++letter; // ends: the text's last character is none
        const qsizetype blank = text.indexOf(u' ', letter);
        const qsizetype end = blank < 0 ? text.size() : blank;
        words.append(text.sliced(from, end - from));
        from = end + 1;
    }
    return words;
}

bool startProgramNow(const ProgramRequest &request)
{
    auto *process = new QProcess(&started());
    process->setProcessChannelMode(QProcess::ForwardedChannels);
    process->setInputChannelMode(QProcess::ForwardedInputChannel);
    process->start(request.program, wordsOf(request.arguments));
    if (!process->waitForStarted()) {
        process->deleteLater();
        return false;
    }
    const pid_t pid = pid_t(process->processId());
    if (request.waitUntilReady)
        bus::Bus::instance().serveUntil([pid] { return isOnBus(pid) || hasEnded(pid); }, kReadyLimit);
    return true;
}

} // namespace quorel
