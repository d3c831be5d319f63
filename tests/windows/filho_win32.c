/* A child program that knows nothing of ours: the Win32 API and the texts of the protocol, no more. It bears the title
 * of the stories, answers each lesson with "A" from inside its window procedure, while the shell is still inside its
 * own send, and ends when it is told to. What its name ends in makes it an awkward one:
 *   …mudo.exe never answers a lesson   …morre.exe dies inside one   …nega.exe claims a length that nobody takes
 *   …lento.exe takes 11 s to start   …repete.exe answers with its command line
 *   …traco.exe has a long dash in its title */
#include <string.h>
#include <windows.h>

enum { MSG_AULA = 2060, MSG_PROXIMA = 2069, MSG_SAI = 2071 };

static const wchar_t kTitle[] = L"Hist\u00f3rias - Quorel";
static const wchar_t kDashed[] = L"Hist\u00f3rias \u2014 Quorel";
static const wchar_t kShell[] = L"Gerenciador de Roteiros do Quorel";

static int named(const wchar_t *ending)
{
    wchar_t path[MAX_PATH];
    const size_t length = GetModuleFileNameW(NULL, path, MAX_PATH), end = wcslen(ending);
    return length > end && lstrcmpiW(path + length - end, ending) == 0;
}

static LRESULT answer(HWND window)
{
    static char text[300000] = "A";
    COPYDATASTRUCT data = {MSG_PROXIMA, 2, text};
    if (named(L"repete.exe"))
        data.cbData = 1 + lstrlenA(lstrcpynA(text, GetCommandLineA(), sizeof text));
    if (named(L"nega.exe"))
        data.cbData = sizeof text; /* more than a shell takes */
    return SendMessageW(FindWindowW(NULL, kShell), WM_COPYDATA, (WPARAM)window, (LPARAM)&data);
}

static LRESULT lesson(HWND window)
{
    if (named(L"mudo.exe"))
        Sleep(INFINITE);
    if (named(L"morre.exe"))
        ExitProcess(3);
    return answer(window) == 0 ? 2 : 1;
}

static LRESULT CALLBACK windowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    const COPYDATASTRUCT *data = (const COPYDATASTRUCT *)lParam;
    if (message != WM_COPYDATA)
        return DefWindowProcW(window, message, wParam, lParam);
    if (data->dwData == MSG_SAI)
        PostQuitMessage(0);
    return data->dwData == MSG_AULA ? lesson(window) : 1;
}

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE before, LPWSTR line, int show)
{
    WNDCLASSW description = {0};
    MSG message;
    (void)before;
    (void)line;
    if (named(L"lento.exe"))
        Sleep(11000);
    description.lpfnWndProc = windowProc;
    description.hInstance = instance;
    description.lpszClassName = L"FilhoEmC";
    RegisterClassW(&description);
    ShowWindow(CreateWindowW(L"FilhoEmC", named(L"traco.exe") ? kDashed : kTitle, WS_OVERLAPPEDWINDOW, 200, 150, 300,
                   200, NULL, NULL, instance, NULL),
        show);
    while (GetMessageW(&message, NULL, 0, 0) > 0)
        DispatchMessageW(&message);
    return 0;
}
