#pragma once

namespace quorel {

class Janelas;

/// The end of the program, in its fixed order: fBlocos is unloaded by a message, the teacher's list is asked for, the
/// child programs are told to exit and their last answers waited for, the hook is removed, the windows go, the process
/// ends.
[[noreturn]] void encerraSessao(Janelas &janelas);

} // namespace quorel
