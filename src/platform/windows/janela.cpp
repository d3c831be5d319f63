#include "platform/janela.h"

#include "platform/windows/addresses.h"
#include "platform/windows/janelas.h"

#include <algorithm>

namespace quorel {

using win::Titled;

/// Addresses of this process, then its other windows, then those of others, each in the order of windows.
static int rankOf(const Titled &titled)
{
    if (titled.process != GetCurrentProcessId())
        return 2;
    return win::Addresses::instance().find(titled.window) ? 0 : 1;
}

static std::vector<Titled> ownFirst(std::vector<Titled> windows)
{
    std::ranges::stable_sort(windows, {}, rankOf);
    return windows;
}

static Janela firstExact(const std::vector<Titled> &windows, QStringView titulo)
{
    const auto found = std::ranges::find_if(windows, [&](const Titled &each) { return each.title == titulo; });
    return found == windows.end() ? 0 : Janela(found->window);
}

static Janela firstBeginning(const std::vector<Titled> &windows, QStringView titulo)
{
    const auto found =
        std::ranges::find_if(windows, [&](const Titled &each) { return QStringView(each.title).startsWith(titulo); });
    return found == windows.end() ? 0 : Janela(found->window);
}

Janela findWindow(QStringView titulo, bool parcial)
{
    if (titulo.isEmpty())
        return 0;
    const std::vector<Titled> top = ownFirst(win::topLevels());
    if (const Janela found = firstExact(top, titulo))
        return found;
    const std::vector<Titled> inner = ownFirst(win::innerWindows());
    if (const Janela found = firstExact(inner, titulo))
        return found;
    if (!parcial)
        return 0;
    const Janela found = firstBeginning(top, titulo);
    return found ? found : firstBeginning(inner, titulo);
}

void placeWindow(Janela janela, Ordem ordem, unsigned flags)
{
    static_assert(kKeepSize == SWP_NOSIZE && kKeepPosition == SWP_NOMOVE);
    auto *window = HWND(janela);
    const DWORD process = janela == 0 ? 0 : win::processOf(window);
    if (process == 0)
        return;
    const bool foreign = process != GetCurrentProcessId();
    if (foreign)
        AllowSetForegroundWindow(process); // it comes to the front with the lesson that is sent next
    HWND after = HWND_TOP;
    if (ordem != Ordem::Top)
        after = ordem == Ordem::Topmost ? HWND_TOPMOST : HWND_NOTOPMOST;
    SetWindowPos(window, after, 0, 0, 0, 0, flags | (foreign ? UINT(SWP_ASYNCWINDOWPOS) : 0U));
}

Janela handleOf(const QWidget *window)
{
    return window ? Janela(window->winId()) : 0;
}

} // namespace quorel
