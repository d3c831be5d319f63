// The dialect translator. Whatever the query, it gives one or refuses; and a text between double quotes reaches the
// store as that very text, so that nothing in it can become a part of the query.
#include "data/dialeto.h"
#include "data/errobd.h"

#include <QByteArrayView>

#include <sqlite3.h>

#include <cstdlib>
#include <memory>

using namespace quorel;
using namespace Qt::StringLiterals;

static sqlite3 *database()
{
    static const std::unique_ptr<sqlite3, int (*)(sqlite3 *)> db = [] {
        sqlite3 *raw = nullptr;
        if (sqlite3_open(":memory:", &raw) != SQLITE_OK)
            std::abort();
        return std::unique_ptr<sqlite3, int (*)(sqlite3 *)>(raw, sqlite3_close);
    }();
    return db.get();
}

/// The first cell of the query's result, as SQLite reads it.
static QString firstCell(const QString &sql)
{
    sqlite3_stmt *raw = nullptr;
    const QByteArray text = sql.toUtf8();
    if (sqlite3_prepare_v2(database(), text.constData(), static_cast<int>(text.size()), &raw, nullptr) != SQLITE_OK)
        std::abort();
    const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt *)> stmt(raw, sqlite3_finalize);
    if (sqlite3_step(raw) != SQLITE_ROW || sqlite3_column_count(raw) != 1)
        std::abort();
    const auto *cell = reinterpret_cast<const char *>(sqlite3_column_text(raw, 0));
    return QString::fromUtf8(cell, sqlite3_column_bytes(raw, 0));
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const Dialeto dialect{u"1"_s, u"0"_s, u" COLLATE QUOREL"_s,
        [](QStringView column) { return column.endsWith("Nome"_L1, Qt::CaseInsensitive); }};
    const QString text = QString::fromUtf8(QByteArrayView(data, static_cast<qsizetype>(size)));
    try {
        translated(text, dialect);
    } catch (const ErroBD &) { } // refused
    if (text.contains(QChar())) // ends a query of the store
        return 0;
    const QString literal = u'"' + QString(text).replace(u'"', "\"\""_L1) + u'"';
    if (firstCell(translated(u"SELECT "_s + literal, dialect)) != text)
        std::abort();
    return 0;
}
