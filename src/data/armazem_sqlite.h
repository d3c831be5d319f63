#pragma once

#include "data/armazem.h"

namespace quorel {

/// Opens a register that exists, as one SQLite file with a rollback journal. Looks at its header and reads its tables,
/// so that a bad file fails here and once: empty, damaged, or in the old Jet format. Never creates or repairs one.
/// While it is open nothing else in the process may open the file: closing it would drop the store's locks.
/// @param caminho  with backslashes @throws ErroBD
std::unique_ptr<Armazem> openSqlite(const QString &caminho, Espera espera);

} // namespace quorel
