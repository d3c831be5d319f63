#pragma once

namespace quorel {

/// Sets the process up for Qt, before the QApplication is made: in a Wayland session X11 is asked for, since windows
/// of fixed places need it (where no X server answers Qt goes on with Wayland, without places), and freed memory is
/// kept for the next large message. Calling it again does no harm.
void preparePlatform();

} // namespace quorel
