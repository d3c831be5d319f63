#pragma once

#include "platform/janela.h"

#include <sys/types.h>

/// Windows of programs that are not on the bus, seen through the X server; where none answers there are none.
namespace quorel::x11 {

/// The first top-level window with that title, else, when `parcial`, the first whose title begins so; 0 when none.
Janela findWindow(QStringView titulo, bool parcial);

/// As quorel::placeWindow(): through the window manager, or directly where there is none.
void placeWindow(quint32 window, Ordem ordem, unsigned flags);

/// Whether a window of that process is on the screen, minimised perhaps; false where that can't be seen.
bool showsWindow(pid_t process);

} // namespace quorel::x11
