/* Um programa filho completo para o Windows, só com a API do sistema: toma o lugar de qualquer um dos cinco.
 *   x86_64-w64-mingw32-gcc -municode -mwindows filho_windows.c -o Zeto.exe
 * O nome com que foi iniciado decide o título. Mostra cada aula na janela e responde que está certa; um programa de
 * verdade esperaria o aluno. filho_windows.py faz o mesmo, função por função, em Python. */
#include <stdlib.h>
#include <string.h>
#include <windows.h>

enum { MSG_AULA = 2060, MSG_PROXIMA = 2069, MSG_SAI = 2071, MSG_CONTROLE = 2122 };
enum { MAIOR = 204800, TRATA_AULA = WM_APP, LARGURA = 400, ALTURA = 300, CP1252 = 1252 };

static const struct Programa {
    const wchar_t *arquivo, *titulo, *interna;
} kProgramas[] = {{L"Zeto", L"Zeto - Quorel", L"ZETO"}, {L"Desenho", L"Editor de Desenhos - Quorel", NULL},
    {L"Vrel", L"Hist\u00f3rias - Quorel", NULL}, {L"Livros", L"Livros - Quorel", L"Livros"},
    {L"Calc", L"Calculadora - Quorel", NULL}};
static const wchar_t kGerenciador[] = L"Gerenciador de Roteiros do Quorel";

static HWND gPrincipal;
static char gAula[MAIOR]; /* o texto da última aula, em bytes */
static DWORD gProcesso;   /* o de quem enviou a última mensagem */
static HANDLE gFim;       /* espera-se por ele: o gerenciador terminou */

/* A janela principal com o título do gerenciador, no processo que enviou a última mensagem; antes de qualquer uma, a
 * primeira que houver. Procurada de novo a cada envio. */
static BOOL CALLBACK compara(HWND janela, LPARAM achada)
{
    wchar_t titulo[256];
    DWORD processo = 0;
    GetWindowThreadProcessId(janela, &processo);
    GetWindowTextW(janela, titulo, 256);
    if ((gProcesso != 0 && processo != gProcesso) || wcscmp(titulo, kGerenciador) != 0)
        return TRUE; /* segue para a próxima */
    *(HWND *)achada = janela;
    return FALSE;
}

static HWND gerenciador(void)
{
    HWND achada = NULL;
    EnumWindows(compara, (LPARAM)&achada);
    return achada;
}

/* Envia e espera. Enquanto espera, o sistema chama trata() para os envios que chegam. */
static LRESULT envia(DWORD codigo, const char *texto)
{
    COPYDATASTRUCT dados = {codigo, (DWORD)strlen(texto) + 1, (void *)texto};
    HWND destino = gerenciador();
    return destino ? SendMessageW(destino, WM_COPYDATA, (WPARAM)gPrincipal, (LPARAM)&dados) : 0;
}

/* Corre dentro do envio do gerenciador: guarda o que veio, pois o endereço só vale até a volta, e responde logo. */
static LRESULT recebe(HWND remetente, const COPYDATASTRUCT *dados)
{
    static char texto[MAIOR];
    if (dados->cbData > MAIOR)
        return 0;
    memset(texto, 0, sizeof texto);
    if (dados->lpData && dados->cbData > 0)
        memcpy(texto, dados->lpData, dados->cbData);
    texto[MAIOR - 1] = 0;
    GetWindowThreadProcessId(remetente, &gProcesso);
    if (!gFim)
        gFim = OpenProcess(SYNCHRONIZE, FALSE, gProcesso);
    if (dados->dwData == MSG_AULA) {
        strcpy(gAula, texto);
        PostMessageW(gPrincipal, TRATA_AULA, 0, 0);
    } else if (dados->dwData == MSG_CONTROLE && strcmp(texto, "ESCONDE") == 0) {
        ShowWindow(gPrincipal, SW_HIDE);
    } else if (dados->dwData == MSG_SAI) {
        PostQuitMessage(0);
    }
    return 1;
}

static void mostraAula(void)
{
    ShowWindow(gPrincipal, SW_SHOW);
    SetForegroundWindow(gPrincipal); /* o gerenciador permitiu */
    InvalidateRect(gPrincipal, NULL, TRUE);
    envia(MSG_PROXIMA, "A");
}

static void pinta(HWND janela)
{
    static wchar_t texto[MAIOR];
    PAINTSTRUCT pintura;
    RECT area;
    const int n = MultiByteToWideChar(CP1252, 0, gAula, -1, texto, MAIOR);
    HDC tela = BeginPaint(janela, &pintura);
    GetClientRect(janela, &area);
    DrawTextW(tela, texto, n - 1, &area, DT_WORDBREAK);
    EndPaint(janela, &pintura);
}

static LRESULT CALLBACK trata(HWND janela, UINT mensagem, WPARAM w, LPARAM l)
{
    switch (mensagem) {
    case WM_COPYDATA:
        return recebe((HWND)w, (const COPYDATASTRUCT *)l);
    case TRATA_AULA:
        mostraAula();
        return 0;
    case WM_GETMINMAXINFO: /* o gerenciador dá o tamanho 0: a janela fica com o menor que tem */
        ((MINMAXINFO *)l)->ptMinTrackSize.x = LARGURA;
        ((MINMAXINFO *)l)->ptMinTrackSize.y = ALTURA;
        return 0;
    case WM_PAINT:
        pinta(janela);
        return 0;
    case WM_CLOSE: /* o aluno fecha: sai do roteiro, e a janela espera escondida pela aula seguinte */
        ShowWindow(gPrincipal, SW_HIDE);
        if (!envia(MSG_SAI, ""))
            PostQuitMessage(0);
        return 0;
    default:
        return DefWindowProcW(janela, mensagem, w, l);
    }
}

static const struct Programa *programa(void)
{
    wchar_t caminho[MAX_PATH], *nome, *ponto;
    size_t i;
    GetModuleFileNameW(NULL, caminho, MAX_PATH);
    nome = wcsrchr(caminho, L'\\') + 1;
    if ((ponto = wcsrchr(nome, L'.')))
        *ponto = 0;
    for (i = 0; i < sizeof kProgramas / sizeof *kProgramas; ++i)
        if (lstrcmpiW(nome, kProgramas[i].arquivo) == 0)
            return &kProgramas[i];
    return &kProgramas[0];
}

/* Espera por mensagens e pelo fim do gerenciador: sem ele, uma janela escondida ninguém mais mostra. */
static int laco(void)
{
    MSG m;
    for (;;) {
        const DWORD quantos = gFim ? 1 : 0;
        if (MsgWaitForMultipleObjects(quantos, &gFim, FALSE, INFINITE, QS_ALLINPUT) == WAIT_OBJECT_0 && quantos) {
            CloseHandle(gFim);
            gFim = NULL;
            if (!IsWindowVisible(gPrincipal))
                return 0;
        }
        while (PeekMessageW(&m, NULL, 0, 0, PM_REMOVE)) {
            if (m.message == WM_QUIT)
                return (int)m.wParam;
            TranslateMessage(&m);
            DispatchMessageW(&m);
        }
    }
}

int WINAPI wWinMain(HINSTANCE este, HINSTANCE nenhum, LPWSTR linha, int modo)
{
    const struct Programa *qual = programa();
    WNDCLASSW classe = {0};
    (void)nenhum;
    (void)linha;
    classe.lpfnWndProc = trata;
    classe.hInstance = este;
    classe.hCursor = LoadCursorW(NULL, (LPCWSTR)IDC_ARROW);
    classe.hbrBackground = (HBRUSH)(COLOR_WINDOW + 1);
    classe.lpszClassName = L"FilhoDoQuorel";
    RegisterClassW(&classe);
    gPrincipal = CreateWindowW(L"FilhoDoQuorel", qual->titulo, WS_OVERLAPPEDWINDOW, 0, 0, LARGURA, ALTURA, NULL, NULL,
        este, NULL);
    if (qual->interna) /* antes de a principal aparecer: quem acha uma acha a outra */
        CreateWindowW(L"FilhoDoQuorel", qual->interna, WS_CHILD, 0, 0, LARGURA, ALTURA, gPrincipal, NULL, este, NULL);
    ShowWindow(gPrincipal, modo);
    return laco();
}
