#pragma once

#include <QString>

namespace quorel {

/// Takes the word "--mensagens" out of the command line, so that it is no part of the value of a switch.
/// @return whether it stood there as a word of its own
bool takeMensagens(QString &linhaDeComando);

/// From now on every message between the shell and other programs is a line on the standard output, at once, with the
/// time in front; for who writes lesson programs. Nothing is kept.
void mensagensNoTerminal();

} // namespace quorel
