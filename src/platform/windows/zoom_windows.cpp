#include "platform/zoom.h"

#include <qt_windows.h>

namespace quorel {

QSize freeScreenArea()
{
    RECT area = {};
    if (!SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0))
        return {};
    // Until Qt tells the system that this program knows about dots an inch, sizes are told as if the screen had 96.
    const HDC screen = GetDC(nullptr);
    const int shown = GetDeviceCaps(screen, VERTRES);
    const int dots = GetDeviceCaps(screen, DESKTOPVERTRES);
    ReleaseDC(nullptr, screen);
    const QSize told(int(area.right - area.left), int(area.bottom - area.top));
    return shown > 0 && dots > shown ? told * (double(dots) / shown) : told;
}

} // namespace quorel
