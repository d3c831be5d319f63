#include "data/armazem_sqlite.h"

#include "data/comparacao.h"
#include "data/linhas.h"
#include "data/log_sqlite.h"
#include "data/sqlite_base.h"
#include "platform/caminho.h"

#include <QHash>
#include <QRandomGenerator>
#include <QScopeGuard>
#include <QSet>
#include <QStringList>

#include <sqlite3.h>

#include <chrono>
#include <thread>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quorel {

namespace {

constexpr auto kBusyLimit = 1s; ///< three waits of one logged row stay below a child's 5 s
constexpr auto kOpeningLimit = 10s; ///< without the register there is no work, and no window is up yet
constexpr auto kCommitLimit = 3s; ///< a commit that fails ends the program
constexpr int kShortestPauseMs = 1;
constexpr int kLongestPauseMs = 6; ///< exclusive

const QString kOrderName = u"QUOREL"_s;
const QString kSmallCache = u"cache_size=-512"_s; ///< KB; record sets hold the rows already

/// Waits for another program's lock, by pauses of random length so that two programs don't keep in step.
class EsperaTrava final
{
public:
    void setLimit(std::chrono::milliseconds limit) { mLimit = limit; }
    /// @param tries  how often it was asked for this lock before
    bool waitMore(int tries)
    {
        const auto now = std::chrono::steady_clock::now();
        if (tries == 0)
            mSince = now;
        if (now - mSince >= mLimit)
            return false;
        std::this_thread::sleep_for(
            std::chrono::milliseconds(QRandomGenerator::global()->bounded(kShortestPauseMs, kLongestPauseMs)));
        return true;
    }

private:
    std::chrono::steady_clock::time_point mSince;
    std::chrono::milliseconds mLimit = kBusyLimit;
};

class ArmazemSqlite final : public Armazem
{
public:
    ArmazemSqlite(const QString &caminho, Espera espera);

    Dialeto dialect() const override;
    IdentidadeCadastro identity() override { return readIdentity(db()); }
    std::vector<Coluna> query(const QString &sql, Linhas &linhas) override;
    Linhas readRow(const ChaveLinha &linha, const std::vector<QString> &colunas) override;
    qint64 insert(const QString &tabela, const QString &chave, const std::vector<Atribuicao> &valores) override;
    bool update(const ChaveLinha &linha, const std::vector<Atribuicao> &valores) override;
    bool remove(const ChaveLinha &linha) override;
    void begin() override;
    void commit() override;
    void rollback() override { execute(db(), u"ROLLBACK"_s); }
    void savepoint(int nivel) override { execute(db(), u"SAVEPOINT nivel%1"_s.arg(nivel)); }
    void release(int nivel) override { execute(db(), u"RELEASE nivel%1"_s.arg(nivel)); }
    void rollbackTo(int nivel) override;
    bool inTransaction() const override { return sqlite3_get_autocommit(db()) == 0; }
    std::vector<SorteLinha> log(
        const std::vector<LinhaLog> &linhas, const std::function<void(bool comIds)> &antesDoCommit) override
    {
        return logToSqlite(db(), linhas, antesDoCommit);
    }

private:
    sqlite3 *db() const { return mDb.get(); }
    void prepareConnection();
    void refuseMoved(); ///< before a write @throws ErroBD for a register that has gone to another place
    void readSchema();
    std::vector<Coluna> columnsOf(sqlite3_stmt *stmt) const;

    EsperaTrava mEspera; // before the database, which calls it
    BancoSqlite mDb;
    QSet<QString> mTextColumns; ///< names in upper case
    QHash<QString, QString> mKeys; ///< of tables with one number for a key; their names in upper case
};

int orderTexts(void *, int sizeA, const void *a, int sizeB, const void *b)
{
    return compareForOrder(
        QByteArrayView(static_cast<const char *>(a), sizeA), QByteArrayView(static_cast<const char *>(b), sizeB));
}

int waitForLock(void *espera, int tries)
{
    return static_cast<EsperaTrava *>(espera)->waitMore(tries) ? 1 : 0;
}

ArmazemSqlite::ArmazemSqlite(const QString &caminho, Espera espera)
    : mDb(openDatabase(nativePath(caminho), SQLITE_OPEN_READWRITE))
{
    if (espera == Espera::Abertura)
        mEspera.setLimit(kOpeningLimit);
    checkRegisterFile(db());
    prepareConnection();
    readSchema();
    refuseMoved();
    mEspera.setLimit(kBusyLimit);
}

void ArmazemSqlite::prepareConnection()
{
    sqlite3_busy_handler(db(), waitForLock, &mEspera);
    const int code =
        sqlite3_create_collation_v2(db(), kOrderName.toUtf8().constData(), SQLITE_UTF8, nullptr, orderTexts, nullptr);
    if (code != SQLITE_OK)
        throw sqliteError(db(), code);
    sqlite3_db_config(db(), SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    for (const QString &pragma : {u"trusted_schema=OFF"_s, u"cell_size_check=ON"_s, u"foreign_keys=OFF"_s,
             u"journal_mode=DELETE"_s, u"synchronous=EXTRA"_s, kSmallCache,
             u"cache_spill=OFF"_s}) // what is written before its commit is synced for nothing
        execute(db(), u"PRAGMA "_s + pragma);
}

void ArmazemSqlite::readSchema()
{
    Comando columns(db(),
        u"SELECT c.name, c.type, t.name, c.pk FROM sqlite_schema t JOIN pragma_table_info(t.name) c "
        "WHERE t.type = 'table'"_s);
    while (columns.step()) {
        const TipoCampo type = typeOfDeclaration(columns.text(1));
        if (type == TipoCampo::Texto || type == TipoCampo::Memo)
            mTextColumns.insert(columns.text(0).toUpper());
        else if (sqlite3_column_int(columns.get(), 3) == 1 && type == TipoCampo::Longo)
            mKeys.insert(columns.text(2).toUpper(), columns.text(0));
    }
}

Dialeto ArmazemSqlite::dialect() const
{
    return {u"1"_s, u"0"_s, u" COLLATE "_s + kOrderName,
        [this](QStringView column) { return mTextColumns.contains(column.toString().toUpper()); },
        [this](QStringView table) { return mKeys.value(table.toString().toUpper()); }};
}

/// A column that stands twice in a nested join is called "name:1" by SQLite.
bool isGeneratedName(const QString &name, const QString &origin)
{
    bool isNumber = false;
    const int number = name.startsWith(origin + u':') ? name.sliced(origin.size() + 1).toInt(&isNumber) : 0;
    return isNumber && number > 0;
}

std::vector<Coluna> ArmazemSqlite::columnsOf(sqlite3_stmt *stmt) const
{
    std::vector<Coluna> columns;
    for (int i = 0; i < sqlite3_column_count(stmt); ++i) {
        Coluna column;
        const char *table = sqlite3_column_table_name(stmt, i);
        const char *origin = sqlite3_column_origin_name(stmt, i);
        column.nome = QString::fromUtf8(sqlite3_column_name(stmt, i));
        column.tipo = typeOfDeclaration(QString::fromUtf8(sqlite3_column_decltype(stmt, i)));
        if (table && origin) {
            column.tabela = QString::fromUtf8(table);
            column.origem = QString::fromUtf8(origin);
            if (isGeneratedName(column.nome, column.origem))
                column.nome = column.origem;
            int key = 0;
            int numbers = 0;
            const char *type = nullptr;
            sqlite3_table_column_metadata(db(), "main", table, origin, &type, nullptr, nullptr, &key, &numbers);
            column.chave = key != 0 && column.tipo == TipoCampo::Longo;
            column.numera = numbers != 0;
        }
        columns.push_back(column);
    }
    return columns;
}

void takeCell(sqlite3_stmt *stmt, int column, Linhas &linhas)
{
    switch (sqlite3_column_type(stmt, column)) {
    case SQLITE_INTEGER:
        linhas.addInteger(sqlite3_column_int64(stmt, column));
        break;
    case SQLITE_FLOAT:
        linhas.addReal(sqlite3_column_double(stmt, column));
        break;
    case SQLITE_TEXT: {
        const auto *text = reinterpret_cast<const char *>(sqlite3_column_text(stmt, column));
        linhas.addText(QByteArrayView(text, sqlite3_column_bytes(stmt, column)));
        break;
    }
    case SQLITE_BLOB: {
        const auto *bytes = static_cast<const char *>(sqlite3_column_blob(stmt, column));
        linhas.addBytes(QByteArrayView(bytes, sqlite3_column_bytes(stmt, column)));
        break;
    }
    default:
        linhas.addNull();
    }
}

Linhas readAll(Comando &command)
{
    const int count = sqlite3_column_count(command.get());
    Linhas rows(count);
    while (command.step()) {
        for (int column = 0; column < count; ++column)
            takeCell(command.get(), column, rows);
    }
    return rows;
}

std::vector<Coluna> ArmazemSqlite::query(const QString &sql, Linhas &linhas)
{
    Comando command(db(), sql);
    if (sqlite3_column_count(command.get()) == 0 || sqlite3_stmt_readonly(command.get()) == 0)
        throw ErroBD(kErroSql, u"A instrução SQL não é uma consulta."_s);
    Linhas rows = readAll(command);
    std::vector<Coluna> columns = columnsOf(command.get());
    linhas = std::move(rows);
    return columns;
}

Linhas ArmazemSqlite::readRow(const ChaveLinha &linha, const std::vector<QString> &colunas)
{
    QStringList names;
    for (const QString &column : colunas)
        names << quotedName(column);
    Comando command(db(),
        u"SELECT %1 FROM %2 WHERE %3 = ?1"_s.arg(
            names.join(u", "_s), quotedName(linha.tabela), quotedName(linha.coluna)));
    command.bind(1, linha.valor);
    return readAll(command);
}

qint64 ArmazemSqlite::insert(const QString &tabela, const QString &chave, const std::vector<Atribuicao> &valores)
{
    if (!inTransaction())
        refuseMoved();
    QStringList names;
    QStringList marks;
    for (const Atribuicao &each : valores) {
        names << quotedName(each.coluna);
        marks << u"?"_s;
    }
    const QString values =
        valores.empty() ? u"DEFAULT VALUES"_s : u"(%1) VALUES (%2)"_s.arg(names.join(u", "_s), marks.join(u", "_s));
    Comando command(db(), u"INSERT INTO %1 %2 RETURNING %3"_s.arg(quotedName(tabela), values, quotedName(chave)));
    for (int i = 0; const Atribuicao &each : valores)
        command.bind(++i, each.valor);
    command.step();
    const qint64 key = sqlite3_column_int64(command.get(), 0);
    command.run();
    return key;
}

void ArmazemSqlite::refuseMoved()
{
    QString moved;
    ignora([&] { moved = identity().mudou; }); // what else is wrong the write itself tells
    if (!moved.isEmpty())
        throw ErroBD(kErroArmazem, EspecieFalha::Sumiu, movedText(moved));
}

void ArmazemSqlite::begin()
{
    execute(db(), u"BEGIN IMMEDIATE"_s);
    try {
        refuseMoved();
    } catch (const ErroExecucao &) {
        ignora([&] { rollback(); });
        throw;
    }
}

// The store waits in it for those who read, the transaction being open still.
void ArmazemSqlite::commit()
{
    mEspera.setLimit(kCommitLimit);
    const auto usual = qScopeGuard([&] { mEspera.setLimit(kBusyLimit); });
    execute(db(), u"COMMIT"_s);
}

bool ArmazemSqlite::update(const ChaveLinha &linha, const std::vector<Atribuicao> &valores)
{
    if (!inTransaction())
        refuseMoved();
    QStringList assignments;
    for (const Atribuicao &each : valores)
        assignments << quotedName(each.coluna) + u" = ?"_s;
    Comando command(db(),
        u"UPDATE %1 SET %2 WHERE %3 = ?"_s.arg(
            quotedName(linha.tabela), assignments.join(u", "_s), quotedName(linha.coluna)));
    int number = 0;
    for (const Atribuicao &each : valores)
        command.bind(++number, each.valor);
    command.bind(++number, linha.valor);
    command.run();
    return sqlite3_changes(db()) > 0;
}

bool ArmazemSqlite::remove(const ChaveLinha &linha)
{
    if (!inTransaction())
        refuseMoved();
    Comando command(db(), u"DELETE FROM %1 WHERE %2 = ?1"_s.arg(quotedName(linha.tabela), quotedName(linha.coluna)));
    command.bind(1, linha.valor);
    command.run();
    return sqlite3_changes(db()) > 0;
}

void ArmazemSqlite::rollbackTo(int nivel)
{
    execute(db(), u"ROLLBACK TO nivel%1"_s.arg(nivel));
    release(nivel);
}

} // namespace

std::unique_ptr<Armazem> openSqlite(const QString &caminho, Espera espera)
{
    return std::make_unique<ArmazemSqlite>(caminho, espera);
}

} // namespace quorel
