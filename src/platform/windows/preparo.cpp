#include "platform/preparo.h"

#include <cstdlib>

#include <qt_windows.h>

namespace quorel {

/// A drive without a medium is an error of the call instead of a box of the system.
static void keepBoxesAway()
{
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
}

void preparePlatform()
{
    // A program that waits for its shell for long would be shown as a ghost, under a title that nobody searches.
    DisableProcessWindowsGhosting();
    keepBoxesAway();
}

void prepareConsole()
{
    keepBoxesAway();
    static const UINT before = GetConsoleOutputCP();
    SetConsoleOutputCP(CP_UTF8);
    std::atexit([] { SetConsoleOutputCP(before); }); // the console outlives the program
}

} // namespace quorel
