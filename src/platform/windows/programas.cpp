#include "platform/programas.h"

#include "platform/windows/envio.h"
#include "platform/windows/texto.h"

#include <chrono>
#include <memory>

namespace quorel {

using namespace Qt::StringLiterals;
using Clock = std::chrono::steady_clock;

static constexpr std::chrono::seconds kReadyLimit{10};
static constexpr DWORD kLook = 10; // ms between two looks at the sends that came in

/// Until the program waits for its first message, has ended, or has no windows.
static void waitUntilReady(HANDLE process)
{
    const auto end = Clock::now() + kReadyLimit;
    while (Clock::now() < end && WaitForInputIdle(process, kLook) == WAIT_TIMEOUT)
        win::serveSends();
}

bool startProgramNow(const ProgramRequest &request)
{
    if (request.program.isEmpty())
        return false;
    QString command = u'"' + request.program + u"\" "_s + request.arguments; // the system writes into it
    STARTUPINFOW how = {};
    how.cb = sizeof how;
    how.dwFlags = STARTF_USESHOWWINDOW;
    how.wShowWindow = SW_SHOWNORMAL;
    PROCESS_INFORMATION started = {};
    if (!CreateProcessW(win::wide(request.program), reinterpret_cast<wchar_t *>(command.data()), nullptr, nullptr, TRUE,
            0, nullptr, nullptr, &how, &started))
        return false;
    CloseHandle(started.hThread);
    AllowSetForegroundWindow(started.dwProcessId);
    if (request.waitUntilReady)
        waitUntilReady(started.hProcess);
    CloseHandle(started.hProcess);
    return true;
}

} // namespace quorel
