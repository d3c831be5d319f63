#include "platform/caminho.h"
#include "platform/sistema.h"
#include "platform/windows/texto.h"

#include <array>

namespace quorel {

static bool isOnReadOnlyMedium(const QString &native)
{
    std::array<wchar_t, MAX_PATH + 1> volume;
    DWORD flags = 0;
    return GetVolumePathNameW(win::wide(native), volume.data(), DWORD(volume.size()))
        && GetVolumeInformationW(volume.data(), nullptr, 0, nullptr, nullptr, &flags, nullptr, 0)
        && (flags & FILE_READ_ONLY_VOLUME) != 0;
}

bool isReadOnly(const QString &caminho)
{
    const QString native = nativePath(caminho);
    const DWORD attributes = GetFileAttributesW(win::wide(native));
    if (native.isEmpty() || attributes == INVALID_FILE_ATTRIBUTES)
        return false;
    return (attributes & FILE_ATTRIBUTE_READONLY) != 0 || isOnReadOnlyMedium(native);
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

bool isOpenElsewhere(const QString &caminho)
{
    const QString native = nativePath(caminho);
    HANDLE alone = CreateFileW(win::wide(native), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    if (alone == INVALID_HANDLE_VALUE)
        return GetLastError() == ERROR_SHARING_VIOLATION;
    CloseHandle(alone);
    return false;
}

} // namespace quorel
