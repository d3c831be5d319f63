#include "platform/sistema.h"

#include "platform/sistema_base.h"
#include "platform/windows/texto.h"

#include <array>
#include <vector>

#include <mmsystem.h>

namespace quorel {

using namespace Qt::StringLiterals;

QString systemWindowsDirectory()
{
    std::array<wchar_t, MAX_PATH> path;
    const UINT length = GetWindowsDirectoryW(path.data(), UINT(path.size()));
    return QString::fromWCharArray(path.data(), qsizetype(length));
}

QString systemAccountName()
{
    return qEnvironmentVariable("USERNAME");
}

QString machineDirectory()
{
    return qEnvironmentVariable("ProgramData", u"C:\\ProgramData"_s) + u"/Quorel"_s;
}

QStringList driveRoots(int tipo)
{
    std::vector<wchar_t> list(GetLogicalDriveStringsW(0, nullptr) + 1);
    GetLogicalDriveStringsW(DWORD(list.size()), list.data());
    QStringList roots;
    for (const wchar_t *root = list.data(); *root != 0; root += wcslen(root) + 1) {
        if (int(GetDriveTypeW(root)) == tipo)
            roots.append(QString::fromWCharArray(root));
    }
    return roots;
}

int waveOutputCount()
{
    return int(waveOutGetNumDevs());
}

QString proposedCopies()
{
    return u"C:\\FigurasQuorel"_s;
}

QString proposedMedia()
{
    return u"D:\\zeto_MM"_s;
}

bool dialUpConnected()
{
    HKEY key = nullptr;
    if (RegOpenKeyExW(
            HKEY_LOCAL_MACHINE, L"System\\CurrentControlSet\\Services\\RemoteAccess", 0, KEY_QUERY_VALUE, &key)
        != ERROR_SUCCESS)
        return false;
    DWORD value = 0;
    DWORD size = sizeof value;
    const LSTATUS read =
        RegQueryValueExW(key, L"Remote Connection", nullptr, nullptr, reinterpret_cast<BYTE *>(&value), &size);
    RegCloseKey(key);
    return read == ERROR_SUCCESS && qint32(value) > 0;
}

} // namespace quorel
