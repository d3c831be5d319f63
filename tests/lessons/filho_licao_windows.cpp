#include "filho_licao.h"

#include "platform/protocolo.h"

#include <cstdlib>

#include <qt_windows.h>

using namespace quorel;

// The system carries whole messages only. What comes nearest to half of one is one that is larger than a shell takes.
void teste::dieHalfSent(Janela shell, Janela sender, const QByteArray &answer)
{
    constexpr int kTooLarge = 300000; // bytes
    for (QByteArray text : {answer, QByteArray(kTooLarge, 'x')}) {
        COPYDATASTRUCT data{MSG_PROXIMA, DWORD(text.size()), text.data()};
        SendMessageW(HWND(shell), WM_COPYDATA, WPARAM(sender), LPARAM(&data));
    }
    std::_Exit(4);
}
