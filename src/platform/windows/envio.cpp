#include "platform/windows/envio.h"

#include "platform/eventos.h"
#include "platform/windows/addresses.h"

#include <QScopeGuard>

#include <algorithm>
#include <vector>

namespace quorel {

namespace {

/// A chain of sends within sends goes no deeper: each level costs stack in both processes, the system's own too, which
/// no program can make larger. Under Wine both programs hang for good at 65.
constexpr int kMaxDepth = 50;
constexpr int kShellLimit = 5000; // ms

struct Sends
{
    std::vector<DWORD> served; ///< processes whose sends are being served, the latest last
    int depth = 0; ///< of our own
    int limit = kShellLimit; ///< ms; 0 for none
};

Sends &sends()
{
    static Sends all;
    return all;
}

} // namespace

DWORD win::processOf(HWND window)
{
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    return process;
}

win::Serving::Serving(HWND sender)
{
    sends().served.push_back(processOf(sender));
}

win::Serving::~Serving()
{
    sends().served.pop_back();
}

void win::serveSends()
{
    MSG message;
    PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
}

/// How a send to a process waits. The system takes a thread for hung that has fetched no message for 5 s, and so one
/// that waits in a send to us, which serves ours all the same.
static UINT waitFor(DWORD process)
{
    const auto &served = sends().served;
    const bool waitsForUs = std::ranges::find(served, process) != served.end();
    return waitsForUs ? SMTO_NORMAL : SMTO_ABORTIFHUNG;
}

static qintptr sendAcross(HWND target, Janela sender, COPYDATASTRUCT &data)
{
    const auto content = LPARAM(&data);
    if (sends().limit == 0)
        return SendMessageW(target, WM_COPYDATA, sender, content);
    DWORD_PTR result = 0;
    const UINT how = waitFor(win::processOf(target));
    const LRESULT answered =
        SendMessageTimeoutW(target, WM_COPYDATA, sender, content, how, UINT(sends().limit), &result);
    return answered ? qintptr(result) : 0;
}

static qintptr sendWithin(HWND target, Janela sender, const CopyData &data)
{
    const win::Place *place = win::Addresses::instance().find(target);
    if (!place)
        return 0;
    const win::Place held = *place; // the list may change meanwhile
    return win::deliver(target, held, sender, data);
}

qintptr sendCopyData(Janela destino, Janela remetente, quint32 code, qint32 size, QByteArrayView bytes)
{
    auto *target = HWND(destino);
    if (destino == 0 || size > qint32(kMaxCopyData) || sends().depth >= kMaxDepth || !IsWindow(target))
        return 0;
    ++sends().depth;
    const auto restore = qScopeGuard([] { --sends().depth; });
    const qsizetype wanted = std::max(size, 0);
    QByteArray padded; // a size beyond the bytes given means the zeroed rest of a buffer
    if (bytes.size() < wanted) {
        padded = bytes.toByteArray();
        padded.resize(wanted, '\0');
        bytes = padded;
    }
    const void *content = wanted > 0 ? bytes.data() : nullptr;
    if (win::processOf(target) == GetCurrentProcessId())
        return sendWithin(target, remetente, {code, quint32(size), content});
    COPYDATASTRUCT data{code, DWORD(size), const_cast<void *>(content)}; // only read by the system
    return sendAcross(target, remetente, data);
}

bool serveSendsUntil(const std::function<bool()> &condition, std::chrono::milliseconds limit)
{
    constexpr DWORD kLook = 5; // ms between two looks at the condition
    const auto end = std::chrono::steady_clock::now() + limit;
    for (bool last = false; !condition(); last = std::chrono::steady_clock::now() >= end) {
        if (!last)
            MsgWaitForMultipleObjects(0, nullptr, FALSE, kLook, QS_SENDMESSAGE);
        win::serveSends();
        if (last)
            return condition();
    }
    return true;
}

void releaseSenders()
{
    ReplyMessage(1);
}

void setSendLimit(int milliseconds)
{
    sends().limit = milliseconds;
}

bool insideSend()
{
    return sends().depth > 0;
}

} // namespace quorel
