#pragma once

#include "platform/janela.h"
#include "platform/protocolo.h"

#include <QString>

namespace quorel {

/// Sends a text and waits until its receiver has handled it. One turn of events stands before the send, so other
/// messages and clicks may come in.
/// @return false with a handle of 0 (nothing happens then), with a text longer than 204799 bytes, or when the receiver
///         is gone, silent or answers 0
bool EnviaTexto(Janela janela, Janela remetente, qint32 codigo, const QString &texto);

/// Does what a message asks for. Every statement that fails is passed over, a condition that fails with both of its
/// branches. Unknown codes do nothing.
/// @param lParam  address of a CopyData
void RecebeMensagem(qintptr lParam);

} // namespace quorel
