#pragma once

#include <QStringList>

struct sqlite3;

namespace quorel {

/// What a register loses rows by, although the store finds it sound. Findings are added, one a line. All tables and
/// columns of a register must be there. @throws ErroBD

/// Keys that don't number new rows, or would give the number of a deleted row again, or have few numbers left.
void findBadKeys(sqlite3 *db, QStringList &findings);

/// Cells that record sets don't read as their column's type. Reads every row once.
void findBadCells(sqlite3 *db, QStringList &findings);

} // namespace quorel
