#pragma once

#include "platform/endereco.h"

#include <memory>

namespace quorel {

/// The shell's address, from the first janelaBlocos() on.
inline std::unique_ptr<Endereco> gEnderecoBlocos;

} // namespace quorel
