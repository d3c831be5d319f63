#include "platform/windows/janelas.h"

#include <algorithm>
#include <array>
#include <memory>
#include <type_traits>

#include <tlhelp32.h>

namespace quorel::win {

namespace {

struct Closed
{
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using Handle = std::unique_ptr<std::remove_pointer_t<HANDLE>, Closed>;

/// Without asking the window's program, which may be hung.
QString titleOf(HWND window)
{
    constexpr int kLongest = 512; // characters; the titles searched are a few dozen
    std::array<wchar_t, kLongest> text;
    const int length = InternalGetWindowText(window, text.data(), kLongest);
    return QString::fromWCharArray(text.data(), length);
}

BOOL CALLBACK collect(HWND window, LPARAM into)
{
    Titled titled{window, processOf(window), titleOf(window)};
    if (titled.title.isEmpty())
        return TRUE;
    // Viewers put a long dash between the document's title and their own.
    if (titled.process != GetCurrentProcessId())
        titled.title.replace(u'\u2013', u'-').replace(u'\u2014', u'-');
    reinterpret_cast<std::vector<Titled> *>(into)->push_back(std::move(titled));
    return TRUE;
}

BOOL CALLBACK collectInner(HWND window, LPARAM into)
{
    EnumChildWindows(window, collect, into);
    return TRUE;
}

quint64 startOf(HANDLE process)
{
    FILETIME start = {}, other = {};
    if (!GetProcessTimes(process, &start, &other, &other, &other))
        return 0;
    constexpr int kLowBits = 32;
    return quint64(start.dwHighDateTime) << kLowBits | start.dwLowDateTime;
}

} // namespace

std::vector<Titled> topLevels()
{
    std::vector<Titled> all;
    EnumWindows(collect, LPARAM(&all));
    return all;
}

std::vector<Titled> innerWindows()
{
    std::vector<Titled> all;
    EnumWindows(collectInner, LPARAM(&all));
    return all;
}

bool showsWindow(DWORD process)
{
    const std::vector<Titled> all = topLevels();
    return std::ranges::any_of(
        all, [process](const Titled &each) { return each.process == process && IsWindowVisible(each.window); });
}

Janela titledWindowOf(DWORD process, QStringView titulo)
{
    if (process == 0 || titulo.isEmpty())
        return 0;
    const std::vector<Titled> all = topLevels();
    const auto its =
        std::ranges::find_if(all, [&](const Titled &each) { return each.process == process && each.title == titulo; });
    return its == all.end() ? 0 : Janela(its->window);
}

DWORD parentProcess()
{
    const Handle snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
    PROCESSENTRY32W entry = {};
    entry.dwSize = sizeof entry;
    DWORD parent = 0;
    for (BOOL more = Process32FirstW(snapshot.get(), &entry); more; more = Process32NextW(snapshot.get(), &entry)) {
        if (entry.th32ProcessID == GetCurrentProcessId())
            parent = entry.th32ParentProcessID;
    }
    const Handle opened(OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, parent));
    // Numbers are used again: a process that began after this one did not start it.
    return opened && startOf(opened.get()) <= startOf(GetCurrentProcess()) ? parent : 0;
}

} // namespace quorel::win
