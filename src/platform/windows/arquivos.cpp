#include "platform/caminho.h"
#include "platform/sistema.h"
#include "platform/windows/texto.h"

namespace quorel {

/// Whether the system refuses to open the file for writing; one that somebody holds open is not refused so.
static bool writingRefused(const QString &native)
{
    constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    HANDLE opened = CreateFileW(
        win::wide(native), FILE_WRITE_DATA, kShareAll, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (opened != INVALID_HANDLE_VALUE) {
        CloseHandle(opened);
        return false;
    }
    const DWORD failure = GetLastError();
    return failure == ERROR_ACCESS_DENIED || failure == ERROR_WRITE_PROTECT;
}

bool isReadOnly(const QString &caminho)
{
    const QString native = nativePath(caminho);
    const DWORD attributes = GetFileAttributesW(win::wide(native));
    if (native.isEmpty() || attributes == INVALID_FILE_ATTRIBUTES)
        return false;
    return (attributes & FILE_ATTRIBUTE_READONLY) != 0 || writingRefused(native);
}

bool clearReadOnly(const QString &caminho)
{
    const QString native = nativePath(caminho);
    const DWORD attributes = GetFileAttributesW(win::wide(native));
    if (native.isEmpty() || attributes == INVALID_FILE_ATTRIBUTES)
        return false;
    if ((attributes & FILE_ATTRIBUTE_READONLY) != 0)
        SetFileAttributesW(win::wide(native), attributes & ~DWORD(FILE_ATTRIBUTE_READONLY));
    return !isReadOnly(caminho);
}

} // namespace quorel
