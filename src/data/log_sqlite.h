#pragma once

#include "data/linha_log.h"

#include <functional>
#include <vector>

struct sqlite3;

namespace quorel {

/// Armazem::log() on an SQLite register that has no transaction open. @throws ErroBD; nothing is then open any more
std::vector<SorteLinha> logToSqlite(
    sqlite3 *db, const std::vector<LinhaLog> &linhas, const std::function<void(bool comIds)> &antesDoCommit);

} // namespace quorel
