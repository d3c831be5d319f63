#include "platform/janela.h"

#include <QRegion>

#include <qt_windows.h>

namespace quorel {

void setRoundRegion(QWidget *widget, int width, int height, int diameter)
{
    if (!widget || width <= 0 || height <= 0)
        return;
    HRGN round = CreateRoundRectRgn(0, 0, width, height, diameter, diameter);
    // Qt gives it to the system with SetWindowRgn, again whenever it makes the window anew, and clips what has no
    // window of its own.
    widget->setMask(QRegion::fromHRGN(round));
    DeleteObject(round);
}

} // namespace quorel
