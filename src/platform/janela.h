#pragma once

#include <QStringView>
#include <QWidget>

namespace quorel {

/// Handle of a window of any process: a number of pointer size, 0 for none. On Windows the system's; on Linux that of
/// an address on the bus (never below 2^32), or of an X11 window.
using Janela = quintptr;

/// Finds a window of the desktop by its title, with case, in four passes: exact top-level, exact inner, beginning
/// top-level, beginning inner. So "Livros" finds the inner window and not "Livros - Quorel". The own process's windows
/// come first in each pass. In a title of a program that is not ours a long dash counts as "-".
/// On Linux the titles of the shell and of the lesson programs are looked for among published windows only: a page in a
/// browser may bear any title.
/// @param parcial  false stops after the two exact passes
/// @return 0 when there is none
Janela findWindow(QStringView titulo, bool parcial);

/// Where a window goes in the order of windows.
enum class Ordem {
    Top, ///< in front
    Topmost, ///< in front of all others, for as long as it lasts
    NoTopmost, ///< no longer so
};
inline constexpr unsigned kKeepSize = 1;
inline constexpr unsigned kKeepPosition = 2;

/// Moves a window to the top left corner, gives it the size 0 (programs keep a least size of their own) and a place in
/// the order, each unless the flag says to keep it. Does not wait for the window's program; a handle of 0, or of a
/// window that is gone, is passed over.
void placeWindow(Janela janela, Ordem ordem, unsigned flags);

/// Handle of an own window, for use as a sender; 0 for a null pointer. Makes the native window if need be.
Janela handleOf(const QWidget *window);

/// Gives a window or a child widget the shape of a rectangle with rounded corners; all in pixels.
/// @param diameter  of the ellipse that rounds the corners, not its radius
void setRoundRegion(QWidget *widget, int width, int height, int diameter);

} // namespace quorel
