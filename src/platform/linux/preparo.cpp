#include "platform/preparo.h"

#include <QByteArray>

#include <malloc.h>
#include <sys/resource.h>

#include <algorithm>
#include <csignal>

namespace quorel {

/// Above the largest message with its text, so that no message's memory goes back to the system and is faulted in anew.
static constexpr int kKeptBytes = 64 << 20;
static constexpr int kTopPadBytes = 4 << 20;

static constexpr rlim_t kStackBytes = 64 << 20;

static void askForX11()
{
    const bool wayland = qEnvironmentVariableIsSet("WAYLAND_DISPLAY") || qgetenv("XDG_SESSION_TYPE") == "wayland";
    if (wayland && !qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "xcb;wayland");
}

/// A chain of sends within sends, each with its handler, takes some KB a level in 500 levels.
static void askForStack()
{
    rlimit limit = {};
    if (::getrlimit(RLIMIT_STACK, &limit) != 0 || limit.rlim_cur >= kStackBytes)
        return;
    limit.rlim_cur = std::min<rlim_t>(kStackBytes, limit.rlim_max);
    ::setrlimit(RLIMIT_STACK, &limit); // the main thread's grows up to it, in this process already
}

void preparePlatform()
{
    ::signal(SIGPIPE, SIG_IGN); // libxcb would end the program by it when the X server is gone
    askForStack();
    mallopt(M_TRIM_THRESHOLD, kKeptBytes);
    mallopt(M_MMAP_THRESHOLD, kKeptBytes / 2); // the largest that the library takes is 32 MB
    mallopt(M_TOP_PAD, kTopPadBytes);
    askForX11();
}

void prepareConsole() { } // terminals show UTF-8

void prepareTerminal() { } // it has it already

} // namespace quorel
