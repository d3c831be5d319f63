#include "data/identidade.h"

#include "data/schema.h"
#include "data/sqlite_base.h"
#include "platform/caminho.h"

#include <QUuid>
#include <QVariant>

#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace quorel {

static const QString kIdentidade = u"identidade"_s;
static const QString kAnteriores = u"anteriores"_s; ///< separated by blanks
static const QString kCopiaDe = u"copia_de"_s; ///< what the original of a copy answers to; likewise
static const QString kMudou = u"mudou"_s;
static const QString kVersao = u"versao"_s;
static const QString kProgramaMinimo = u"programa_minimo"_s; ///< version of the tables that a program must know

bool IdentidadeCadastro::answersTo(const QString &cadastro) const
{
    return !cadastro.isEmpty() && (cadastro == identidade || anteriores.contains(cadastro));
}

QString movedText(const QString &destino)
{
    return u"Este cadastro mudou para %1. Use o cadastro de lá."_s.arg(nativePath(destino));
}

static bool hasTable(sqlite3 *db, const QString &table)
{
    Comando found(db, u"SELECT 1 FROM sqlite_schema WHERE type = 'table' AND name = ?1"_s);
    found.bind(1, table);
    return found.step();
}

static QString valueOf(sqlite3 *db, const QString &key)
{
    Comando value(db, u"SELECT valor FROM QR_Registro WHERE chave = ?1"_s);
    value.bind(1, key);
    return value.step() ? value.text(0) : QString();
}

static void setValue(sqlite3 *db, const QString &key, const QString &value)
{
    Comando set(db, u"INSERT OR REPLACE INTO QR_Registro (chave, valor) VALUES (?1, ?2)"_s);
    set.bind(1, key);
    set.bind(2, value);
    set.run();
}

IdentidadeCadastro readIdentity(sqlite3 *db)
{
    IdentidadeCadastro identity;
    if (!hasTable(db, u"QR_Registro"_s))
        return identity;
    identity.temEntregas = hasTable(db, u"LG_Entregas"_s);
    Comando rows(db, u"SELECT chave, valor FROM QR_Registro"_s);
    while (rows.step()) {
        const QString key = rows.text(0);
        if (key == kIdentidade)
            identity.identidade = rows.text(1);
        else if (key == kAnteriores)
            identity.anteriores = rows.text(1).split(u' ', Qt::SkipEmptyParts);
        else if (key == kMudou)
            identity.mudou = rows.text(1);
        else if (key == kVersao)
            identity.versao = rows.text(1).toInt();
    }
    return identity;
}

static QString newIdentity()
{
    return QUuid::createUuid().toString(QUuid::WithoutBraces);
}

/// Ids of the rows that were logged before there were any.
static void nameOlderRows(sqlite3 *db, const QString &identity)
{
    const QUuid space(identity);
    Comando rows(
        db, u"SELECT LG_Id FROM LG_LogAulas WHERE LG_Id NOT IN (SELECT LG_Id FROM LG_Entregas WHERE LG_Id NOT NULL)"_s);
    Comando name(db, u"INSERT OR IGNORE INTO LG_Entregas (LG_Uuid, LG_Id, origem) VALUES (?1, ?2, 'atualiza')"_s);
    while (rows.step()) {
        const qint64 id = sqlite3_column_int64(rows.get(), 0);
        name.bind(1, QUuid::createUuidV5(space, QString::number(id)).toString(QUuid::WithoutBraces));
        name.bind(2, id);
        name.run();
        name.again();
    }
}

/// Runs a piece of work as one transaction. @param begin  "BEGIN EXCLUSIVE" or another one
template <typename Work>
static auto asOne(sqlite3 *db, const QString &begin, Work &&work)
{
    execute(db, begin);
    try {
        const auto result = work();
        execute(db, u"COMMIT"_s);
        return result;
    } catch (const ErroExecucao &) {
        if (sqlite3_get_autocommit(db) == 0)
            ignora([&] { execute(db, u"ROLLBACK"_s); });
        throw;
    }
}

static const QString kWhole = u"BEGIN EXCLUSIVE"_s;

bool layOwnTables(sqlite3 *db)
{
    const auto lays = [&] {
        const bool had = readIdentity(db).temEntregas && !valueOf(db, kIdentidade).isEmpty();
        runScript(db, ownSchema());
        if (!had) {
            const QString identity = valueOf(db, kIdentidade);
            if (identity.isEmpty())
                setValue(db, kIdentidade, newIdentity());
            nameOlderRows(db, valueOf(db, kIdentidade));
        }
        const bool old = valueOf(db, kVersao).toInt() < kVersaoCadastro;
        if (old) {
            setValue(db, kVersao, QString::number(kVersaoCadastro));
            setValue(db, kProgramaMinimo, QString::number(kVersaoCadastro));
        }
        return !had || old;
    };
    return asOne(db, kWhole, lays);
}

void renewIdentity(sqlite3 *db, bool lembra)
{
    asOne(db, kWhole, [&] {
        const QString answers = (valueOf(db, kIdentidade) + u' ' + valueOf(db, kAnteriores)).trimmed();
        const QString original = valueOf(db, kCopiaDe);
        setValue(db, kAnteriores, lembra ? (answers + u' ' + original).trimmed() : QString());
        setValue(db, kCopiaDe, lembra ? QString() : (answers + u' ' + original).trimmed());
        setValue(db, kIdentidade, newIdentity());
        setValue(db, kMudou, QString());
        return true;
    });
}

void markMoved(sqlite3 *db, const QString &destino)
{
    setValue(db, kMudou, destino);
}

} // namespace quorel
