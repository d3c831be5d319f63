#include "platform/windows/addresses.h"

#include "platform/windows/envio.h"

#include <QWidget>

#include <utility>

namespace quorel::win {

static constexpr wchar_t kClass[] = L"Quorel";

Addresses &Addresses::instance()
{
    static Addresses addresses;
    return addresses;
}

qintptr deliver(HWND window, const Place &place, Janela sender, CopyData data)
{
    const auto size = qint32(data.size);
    if (size <= 0)
        data.bytes = nullptr;
    const bool true_ = size <= qint32(kMaxCopyData) && (size <= 0 || data.bytes);
    const auto procedure = place.procedure->inForce; // may be replaced while it runs
    if (!place.procedure->reachable || !true_)
        return 0;
    return callWindowProc(*procedure, Janela(window), kCopyData, sender, qintptr(&data));
}

static LRESULT receive(HWND window, const Place &place, WPARAM sender, LPARAM message)
{
    const auto *came = reinterpret_cast<const COPYDATASTRUCT *>(message);
    if (!came)
        return 0;
    const Serving serving{HWND(sender)};
    const Place held = place; // the list may change meanwhile
    return deliver(window, held, sender, {quint32(came->dwData), quint32(came->cbData), came->lpData});
}

/// Where others place a window that only stands for a widget, the widget goes there, no smaller than it may be.
static void placeBody(const Place &place, WINDOWPOS &wanted)
{
    const QPointer<QWidget> body = place.body;
    if (body && (wanted.flags & SWP_NOMOVE) == 0)
        body->move(wanted.x, wanted.y);
    if (body && (wanted.flags & SWP_NOSIZE) == 0)
        body->resize(QSize(wanted.cx, wanted.cy).expandedTo(body->minimumSize()).expandedTo(body->minimumSizeHint()));
    if (body && (wanted.flags & SWP_NOZORDER) == 0 && wanted.hwndInsertAfter != HWND_NOTOPMOST)
        body->raise();
    wanted.flags |= SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE;
}

/// Serves the windows of the class and, before their own procedure, those of widgets.
static LRESULT CALLBACK windowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    const Place *place = Addresses::instance().find(window);
    if (!place)
        return DefWindowProcW(window, message, wParam, lParam);
    const WNDPROC before = place->before;
    switch (message) {
    case WM_COPYDATA:
        return receive(window, *place, wParam, lParam);
    case WM_WINDOWPOSCHANGING:
        if (!before)
            placeBody(*place, *reinterpret_cast<WINDOWPOS *>(lParam));
        break;
    case WM_CLOSE: // what ends programs asks all their windows; the address goes with the program only
        if (!before)
            return 0;
        break;
    case WM_NCDESTROY:
        Addresses::instance().forget(window);
        break;
    default:
        break;
    }
    return before ? CallWindowProcW(before, window, message, wParam, lParam)
                  : DefWindowProcW(window, message, wParam, lParam);
}

static void registerClass()
{
    static const ATOM registered = [] {
        WNDCLASSEXW description = {};
        description.cbSize = sizeof description;
        description.lpfnWndProc = windowProc;
        description.hInstance = GetModuleHandleW(nullptr);
        description.lpszClassName = kClass;
        return RegisterClassExW(&description);
    }();
    Q_UNUSED(registered);
}

HWND Addresses::create(Place place, HWND parent)
{
    registerClass();
    const DWORD style = parent ? WS_CHILD : WS_POPUP;
    HWND window =
        CreateWindowExW(0, kClass, L"", style, 0, 0, 1, 1, parent, nullptr, GetModuleHandleW(nullptr), nullptr);
    if (window)
        mPlaces.insert_or_assign(window, std::move(place));
    return window;
}

void Addresses::adopt(HWND window, Place place)
{
    if (const auto left = mPlaces.find(window); left != mPlaces.end()) { // our procedure stands in the chain still
        place.before = left->second.before;
        left->second = std::move(place);
        return;
    }
    place.before = reinterpret_cast<WNDPROC>(GetWindowLongPtrW(window, GWLP_WNDPROC));
    mPlaces.insert_or_assign(window, std::move(place));
    SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(windowProc));
}

void Addresses::release(HWND window)
{
    const auto found = mPlaces.find(window);
    if (found == mPlaces.end())
        return;
    const WNDPROC before = found->second.before;
    const bool outermost = GetWindowLongPtrW(window, GWLP_WNDPROC) == reinterpret_cast<LONG_PTR>(windowProc);
    if (before && !outermost) { // somebody else's procedure calls ours: it stays, and passes all on
        found->second = {std::make_shared<Procedure>(), nullptr, before};
        return;
    }
    mPlaces.erase(found);
    if (before)
        SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(before));
    else
        DestroyWindow(window);
}

void Addresses::releaseAll()
{
    const auto all = mPlaces;
    for (const auto &[window, place] : all)
        release(window);
}

const Place *Addresses::find(HWND window) const
{
    const auto found = mPlaces.find(window);
    return found == mPlaces.end() ? nullptr : &found->second;
}

} // namespace quorel::win
