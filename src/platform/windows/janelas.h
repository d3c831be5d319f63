#pragma once

#include "platform/janela.h"
#include "platform/windows/envio.h"

#include <QString>

#include <vector>

#include <qt_windows.h>

namespace quorel::win {

/// A window that bears a title.
struct Titled
{
    HWND window = nullptr;
    DWORD process = 0;
    QString title; ///< in that of another process a long dash counts as "-"
};

std::vector<Titled> topLevels(); ///< of the desktop that have a title, in the order of windows
std::vector<Titled> innerWindows(); ///< of all of those, at any depth, that have a title

/// Whether the process shows a window with a title.
bool showsWindow(DWORD process);

/// The top-level window with that title, of that process; 0 when there is none, or for an empty title.
Janela titledWindowOf(DWORD process, QStringView titulo);

/// The process that started this one; 0 when it has ended, also when another one has its number by now.
DWORD parentProcess();

} // namespace quorel::win
