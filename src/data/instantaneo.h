#pragma once

#include "data/sqlite_base.h"

#include <QStringList>

namespace quorel {

/// Opens a register for the command-line tool, which waits 10 s for others. @param caminho  with backslashes
/// @throws ErroBD
BancoSqlite openForCare(const QString &caminho);

/// A register as it stands at one moment, in a temporary database of this process. It is read in small steps, and
/// between them others may write; when they do so again and again, the last reading is done in one go, as fast as the
/// register can be read. @throws ErroBD
BancoSqlite oneMoment(sqlite3 *cadastro);

/// Copies a whole database over another one, in one go. @throws ErroBD
void copyWhole(sqlite3 *from, sqlite3 *to);

/// The store's own check; what it finds is added, one a line. @throws ErroBD
void findDamage(sqlite3 *db, QStringList &findings);

} // namespace quorel
