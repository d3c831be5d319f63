#pragma once

#include "data/campos.h"

#include <QMap>
#include <QString>

struct sqlite3;

namespace quorel {

/// What a column of a table has to be.
struct ColunaEsquema
{
    TipoCampo tipo = TipoCampo::Variante;
    bool chave = false; ///< the key of its table, or a part of it
    bool operator==(const ColunaEsquema &) const = default;
};

/// Tables and their columns by name, in upper case.
using Esquema = QMap<QString, QMap<QString, ColunaEsquema>>;

Esquema schemaOf(sqlite3 *db); ///< that of an open database @throws ErroBD
Esquema wantedSchema(); ///< that of a register @throws ErroBD

} // namespace quorel
