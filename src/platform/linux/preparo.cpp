#include "platform/preparo.h"

#include <QByteArray>

#include <malloc.h>

namespace quorel {

/// Above the largest message with its text, so that no message's memory goes back to the system and is faulted in anew.
static constexpr int kKeptBytes = 64 << 20;
static constexpr int kTopPadBytes = 4 << 20;

static void askForX11()
{
    const bool wayland = qEnvironmentVariableIsSet("WAYLAND_DISPLAY") || qgetenv("XDG_SESSION_TYPE") == "wayland";
    if (wayland && !qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "xcb;wayland");
}

void preparePlatform()
{
    mallopt(M_TRIM_THRESHOLD, kKeptBytes);
    mallopt(M_MMAP_THRESHOLD, kKeptBytes / 2); // the largest that the library takes is 32 MB
    mallopt(M_TOP_PAD, kTopPadBytes);
    askForX11();
}

} // namespace quorel
