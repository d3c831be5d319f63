#pragma once

#include "platform/janela.h"

#include <QByteArray>

namespace quorel::teste {

/// MSG_PROXIMA with the answer and, without waiting for what comes of it, half of another; and the end of the program.
[[noreturn]] void dieHalfSent(Janela shell, Janela sender, const QByteArray &answer);

} // namespace quorel::teste
