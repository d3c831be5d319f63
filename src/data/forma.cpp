#include "data/forma.h"

#include "data/datas.h"
#include "data/esquema.h"
#include "data/sqlite_base.h"

#include <QVariant>

#include <sqlite3.h>

#include <algorithm>
#include <limits>
#include <vector>

using namespace Qt::StringLiterals;

namespace quorel {

static constexpr qint64 kLastCode = std::numeric_limits<qint32>::max();
static constexpr qint64 kFewCodes = 100000; ///< more than a school gives in many years

static bool isOf32Bits(qint64 number)
{
    return number >= std::numeric_limits<qint32>::min() && number <= kLastCode;
}

/// Whether a new row gets its number by itself, which is so for one spelling of a key only: any other has an index.
static bool numbersRows(sqlite3 *db, const QString &table)
{
    Comando indexes(db, u"SELECT count(*) FROM pragma_index_list(?1) WHERE origin = 'pk'"_s);
    indexes.bind(1, table);
    return indexes.step() && sqlite3_column_int(indexes.get(), 0) == 0;
}

static bool keepsNumbers(sqlite3 *db, const QByteArray &table, const QByteArray &column)
{
    int keeps = 0;
    const int code =
        sqlite3_table_column_metadata(db, "main", table, column, nullptr, nullptr, nullptr, nullptr, &keeps);
    return code == SQLITE_OK && keeps != 0;
}

/// The highest number that a table gave.
static qint64 lastNumber(sqlite3 *db, const QString &table, const QString &column, bool keeps)
{
    const QString given = keeps ? u"(SELECT max(seq) FROM sqlite_sequence WHERE name = ?1 COLLATE NOCASE)"_s : u"0"_s;
    Comando last(db,
        u"SELECT max(coalesce(max(%1), 0), coalesce(%2, 0)) FROM %3"_s.arg(
            quotedName(column), given, quotedName(table)));
    if (keeps)
        last.bind(1, table);
    return last.step() ? sqlite3_column_int64(last.get(), 0) : 0;
}

static void findBadKey(sqlite3 *db, const QString &table, const QString &column, QStringList &findings)
{
    const bool keeps = keepsNumbers(db, table.toUtf8(), column.toUtf8());
    if (!numbersRows(db, table))
        findings << u"a chave %1 da tabela %2 não numera as linhas novas, que ficam sem código"_s.arg(column, table);
    else if (!keeps)
        findings << u"a chave %1 da tabela %2 dá de novo o código de uma linha excluída"_s.arg(column, table);
    const qint64 left = std::max<qint64>(0, kLastCode - lastNumber(db, table, column, keeps));
    if (left < kFewCodes)
        findings << u"códigos que restam para linhas novas da tabela %1: %2"_s.arg(table).arg(left);
}

void findBadKeys(sqlite3 *db, QStringList &findings)
{
    const Esquema wanted = wantedSchema();
    for (auto table = wanted.begin(); table != wanted.end(); ++table) {
        for (auto column = table->begin(); column != table->end(); ++column) {
            if (column->chave)
                findBadKey(db, table.key(), column.key(), findings);
        }
    }
}

/// Whether a cell that is not Null is read as its column's type.
static bool isReadAs(TipoCampo tipo, const Comando &row, int column)
{
    const int there = sqlite3_column_type(row.get(), column);
    if (tipo == TipoCampo::Longo)
        return there == SQLITE_INTEGER && isOf32Bits(sqlite3_column_int64(row.get(), column));
    if (tipo == TipoCampo::Data)
        return there == SQLITE_TEXT && readStoredDate(row.text(column));
    return there == SQLITE_TEXT;
}

static QString kindOf(TipoCampo tipo)
{
    if (tipo == TipoCampo::Longo)
        return u"números"_s;
    return tipo == TipoCampo::Data ? u"datas"_s : u"textos"_s;
}

/// A column of the table that is looked over, and what was found in it.
struct Contagem
{
    QString nome;
    ColunaEsquema coluna;
    qint64 semCodigo = 0;
    qint64 outraForma = 0;
};

static void countBadCells(Comando &rows, std::vector<Contagem> &counts)
{
    while (rows.step()) {
        for (int i = 0; Contagem & each : counts) {
            if (sqlite3_column_type(rows.get(), i) == SQLITE_NULL)
                each.semCodigo += each.coluna.chave ? 1 : 0;
            else if (!isReadAs(each.coluna.tipo, rows, i))
                ++each.outraForma;
            ++i;
        }
    }
}

void findBadCells(sqlite3 *db, QStringList &findings)
{
    const Esquema wanted = wantedSchema();
    for (auto table = wanted.begin(); table != wanted.end(); ++table) {
        QStringList names;
        std::vector<Contagem> counts;
        for (auto column = table->begin(); column != table->end(); ++column) {
            names << quotedName(column.key());
            counts.push_back({.nome = column.key(), .coluna = *column});
        }
        Comando rows(db, u"SELECT %1 FROM %2"_s.arg(names.join(u", "_s), quotedName(table.key())));
        countBadCells(rows, counts);
        for (const Contagem &each : counts) {
            if (each.semCodigo > 0)
                findings << u"linhas sem código na tabela %1: %2"_s.arg(table.key()).arg(each.semCodigo);
            if (each.outraForma > 0)
                findings << u"%1 que o programa não lê na coluna %2 da tabela %3: %4"_s
                                .arg(kindOf(each.coluna.tipo), each.nome, table.key())
                                .arg(each.outraForma);
        }
    }
}

} // namespace quorel
