#!/usr/bin/env python3
"""Um programa filho completo para o Windows, só com a biblioteca padrão (ctypes).

Uso: py filho_windows.py [--titulo "Zeto - Quorel"]
Sem --titulo, o nome com que foi iniciado decide. Faz, função por função, o mesmo que filho_windows.c.
"""
import ctypes
import os
import sys
from ctypes import wintypes

TITULOS = {"zeto": ("Zeto - Quorel", "ZETO"), "desenho": ("Editor de Desenhos - Quorel", None),
           "vrel": ("Histórias - Quorel", None), "livros": ("Livros - Quorel", "Livros"),
           "calc": ("Calculadora - Quorel", None)}
GERENCIADOR = "Gerenciador de Roteiros do Quorel"
MSG_AULA, MSG_PROXIMA, MSG_SAI, MSG_CONTROLE = 2060, 2069, 2071, 2122
WM_CLOSE, WM_QUIT, WM_GETMINMAXINFO, WM_COPYDATA, WM_APP = 0x10, 0x12, 0x24, 0x4A, 0x8000
MAIOR = 204800
LARGURA, ALTURA = 400, 300
LRESULT = ctypes.c_ssize_t

PROCEDIMENTO = ctypes.WINFUNCTYPE(LRESULT, wintypes.HWND, wintypes.UINT, wintypes.WPARAM, wintypes.LPARAM)
ENUMERA = ctypes.WINFUNCTYPE(wintypes.BOOL, wintypes.HWND, wintypes.LPARAM)


class COPYDATASTRUCT(ctypes.Structure):
    """24 bytes num programa de 64 bits: 0 código, 8 tamanho, 16 endereço; 12 num de 32: 0, 4, 8."""
    _fields_ = [("dwData", ctypes.c_size_t), ("cbData", wintypes.DWORD), ("lpData", ctypes.c_void_p)]


class MINMAXINFO(ctypes.Structure):
    _fields_ = [(nome, wintypes.POINT) for nome in ("reservado", "maior", "lugar", "menorLado", "maiorLado")]


class WNDCLASS(ctypes.Structure):
    _fields_ = [("style", wintypes.UINT), ("lpfnWndProc", PROCEDIMENTO), ("cbClsExtra", ctypes.c_int),
                ("cbWndExtra", ctypes.c_int), ("hInstance", wintypes.HINSTANCE), ("hIcon", wintypes.HICON),
                ("hCursor", wintypes.HANDLE), ("hbrBackground", wintypes.HBRUSH), ("lpszMenuName", wintypes.LPCWSTR),
                ("lpszClassName", wintypes.LPCWSTR)]


user32 = ctypes.WinDLL("user32")
kernel32 = ctypes.WinDLL("kernel32")
# Sem os tipos, um número de janela ou de endereço perderia os 32 bits de cima.
for biblioteca, nome, volta, *tipos in (
        (user32, "DefWindowProcW", LRESULT, wintypes.HWND, wintypes.UINT, wintypes.WPARAM, wintypes.LPARAM),
        (user32, "SendMessageW", LRESULT, wintypes.HWND, wintypes.UINT, wintypes.WPARAM, ctypes.c_void_p),
        (user32, "PostMessageW", wintypes.BOOL, wintypes.HWND, wintypes.UINT, wintypes.WPARAM, wintypes.LPARAM),
        (user32, "PostQuitMessage", None, ctypes.c_int),
        (user32, "ShowWindow", wintypes.BOOL, wintypes.HWND, ctypes.c_int),
        (user32, "IsWindowVisible", wintypes.BOOL, wintypes.HWND),
        (user32, "SetForegroundWindow", wintypes.BOOL, wintypes.HWND),
        (user32, "SetWindowTextW", wintypes.BOOL, wintypes.HWND, wintypes.LPCWSTR),
        (user32, "GetWindowTextW", ctypes.c_int, wintypes.HWND, wintypes.LPWSTR, ctypes.c_int),
        (user32, "GetWindowThreadProcessId", wintypes.DWORD, wintypes.HWND, ctypes.POINTER(wintypes.DWORD)),
        (user32, "EnumWindows", wintypes.BOOL, ENUMERA, wintypes.LPARAM),
        (user32, "RegisterClassW", wintypes.ATOM, ctypes.POINTER(WNDCLASS)),
        (user32, "CreateWindowExW", wintypes.HWND, wintypes.DWORD, wintypes.LPCWSTR, wintypes.LPCWSTR, wintypes.DWORD,
         ctypes.c_int, ctypes.c_int, ctypes.c_int, ctypes.c_int, wintypes.HWND, wintypes.HANDLE, wintypes.HINSTANCE,
         ctypes.c_void_p),
        (user32, "PeekMessageW", wintypes.BOOL, ctypes.POINTER(wintypes.MSG), wintypes.HWND, wintypes.UINT,
         wintypes.UINT, wintypes.UINT),
        (user32, "TranslateMessage", wintypes.BOOL, ctypes.POINTER(wintypes.MSG)),
        (user32, "DispatchMessageW", LRESULT, ctypes.POINTER(wintypes.MSG)),
        (user32, "MsgWaitForMultipleObjects", wintypes.DWORD, wintypes.DWORD, ctypes.POINTER(wintypes.HANDLE),
         wintypes.BOOL, wintypes.DWORD, wintypes.DWORD),
        (kernel32, "OpenProcess", wintypes.HANDLE, wintypes.DWORD, wintypes.BOOL, wintypes.DWORD),
        (kernel32, "CloseHandle", wintypes.BOOL, wintypes.HANDLE),
        (kernel32, "GetModuleHandleW", wintypes.HMODULE, wintypes.LPCWSTR)):
    funcao = getattr(biblioteca, nome)
    funcao.restype, funcao.argtypes = volta, tipos

SINCRONIZA, INFINITO, TODA_ENTRADA, RETIRA = 0x100000, 0xFFFFFFFF, 0x4FF, 1
ESCONDE, MOSTRA = 0, 5
JANELA_COMUM, JANELA_FILHA, LETREIRO = 0x00CF0000, 0x40000000, 0x50000000


def processo_de(janela):
    processo = wintypes.DWORD()
    user32.GetWindowThreadProcessId(janela, ctypes.byref(processo))
    return processo.value


class Filho:
    def __init__(self, titulo, interna):
        self.processo = 0  # o de quem enviou a última mensagem
        self.fim = None  # espera-se por ele: o gerenciador terminou
        self.aula = ""
        este = kernel32.GetModuleHandleW(None)
        self.procedimento = PROCEDIMENTO(self.trata)  # guardado: o sistema o chama enquanto houver a janela
        self.classe = WNDCLASS(lpfnWndProc=self.procedimento, hInstance=este, hbrBackground=6,
                               lpszClassName="FilhoDoQuorel")
        user32.RegisterClassW(ctypes.byref(self.classe))

        def cria(classe, texto, estilo, acima):
            return user32.CreateWindowExW(0, classe, texto, estilo, 0, 0, LARGURA, ALTURA, acima, None, este, None)

        self.principal = cria("FilhoDoQuorel", titulo, JANELA_COMUM, None)
        if interna:  # antes de a principal aparecer: quem acha uma acha a outra
            cria("FilhoDoQuorel", interna, JANELA_FILHA, self.principal)
        self.letreiro = cria("STATIC", "", LETREIRO, self.principal)
        user32.ShowWindow(self.principal, MOSTRA)

    def gerenciador(self):
        """A janela principal com o título, no processo que enviou a última mensagem; antes, a primeira que houver."""
        achadas = []

        def compara(janela, _):
            titulo = ctypes.create_unicode_buffer(256)
            user32.GetWindowTextW(janela, titulo, 256)
            if titulo.value == GERENCIADOR and self.processo in (0, processo_de(janela)):
                achadas.append(janela)
            return not achadas

        user32.EnumWindows(ENUMERA(compara), 0)
        return achadas[0] if achadas else None

    def envia(self, codigo, texto):
        """Envia e espera. Enquanto espera, o sistema chama trata() para os envios que chegam."""
        bytes_ = texto.encode("cp1252", "replace") + b"\0"
        guarda = ctypes.create_string_buffer(bytes_, len(bytes_))
        dados = COPYDATASTRUCT(codigo, len(bytes_), ctypes.addressof(guarda))
        destino = self.gerenciador()
        if not destino or len(bytes_) > MAIOR:
            return 0
        return user32.SendMessageW(destino, WM_COPYDATA, self.principal, ctypes.addressof(dados))

    def recebe(self, remetente, endereco):
        """Corre dentro do envio do gerenciador: guarda o que veio e responde logo."""
        dados = COPYDATASTRUCT.from_address(endereco)
        if dados.cbData > MAIOR:
            return 0
        bytes_ = ctypes.string_at(dados.lpData, dados.cbData) if dados.lpData else b""
        texto = bytes_.split(b"\0")[0].decode("cp1252", "replace")
        self.processo = processo_de(remetente)
        if not self.fim:
            self.fim = kernel32.OpenProcess(SINCRONIZA, False, self.processo)
        codigo = dados.dwData & 0xFFFFFFFF
        if codigo == MSG_AULA:
            self.aula = texto
            user32.PostMessageW(self.principal, WM_APP, 0, 0)
        elif codigo == MSG_CONTROLE and texto == "ESCONDE":
            user32.ShowWindow(self.principal, ESCONDE)
        elif codigo == MSG_SAI:
            user32.PostQuitMessage(0)
        return 1

    def mostra_aula(self):
        user32.ShowWindow(self.principal, MOSTRA)
        user32.SetForegroundWindow(self.principal)  # o gerenciador permitiu
        user32.SetWindowTextW(self.letreiro, self.aula)
        self.envia(MSG_PROXIMA, "A")  # um programa de verdade esperaria o aluno

    def trata(self, janela, mensagem, w, l):
        if mensagem == WM_COPYDATA:
            return self.recebe(w, l)
        if mensagem == WM_APP:
            self.mostra_aula()
            return 0
        if mensagem == WM_GETMINMAXINFO:  # o gerenciador dá o tamanho 0: a janela fica com o menor que tem
            MINMAXINFO.from_address(l).menorLado = wintypes.POINT(LARGURA, ALTURA)
            return 0
        if mensagem == WM_CLOSE:  # o aluno fecha: sai do roteiro, e a janela espera escondida pela aula seguinte
            user32.ShowWindow(self.principal, ESCONDE)
            if not self.envia(MSG_SAI, ""):
                user32.PostQuitMessage(0)
            return 0
        return user32.DefWindowProcW(janela, mensagem, w, l)

    def corre(self):
        """Espera por mensagens e pelo fim do gerenciador: sem ele, uma janela escondida ninguém mais mostra."""
        m = wintypes.MSG()
        while True:
            fim = (wintypes.HANDLE * 1)(self.fim)
            quantos = 1 if self.fim else 0
            if user32.MsgWaitForMultipleObjects(quantos, fim, False, INFINITO, TODA_ENTRADA) == 0 and quantos:
                kernel32.CloseHandle(self.fim)
                self.fim = None
                if not user32.IsWindowVisible(self.principal):
                    return
            while user32.PeekMessageW(ctypes.byref(m), None, 0, 0, RETIRA):
                if m.message == WM_QUIT:
                    return
                user32.TranslateMessage(ctypes.byref(m))
                user32.DispatchMessageW(ctypes.byref(m))


def titulos(argumentos):
    if "--titulo" in argumentos[:-1]:
        pedido = argumentos[argumentos.index("--titulo") + 1]
        return next((par for par in TITULOS.values() if par[0] == pedido), (pedido, None))
    nome = os.path.splitext(os.path.basename(argumentos[0]))[0].lower()
    return TITULOS.get(nome, TITULOS["zeto"])


if __name__ == "__main__":
    Filho(*titulos(sys.argv)).corre()
