#pragma once

#include "platform/janela.h"

namespace quorel {

/// Handle of fBlocos for other processes and for everything that wants a handle of it: the shell's address, made at the
/// first call, found by its title from InstalaGancho() to RemoveGancho(). Needs a QApplication.
Janela janelaBlocos();

/// Hooks the window: from now on its messages reach RecebeMensagem(), and its title is known. Passed over with a handle
/// other than janelaBlocos(), which is the one that takes messages, and while a hook is in place.
void InstalaGancho(Janela janela);

/// Puts the procedure before the hook back; the title is no longer found. Passed over without a hook.
void RemoveGancho();

/// The hook: hands kCopyData to RecebeMensagem(), then forwards every message to gProcAnterior.
/// @return the result of gProcAnterior. A failure that nobody caught is shown and ends the program.
qintptr ProcJanela(Janela janela, quint32 mensagem, quintptr wParam, qintptr lParam);

} // namespace quorel
