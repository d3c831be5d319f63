#include "support/sistema.h"

#include <qt_windows.h>

namespace quorel::teste {

const int kCorrente = 40;
const bool kOpenFilesMove = false;
const bool kMeetInADirectory = false;

// Held open by somebody who shares reading only: an attribute or a permission would not keep an administrator from it.
std::shared_ptr<void> impedeEscrita(const QString &native)
{
    HANDLE held = CreateFileW(reinterpret_cast<const wchar_t *>(native.utf16()), GENERIC_READ, FILE_SHARE_READ, nullptr,
        OPEN_EXISTING, 0, nullptr);
    if (held == INVALID_HANDLE_VALUE)
        qFatal("can't open %s", qPrintable(native));
    return {held, CloseHandle};
}

void mataProcesso(qint64 process)
{
    HANDLE opened = OpenProcess(PROCESS_TERMINATE, FALSE, DWORD(process));
    TerminateProcess(opened, 1);
    CloseHandle(opened);
}

QPoint cantoDe(const QWidget &window)
{
    RECT place = {};
    GetWindowRect(HWND(window.winId()), &place);
    return {place.left, place.top};
}

bool sempreNaFrente(const QWidget &window)
{
    return (GetWindowLongW(HWND(window.winId()), GWL_EXSTYLE) & WS_EX_TOPMOST) != 0;
}

} // namespace quorel::teste
