#include "platform/preparo.h"

#include <cstdio>
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

void prepareTerminal()
{
    const HANDLE given = GetStdHandle(STD_OUTPUT_HANDLE);
    if (given == nullptr || given == INVALID_HANDLE_VALUE) {
        if (!AttachConsole(ATTACH_PARENT_PROCESS) || !std::freopen("CONOUT$", "w", stdout))
            return; // started from no console: nobody reads it
    }
    prepareConsole();
}

} // namespace quorel
