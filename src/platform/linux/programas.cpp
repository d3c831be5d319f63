#include "platform/programas.h"

#include "platform/caminho.h"
#include "platform/linux/bus.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QProcess>
#include <QUrl>

#include <sys/wait.h>

#include <algorithm>
#include <chrono>

namespace quorel {

using namespace Qt::StringLiterals;

static constexpr std::chrono::seconds kReadyLimit{10};

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

/// A number may have belonged to a program that died and left its entry.
static bool isOnBus(pid_t process)
{
    const auto &entries = bus::Bus::instance().directory().entries();
    const auto its = [&](const bus::Entry &entry) { return bus::processOf(entry.handle) == process; };
    return std::ranges::any_of(entries, its) && bus::Bus::instance().isAlive(process);
}

bool startProgramNow(const ProgramRequest &request)
{
    auto *process = new QProcess(&started());
    process->setProcessChannelMode(QProcess::ForwardedChannels);
    process->setInputChannelMode(QProcess::ForwardedInputChannel);
    process->start(request.program, request.arguments.split(u' ', Qt::SkipEmptyParts));
    if (!process->waitForStarted()) {
        process->deleteLater();
        return false;
    }
    const pid_t pid = pid_t(process->processId());
    if (request.waitUntilReady)
        bus::Bus::instance().serveUntil([pid] { return isOnBus(pid) || hasEnded(pid); }, kReadyLimit);
    return true;
}

/// In a Wayland session a viewer opens its window there, where nobody else can see the title; asked so, the usual ones
/// open it under X11.
static void askViewersForX11()
{
    if (!qEnvironmentVariableIsSet("WAYLAND_DISPLAY") && qgetenv("XDG_SESSION_TYPE") != "wayland")
        return;
    qputenv("MOZ_ENABLE_WAYLAND", "0");
    qputenv("GDK_BACKEND", "x11");
}

static QUrl urlOf(const QString &document)
{
    if (document.contains("://"_L1) || document.startsWith("mailto:"_L1, Qt::CaseInsensitive))
        return QUrl(document);
    const QString native = nativePath(document);
    return QFileInfo::exists(native) ? QUrl::fromLocalFile(QFileInfo(native).absoluteFilePath()) : QUrl();
}

bool openDocumentNow(const DocumentRequest &request)
{
    const QUrl url = urlOf(request.document);
    if (url.isEmpty())
        return false;
    askViewersForX11();
    return QDesktopServices::openUrl(url);
}

} // namespace quorel
