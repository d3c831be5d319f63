"""docs/filho_windows.py over an imitation of the system's functions: its types, its structures and what it does."""
import collections
import ctypes
import runpy
import sys
import unittest
from ctypes import wintypes

PAGE_CHILD = sys.argv.pop(1)
SHELL, CHILD, SHELL_PROCESS = 0x500000001, 0x700000002, 77


class Function:
    """One function of the system: converts as ctypes would by the types that the child declared."""

    def __init__(self, body):
        self.body, self.restype, self.argtypes = body, None, None

    def __call__(self, *arguments):
        writes = self.body.__name__ == "do_GetWindowTextW"  # a text to be written into comes as its address
        types = [ctypes.c_void_p if writes and each is wintypes.LPWSTR else each for each in self.argtypes]
        return ctypes.CFUNCTYPE(self.restype, *types)(self.body)(*arguments)


class System:
    def __init__(self):
        self.functions = {}
        self.start_anew()

    def start_anew(self):
        self.titles, self.sent, self.posted, self.script = {}, [], collections.deque(), collections.deque()
        self.visible, self.nested, self.procedure = False, [], None

    def __getattr__(self, name):
        body = getattr(type(self), "do_" + name, None)
        if body is None:
            raise AttributeError(name)
        return self.functions.setdefault(name, Function(body.__get__(self)))

    def deliver(self, code, text, size=None):
        keep = ctypes.create_string_buffer(text + b"\0")
        data = CHILD_MODULE["COPYDATASTRUCT"](code, len(text) + 1 if size is None else size, ctypes.addressof(keep))
        return self.procedure(CHILD, 0x4A, SHELL, ctypes.addressof(data))

    def do_RegisterClassW(self, kind):
        self.procedure = kind.contents.lpfnWndProc
        return 1

    def do_CreateWindowExW(self, extra, kind, title, style, x, y, w, h, above, menu, module, more):
        handle = CHILD + len(self.titles)
        self.titles[handle] = title
        return handle

    def do_ShowWindow(self, window, how):
        self.visible = bool(how)
        return 1

    def do_IsWindowVisible(self, window):
        return self.visible

    def do_SetForegroundWindow(self, window):
        return 1

    def do_SetWindowTextW(self, window, text):
        self.titles[window] = text
        return 1

    def do_GetWindowTextW(self, window, buffer, size):
        ctypes.memmove(buffer, ctypes.create_unicode_buffer("Gerenciador de Roteiros do Quorel"), 34 * 4)
        return 33

    def do_GetWindowThreadProcessId(self, window, process):
        process[0] = SHELL_PROCESS if window == SHELL else 78
        return 1

    def do_EnumWindows(self, tell, what):
        return tell(SHELL - 1, 0) and tell(SHELL, 0)

    def do_SendMessageW(self, window, message, sender, data):
        copy = CHILD_MODULE["COPYDATASTRUCT"].from_address(data)
        self.sent.append((window, sender, copy.dwData, ctypes.string_at(copy.lpData, copy.cbData)))
        if self.nested:
            return self.deliver(*self.nested.pop(0))  # the shell's own send, before it answers
        return 1

    def do_PostMessageW(self, *message):
        self.posted.append(message)
        return 1

    def do_PostQuitMessage(self, code):
        self.posted.append((None, 0x12, code, 0))

    def do_PeekMessageW(self, message, *rest):
        if not self.posted:
            return 0
        message.contents.hWnd, message.contents.message = self.posted[0][:2]
        self.posted.popleft()
        return 1

    def do_TranslateMessage(self, message):
        return 1

    def do_DispatchMessageW(self, message):
        return self.procedure(message.contents.hWnd, message.contents.message, 0, 0)

    def do_MsgWaitForMultipleObjects(self, count, handles, *rest):
        return self.script.popleft()() if self.script else 0

    def do_OpenProcess(self, rights, inherit, process):
        assert process == SHELL_PROCESS
        return 0x123456789

    def do_CloseHandle(self, handle):
        assert handle == 0x123456789
        return 1

    def do_GetModuleHandleW(self, name):
        return 1

    def do_DefWindowProcW(self, *message):
        return 0


SYSTEM = System()
ctypes.WINFUNCTYPE = ctypes.CFUNCTYPE
ctypes.WinDLL = lambda name: SYSTEM
CHILD_MODULE = runpy.run_path(PAGE_CHILD, run_name="page")


class Page(unittest.TestCase):
    def setUp(self):
        SYSTEM.start_anew()
        self.child = CHILD_MODULE["Filho"]("Zeto - Quorel", "ZETO")

    def test_the_structure_has_the_bytes_of_the_table(self):
        kind = CHILD_MODULE["COPYDATASTRUCT"]
        self.assertEqual((ctypes.sizeof(kind), kind.cbData.offset, kind.lpData.offset), (24, 8, 16))

    def test_a_roteiro_from_lesson_to_end(self):
        self.assertEqual(list(SYSTEM.titles.values()), ["Zeto - Quorel", "ZETO", ""])
        SYSTEM.nested = [(2060, "terceira lição".encode("cp1252")), (2122, b"ESCONDE")]
        SYSTEM.script.extend([lambda: self.assertEqual(SYSTEM.deliver(2060, b"primeira"), 1) or 1,
                              lambda: self.assertEqual(SYSTEM.deliver(2071, b""), 1) or 1])
        self.child.corre()
        self.assertEqual(SYSTEM.sent, [(SHELL, CHILD, 2069, b"A\0")] * 2)
        self.assertEqual(SYSTEM.titles[CHILD + 2], "terceira lição")
        self.assertFalse(SYSTEM.visible)

    def test_the_shell_dies(self):
        SYSTEM.deliver(2122, b"ESCONDE")
        self.child.corre()  # the handle waited for is signalled, and the window is hidden
        self.assertIsNone(self.child.fim)

    def test_a_size_that_nobody_takes_and_none(self):
        self.assertEqual(SYSTEM.deliver(2060, b"x", 204801), 0)
        self.assertEqual(SYSTEM.deliver(2060, b"", 0), 1)
        self.assertEqual(self.child.aula, "")

    def test_the_pupil_closes_the_window(self):
        self.child.trata(CHILD, 0x10, 0, 0)
        self.assertEqual(SYSTEM.sent[-1][2:], (2071, b"\0"))


if __name__ == "__main__":
    unittest.main()
