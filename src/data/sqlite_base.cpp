#include "data/sqlite_base.h"

#include "data/datas.h"

#include <QVariant>

#include <sqlite3.h>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace quorel {

void FechaSqlite::operator()(sqlite3 *db) const noexcept
{
    sqlite3_close_v2(db);
}

void FechaComando::operator()(sqlite3_stmt *stmt) const noexcept
{
    sqlite3_finalize(stmt);
}

namespace {

struct Falha
{
    int code;
    EspecieFalha especie;
    QString text;
};

} // namespace

static Falha failureOf(int code)
{
    using enum EspecieFalha;
    static const std::array kFalhas{
        Falha{SQLITE_BUSY, Ocupado, u"O banco de dados está em uso por outro programa. Tente novamente."_s},
        Falha{SQLITE_LOCKED, Ocupado, u"A tabela está em uso. Tente novamente."_s},
        Falha{SQLITE_READONLY, SoLeitura, u"O banco de dados só pode ser lido; nada foi gravado."_s},
        Falha{SQLITE_FULL, Cheio, u"Não há espaço em disco para gravar no banco de dados."_s},
        Falha{SQLITE_IOERR, Sumiu, u"Falha de leitura ou gravação no arquivo do banco de dados."_s},
        Falha{SQLITE_CORRUPT, Danificado, u"O arquivo do banco de dados está danificado."_s},
        Falha{SQLITE_NOTADB, Danificado, u"O arquivo não é um banco de dados, ou está danificado."_s},
        Falha{SQLITE_FORMAT, Danificado, u"O formato do arquivo do banco de dados não é conhecido."_s},
        Falha{SQLITE_CANTOPEN, Sumiu, u"O arquivo do banco de dados não pôde ser aberto."_s},
        Falha{SQLITE_PERM, SoLeitura, u"Não há permissão para usar o arquivo do banco de dados."_s},
        Falha{SQLITE_AUTH, SoLeitura, u"A operação não é permitida neste banco de dados."_s},
        Falha{SQLITE_NOMEM, Outra, u"Não há memória suficiente para a operação."_s},
        Falha{
            SQLITE_CONSTRAINT, Recusado, u"O valor repete uma chave ou fere uma regra da tabela; nada foi gravado."_s},
        Falha{SQLITE_MISMATCH, Recusado, u"O valor não é do tipo da coluna."_s},
        Falha{SQLITE_TOOBIG, Recusado, u"O valor é grande demais para o banco de dados."_s},
        Falha{SQLITE_PROTOCOL, Ocupado, u"O arquivo do banco de dados não pôde ser reservado."_s},
        Falha{SQLITE_SCHEMA, Ocupado, u"As tabelas do banco de dados mudaram. Tente novamente."_s},
        Falha{SQLITE_NOLFS, Cheio, u"O sistema de arquivos não aceita um arquivo tão grande."_s},
        Falha{SQLITE_INTERRUPT, Outra, u"A operação foi interrompida."_s},
        Falha{SQLITE_ABORT, Outra, u"A operação foi desfeita."_s},
    };
    const auto found = std::ranges::find(kFalhas, code, &Falha::code);
    return found != kFalhas.end() ? *found : Falha{code, Outra, u"Falha %1 do banco de dados."_s.arg(code)};
}

/// The name behind a fixed beginning of the store's own message.
static bool nameBehind(const QString &message, QLatin1StringView beginning, QString &name)
{
    if (!message.startsWith(beginning))
        return false;
    name = message.sliced(beginning.size());
    if (const qsizetype advice = name.indexOf(" - should this be"_L1); advice >= 0) // of newer stores
        name = name.first(advice).remove(u'"');
    return true;
}

ErroBD sqliteError(sqlite3 *db, int code)
{
    if (code == SQLITE_READONLY_ROLLBACK || code == SQLITE_READONLY_RECOVERY || code == SQLITE_READONLY_CANTINIT)
        return ErroBD(kErroArmazem, EspecieFalha::SoLeitura, // met by reading: a write of another program broke off
            u"O banco de dados guarda uma gravação interrompida e aqui só pode ser lido. Abra-o uma vez onde possa ser gravado."_s);
    const int primary = code & 0xff;
    if (primary != SQLITE_ERROR || !db) {
        const Falha failure = failureOf(primary);
        return ErroBD(kErroArmazem, failure.especie, failure.text);
    }
    const QString message = QString::fromUtf8(sqlite3_errmsg(db));
    QString name;
    if (nameBehind(message, "no such table: "_L1, name))
        return ErroBD(kErroTabela, EspecieFalha::Recusado, u"Não existe a tabela ou consulta \"%1\"."_s.arg(name));
    if (nameBehind(message, "no such column: "_L1, name))
        return ErroBD(kErroSql, EspecieFalha::Recusado, u"Não existe a coluna \"%1\"."_s.arg(name));
    return ErroBD(kErroSql, EspecieFalha::Recusado, ErroBD(kErroSql).descricao());
}

BancoSqlite openDatabase(const QString &native, int flags)
{
    sqlite3 *raw = nullptr;
    // One thread has each connection; a lock around every cell read would cost a tenth of a query.
    flags |= SQLITE_OPEN_EXRESCODE | SQLITE_OPEN_PRIVATECACHE | SQLITE_OPEN_NOMUTEX;
    const int code = sqlite3_open_v2(native.toUtf8().constData(), &raw, flags, nullptr);
    BancoSqlite db(raw);
    if (code != SQLITE_OK)
        throw sqliteError(raw, code);
    for (const int option : {SQLITE_DBCONFIG_DQS_DML, SQLITE_DBCONFIG_DQS_DDL})
        sqlite3_db_config(raw, option, 0, nullptr);
    return db;
}

/// A file of the provider's own format tells its name from byte 4 on.
static constexpr int kJetNamePlace = 4;
static constexpr int kHeaderSize = 100;

// Looks through the store's own descriptor: closing a second one would drop its locks.
void checkRegisterFile(sqlite3 *db)
{
    sqlite3_file *file = nullptr;
    sqlite3_file_control(db, "main", SQLITE_FCNTL_FILE_POINTER, &file);
    sqlite3_int64 size = 0;
    if (!file || !file->pMethods)
        throw sqliteError(db, SQLITE_CANTOPEN);
    if (file->pMethods->xFileSize(file, &size) != SQLITE_OK)
        throw sqliteError(db, SQLITE_IOERR);
    if (size <= 1) // the store may leave one byte, which it itself counts as none on some systems only
        throw ErroBD(kErroArmazem, u"O arquivo do banco de dados está vazio."_s);
    if (size < kHeaderSize)
        throw sqliteError(db, SQLITE_NOTADB);
    QByteArray header(kHeaderSize, '\0');
    if (file->pMethods->xRead(file, header.data(), kHeaderSize, 0) != SQLITE_OK)
        throw sqliteError(db, SQLITE_IOERR);
    const QByteArray name = header.sliced(kJetNamePlace);
    if (name.startsWith("Standard Jet DB") || name.startsWith("Standard ACE DB"))
        throw ErroBD(kErroArmazem,
            u"O arquivo do banco de dados está no formato antigo (Jet) e não pode ser aberto. Crie um cadastro novo com o programa quorel-cadastro."_s);
}

Comando::Comando(sqlite3 *db, const QString &sql) : mDb(db)
{
    const QByteArray text = sql.toUtf8();
    if (text.contains('\0'))
        throw ErroBD(kErroSql);
    sqlite3_stmt *raw = nullptr;
    const char *rest = nullptr;
    const int code = sqlite3_prepare_v2(db, text.constData(), static_cast<int>(text.size()) + 1, &raw, &rest);
    mStmt.reset(raw);
    if (code != SQLITE_OK)
        throw sqliteError(db, code);
    if (!raw || !QByteArray(rest).trimmed().isEmpty())
        throw ErroBD(kErroSql);
}

void Comando::bind(int number, const QVariant &valor)
{
    sqlite3_stmt *stmt = mStmt.get();
    int code = SQLITE_OK;
    if (!valor.isValid() || valor.isNull()) {
        code = sqlite3_bind_null(stmt, number);
    } else if (valor.typeId() == QMetaType::Double) {
        code = sqlite3_bind_double(stmt, number, valor.toDouble());
    } else if (valor.typeId() == QMetaType::QByteArray) {
        const QByteArray bytes = valor.toByteArray();
        code = sqlite3_bind_blob64(
            stmt, number, bytes.constData(), static_cast<sqlite3_uint64>(bytes.size()), SQLITE_TRANSIENT);
    } else if (valor.typeId() == QMetaType::QString || valor.typeId() == QMetaType::QDateTime) {
        const bool isDate = valor.typeId() == QMetaType::QDateTime;
        const QByteArray text = (isDate ? storedDate(valor.toDateTime()) : valor.toString()).toUtf8();
        if (text.contains('\0'))
            throw ErroBD(
                kErroValor, EspecieFalha::Recusado, u"Um texto com o caractere de código 0 não pode ser gravado."_s);
        code = sqlite3_bind_text64(
            stmt, number, text.constData(), static_cast<sqlite3_uint64>(text.size()), SQLITE_TRANSIENT, SQLITE_UTF8);
    } else {
        code = sqlite3_bind_int64(stmt, number, valor.toLongLong());
    }
    if (code != SQLITE_OK)
        throw sqliteError(mDb, code);
}

bool Comando::step()
{
    const int code = sqlite3_step(mStmt.get());
    if (code == SQLITE_ROW)
        return true;
    if (code != SQLITE_DONE)
        throw sqliteError(mDb, code);
    return false;
}

QString Comando::text(int column) const
{
    const auto *bytes = reinterpret_cast<const char *>(sqlite3_column_text(mStmt.get(), column));
    return QString::fromUtf8(bytes, sqlite3_column_bytes(mStmt.get(), column));
}

void Comando::run()
{
    while (step()) { }
}

void Comando::again()
{
    sqlite3_reset(mStmt.get());
}

void execute(sqlite3 *db, const QString &sql)
{
    Comando(db, sql).run();
}

void runScript(sqlite3 *db, const QByteArray &script)
{
    const int code = sqlite3_exec(db, script.constData(), nullptr, nullptr, nullptr);
    if (code != SQLITE_OK)
        throw sqliteError(db, code);
}

QString quotedName(const QString &nome)
{
    return u'"' + QString(nome).replace(u'"', "\"\""_L1) + u'"';
}

} // namespace quorel
