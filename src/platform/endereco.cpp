#include "platform/endereco.h"

namespace quorel {

qintptr callWindowProc(const WindowProc &proc, Janela janela, quint32 message, quintptr wParam, qintptr lParam)
{
    return proc ? proc(janela, message, wParam, lParam) : 0;
}

} // namespace quorel
