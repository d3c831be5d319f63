#pragma once

namespace quorel {

/// Sets the process up for Qt, before the QApplication is made: in a Wayland session X11 is asked for, since windows
/// of fixed places need it (where no X server answers Qt goes on with Wayland, without places), freed memory is
/// kept for the next large message, the stack may grow for long chains of sends, and a peer that is gone is an error of
/// the write instead of the end of the process. Calling it again does no harm.
void preparePlatform();

/// For a program without windows: its console shows the texts that it writes, which are UTF-8, for as long as it runs.
void prepareConsole();

/// For a program with windows that has something to print: its standard output is the console that it was started from,
/// unless it was led elsewhere.
void prepareTerminal();

} // namespace quorel
