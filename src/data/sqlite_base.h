#pragma once

#include "data/errobd.h"

#include <QByteArray>
#include <QString>

#include <memory>

struct sqlite3;
struct sqlite3_stmt;

namespace quorel {

struct FechaSqlite
{
    void operator()(sqlite3 *db) const noexcept;
};
struct FechaComando
{
    void operator()(sqlite3_stmt *stmt) const noexcept;
};

/// An open database; closing rolls back what is open.
using BancoSqlite = std::unique_ptr<sqlite3, FechaSqlite>;

/// Opens a file that exists. Names of SQL that stand for nothing are failures on it, never texts.
/// @param native  path as the system has it @throws ErroBD
BancoSqlite openDatabase(const QString &native, int flags);

/// Looks at the header of a file just opened. @throws ErroBD for an empty one, one in the old Jet format, one that
/// can't be read; other damage shows at the first query
void checkRegisterFile(sqlite3 *db);

/// The failure that the last call on `db` ended with, in Portuguese. @param code  its extended result code
ErroBD sqliteError(sqlite3 *db, int code);

/// A prepared statement, finished at the end of its scope.
class Comando final
{
    Q_DISABLE_COPY_MOVE(Comando)
public:
    /// @throws ErroBD when it can't be prepared, or holds more than one statement
    Comando(sqlite3 *db, const QString &sql);
    ~Comando() = default;

    sqlite3_stmt *get() const { return mStmt.get(); }
    void bind(int number, const class QVariant &valor); ///< parameter from 1; dates in the stored form
    bool step(); ///< whether there is a row @throws ErroBD
    QString text(int column) const; ///< of the present row, columns from 0; empty for Null
    void run(); ///< to its end @throws ErroBD
    void again(); ///< may be stepped once more, with what is bound

private:
    sqlite3 *mDb;
    std::unique_ptr<sqlite3_stmt, FechaComando> mStmt;
};

/// Runs one statement without parameters. @throws ErroBD
void execute(sqlite3 *db, const QString &sql);

/// Runs a text of several statements. @throws ErroBD
void runScript(sqlite3 *db, const QByteArray &script);

/// A name as an identifier of SQL.
QString quotedName(const QString &nome);

} // namespace quorel
