#include "data/esquema.h"

#include "data/schema.h"
#include "data/sqlite_base.h"

#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace quorel {

Esquema schemaOf(sqlite3 *db)
{
    Esquema schema;
    Comando columns(db,
        u"SELECT t.name, c.name, c.type, c.pk FROM sqlite_schema t JOIN pragma_table_info(t.name) c "
        "WHERE t.type = 'table' AND t.name NOT LIKE 'sqlite%'"_s);
    while (columns.step()) {
        schema[columns.text(0).toUpper()][columns.text(1).toUpper()] = {
            .tipo = typeOfDeclaration(columns.text(2)), .chave = sqlite3_column_int(columns.get(), 3) != 0};
    }
    return schema;
}

Esquema wantedSchema()
{
    const BancoSqlite memory = openDatabase(u":memory:"_s, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    runScript(memory.get(), registerSchema());
    return schemaOf(memory.get());
}

} // namespace quorel
