#pragma once

namespace quorel {

/// Whether the teacher's password has been given; cleared on leaving any protected mode.
extern bool gSenhaOK;

/// The folder's state as at the start of the program.
void reiniciaRegister();

} // namespace quorel
