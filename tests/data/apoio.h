#pragma once

#include "support/failure.h"

#include <QString>
#include <QStringList>

namespace quorel::teste {

/// Makes an empty register at a native path, plain SQLite with the schema's tables.
void makeRegister(const QString &native);

/// Runs plain SQL on a file through a connection of its own. @return the rows, columns joined by "|"; NULL is "NULL".
/// Fails the test on an error
QStringList plainSql(const QString &native, const QString &sql);

/// gBD on a fresh register in a directory of the test's own.
class Registro final
{
public:
    Registro(); ///< the tables are empty
    QString native() const; ///< the register's file
    QString path() const; ///< with backslashes
    QStringList sql(const QString &text) const { return plainSql(native(), text); }
    void open() const; ///< gBD made anew, its Source on the file

private:
    QString mNative;
};

} // namespace quorel::teste
