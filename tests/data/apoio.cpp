#include "apoio.h"

#include "data/bd.h"
#include "data/schema.h"
#include "support/suporte.h"

#include <QDir>
#include <QFile>
#include <QUuid>

#include <sqlite3.h>

#include <memory>

namespace quorel::teste {

static void check(sqlite3 *db, int code, const QByteArray &sql)
{
    if (code != SQLITE_OK && code != SQLITE_ROW && code != SQLITE_DONE)
        qFatal("plain SQL failed: %s: %s", sqlite3_errmsg(db), sql.constData());
}

QStringList plainSql(const QString &native, const QString &sql)
{
    sqlite3 *raw = nullptr;
    check(raw, sqlite3_open(native.toUtf8().constData(), &raw), "open");
    const std::unique_ptr<sqlite3, int (*)(sqlite3 *)> db(raw, sqlite3_close);
    sqlite3_busy_timeout(raw, 10000);
    check(raw, sqlite3_exec(raw, "PRAGMA synchronous=OFF", nullptr, nullptr, nullptr), "synchronous"); // for speed
    QStringList rows;
    const QByteArray text = sql.toUtf8();
    const char *rest = text.constData();
    while (*rest) {
        sqlite3_stmt *stmt = nullptr;
        check(raw, sqlite3_prepare_v2(raw, rest, -1, &stmt, &rest), text);
        const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt *)> guard(stmt, sqlite3_finalize);
        int code = SQLITE_DONE;
        while (stmt && (code = sqlite3_step(stmt)) == SQLITE_ROW) {
            QStringList cells;
            for (int i = 0; i < sqlite3_column_count(stmt); ++i) {
                const auto *bytes = static_cast<const char *>(sqlite3_column_blob(stmt, i));
                const bool null = sqlite3_column_type(stmt, i) == SQLITE_NULL;
                cells << (null ? QStringLiteral("NULL") : QString::fromUtf8(bytes, sqlite3_column_bytes(stmt, i)));
            }
            rows << cells.join(u'|');
        }
        check(raw, code, text);
    }
    return rows;
}

void makeRegister(const QString &native)
{
    QFile::remove(native);
    plainSql(native, QString::fromUtf8(registerSchema()));
}

Registro::Registro()
    : mNative(
        QDir::tempPath() + u'/' + QUuid::createUuid().toString(QUuid::WithoutBraces) + QStringLiteral("/Cadastros.mdb"))
{
    escreve(mNative, {});
    makeRegister(mNative);
}

QString Registro::native() const
{
    return mNative;
}

QString Registro::path() const
{
    return barras(mNative);
}

void Registro::open() const
{
    reiniciaData();
    gBD->Source(path());
}

} // namespace quorel::teste
