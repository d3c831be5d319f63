#pragma once

#include <QString>

#include <qt_windows.h>

namespace quorel::win {

/// The text as the system's functions read it; good for as long as the text lives unchanged.
inline const wchar_t *wide(const QString &text)
{
    return reinterpret_cast<const wchar_t *>(text.utf16());
}

} // namespace quorel::win
