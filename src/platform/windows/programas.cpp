#include "platform/programas.h"

#include "platform/windows/envio.h"
#include "platform/windows/janelas.h"
#include "platform/windows/texto.h"

#include <chrono>
#include <memory>

namespace quorel {

using namespace Qt::StringLiterals;
using Clock = std::chrono::steady_clock;

static constexpr std::chrono::seconds kReadyLimit{30}; // a first start from a slow disc; it ends early where it can
static constexpr DWORD kLook = 10; // ms between two looks at the sends that came in

/// Until the program waits for its first message and shows its window, has ended, or has no windows. The first alone is
/// not enough: a toolkit looks for messages while it starts, long before the window has the title that is searched
/// next.
static void waitUntilReady(const PROCESS_INFORMATION &started)
{
    const auto end = Clock::now() + kReadyLimit;
    DWORD waited = WAIT_TIMEOUT;
    while (Clock::now() < end && (waited = WaitForInputIdle(started.hProcess, kLook)) == WAIT_TIMEOUT)
        win::serveSends();
    while (waited == 0 && Clock::now() < end && !win::showsWindow(started.dwProcessId)
        && WaitForSingleObject(started.hProcess, kLook) == WAIT_TIMEOUT)
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
        waitUntilReady(started);
    CloseHandle(started.hProcess);
    return true;
}

} // namespace quorel
