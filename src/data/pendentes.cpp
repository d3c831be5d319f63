#include "data/pendentes.h"

#include "data/datas.h"
#include "data/errobd.h"
#include "data/instantaneo.h"
#include "data/sqlite_base.h"
#include "platform/caminho.h"
#include "platform/costuras.h"
#include "platform/sistema.h"
#include "startup/quorel_zeto.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>
#include <QStandardPaths>
#include <QVariant>

#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace quorel {

static constexpr int kBusyMs = 2000; ///< for another program of the account, which writes a row or forgets some

LugarPendentes waitingPlace()
{
    QString folder = qEnvironmentVariable("QUOREL_PENDENTES");
    if (folder.isEmpty())
        folder = nativePath(gConfig.Config(u"PENDENTES"_s));
    bool machines = !folder.isEmpty();
    if (!machines) {
        folder = machineDirectory() + u"/pendentes"_s;
        machines = QFileInfo(folder).isDir() && QFileInfo(folder).isWritable();
    }
    if (!machines)
        folder = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/quorel"_s;
    return {.arquivo = folder + u"/pendentes-%1.db"_s.arg(accountName()), .daMaquina = machines};
}

struct Pendentes::Aberto
{
    BancoSqlite db;
};

Pendentes::Pendentes(const QString &native) : mNative(native) { }

Pendentes::~Pendentes() = default;

bool Pendentes::exists() const
{
    return QFileInfo::exists(mNative);
}

static void prepare(sqlite3 *db)
{
    sqlite3_busy_timeout(db, kBusyMs);
    sqlite3_db_config(db, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    // A folder that all accounts write to can't be listed, so nor synced: the journal stays and is cut to nothing.
    for (const QString &pragma :
        {u"trusted_schema=OFF"_s, u"cell_size_check=ON"_s, u"journal_mode=TRUNCATE"_s, u"synchronous=FULL"_s})
        execute(db, u"PRAGMA "_s + pragma);
    Comando check(db, u"PRAGMA quick_check(1)"_s);
    if (check.step() && check.text(0) != "ok"_L1)
        throw sqliteError(db, SQLITE_CORRUPT);
    runScript(db,
        "CREATE TABLE IF NOT EXISTS PE_Linhas ("
        "PE_Ordem INTEGER PRIMARY KEY AUTOINCREMENT, PE_Uuid VARCHAR NOT NULL UNIQUE, cadastro VARCHAR, "
        "caminho VARCHAR, LG_Aluno INTEGER, LG_Classe INTEGER, LG_Data DATETIME, RO_Cod INTEGER, LG_Resp TEXT, "
        "AL_Nome VARCHAR, CL_Nome VARCHAR, origem VARCHAR, guardada DATETIME, incerta INTEGER NOT NULL DEFAULT 0, "
        "sem_nomes INTEGER NOT NULL DEFAULT 0, motivo VARCHAR)");
}

sqlite3 *Pendentes::opened()
{
    if (mAberto)
        return mAberto->db.get();
    const QFileInfo info(mNative);
    if (info.exists() && !info.isFile()) // a pipe would never open
        throw ErroBD(kErroArmazem, EspecieFalha::SoLeitura, u"O lugar das aulas que esperam não é um arquivo."_s);
    if (!info.exists()) {
        QDir().mkpath(info.path());
        QFile file(mNative);
        if (file.open(QIODevice::WriteOnly | QIODevice::NewOnly))
            file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner); // children's answers
    }
    // Others may write to the folder: what stands there must be a file, not a way to another one.
    const QString real = QFileInfo(info.path()).canonicalFilePath() + u'/' + info.fileName();
    BancoSqlite db = openDatabase(real, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOFOLLOW);
    prepare(db.get());
    mAberto = std::make_unique<Aberto>(Aberto{std::move(db)});
    return mAberto->db.get();
}

/// The name of a damaged file, from 1: told without listing the folder, which may not be allowed.
static QString asideName(const QString &native, int number)
{
    return native + u".danificado-%1"_s.arg(number);
}

void Pendentes::moveAside()
{
    mAberto.reset();
    int number = 1;
    while (QFileInfo::exists(asideName(mNative, number)))
        ++number;
    const QString name = asideName(mNative, number);
    QFile::rename(mNative, name);
    QFile::rename(mNative + u"-journal"_s, name + u"-journal"_s);
}

template <typename Work>
auto Pendentes::onFile(Work &&work)
{
    try {
        return work(opened());
    } catch (const ErroBD &erro) {
        mAberto.reset(); // another program may have set the file aside
        if (erro.especie() == EspecieFalha::Danificado)
            moveAside();
        else if (erro.especie() != EspecieFalha::SoLeitura)
            throw;
    }
    return work(opened());
}

/// As read from a row with the columns of kColumns.
static LinhaEspera readLine(const Comando &row)
{
    const auto number = [&](int column) { return sqlite3_column_int(row.get(), column); };
    const auto name = [&](int column) {
        return sqlite3_column_type(row.get(), column) == SQLITE_NULL ? QString() : u""_s + row.text(column);
    };
    LinhaEspera line;
    line.ordem = sqlite3_column_int64(row.get(), 0);
    line.linha = {.uuid = row.text(1),
        .aluno = number(4),
        .classe = number(5),
        .roteiro = number(7),
        .respostas = row.text(8),
        .origem = row.text(11),
        .esperou = true,
        .incerta = number(13) != 0,
        .semNomes = number(14) != 0,
        .cadastro = row.text(2),
        .nomeAluno = name(9),
        .nomeClasse = name(10)};
    line.linha.data = readStoredDate(row.text(6)).value_or(QDateTime());
    line.caminho = row.text(3);
    line.guardada = readStoredDate(row.text(12)).value_or(QDateTime());
    line.motivo = row.text(15);
    return line;
}

static const QString kColumns = u"PE_Uuid, cadastro, caminho, LG_Aluno, LG_Classe, LG_Data, RO_Cod, LG_Resp, AL_Nome, "
                                "CL_Nome, origem, guardada, incerta"_s;

/// A name that nobody noted is Null, and none that is known to be empty.
static QVariant known(const QString &name)
{
    return name.isNull() ? QVariant() : QVariant(name);
}

void Pendentes::keep(const LinhaLog &linha, const QString &caminho)
{
    const std::vector<QVariant> values{linha.uuid, linha.cadastro, caminho, linha.aluno, linha.classe, linha.data,
        linha.roteiro, linha.respostas, known(linha.nomeAluno), known(linha.nomeClasse), linha.origem, agora(),
        linha.incerta};
    onFile([&](sqlite3 *db) {
        Comando insert(db,
            u"INSERT OR IGNORE INTO PE_Linhas (%1) VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11, ?12, ?13)"_s
                .arg(kColumns));
        for (int i = 0; const QVariant &value : values)
            insert.bind(++i, value);
        insert.run();
    });
}

/// The number that a query gives.
static qint64 numberOf(sqlite3 *db, const QString &sql)
{
    Comando query(db, sql);
    return query.step() ? sqlite3_column_int64(query.get(), 0) : 0;
}

qint64 Pendentes::count()
{
    if (!exists())
        return 0;
    return onFile([](sqlite3 *db) { return numberOf(db, u"SELECT count(*) FROM PE_Linhas"_s); });
}

bool Pendentes::anyFresh()
{
    if (!exists())
        return false;
    return onFile(
        [](sqlite3 *db) { return numberOf(db, u"SELECT 1 FROM PE_Linhas WHERE motivo IS NULL LIMIT 1"_s) != 0; });
}

std::vector<LinhaEspera> Pendentes::rows(qint64 depoisDe, int maximo, bool presas)
{
    if (!exists())
        return {};
    return onFile([&](sqlite3 *db) {
        std::vector<LinhaEspera> lines;
        Comando query(db,
            u"SELECT PE_Ordem, %1, sem_nomes, motivo FROM PE_Linhas WHERE PE_Ordem > ?1 AND (?2 OR motivo IS NULL) "
            "ORDER BY PE_Ordem LIMIT ?3"_s.arg(kColumns));
        query.bind(1, depoisDe);
        query.bind(2, presas);
        query.bind(3, maximo);
        while (query.step())
            lines.push_back(readLine(query));
        return lines;
    });
}

void Pendentes::each(const QString &sql, const std::vector<qint64> &ordens)
{
    if (ordens.empty() || !exists())
        return;
    onFile([&](sqlite3 *db) {
        execute(db, u"BEGIN IMMEDIATE"_s);
        try {
            Comando command(db, sql);
            for (const qint64 ordem : ordens) {
                command.bind(1, ordem);
                command.run();
                command.again();
            }
        } catch (const ErroExecucao &) {
            ignora([&] { execute(db, u"ROLLBACK"_s); });
            throw;
        }
        execute(db, u"COMMIT"_s);
    });
}

// A forgetting that is lost costs an offer more, which the register knows by the id.
void Pendentes::forget(const std::vector<qint64> &ordens)
{
    if (!ordens.empty() && exists())
        onFile([](sqlite3 *db) { execute(db, u"PRAGMA synchronous=NORMAL"_s); });
    const auto full = qScopeGuard([&] {
        if (mAberto)
            ignora([&] { execute(mAberto->db.get(), u"PRAGMA synchronous=FULL"_s); });
    });
    each(u"DELETE FROM PE_Linhas WHERE PE_Ordem = ?1"_s, ordens);
}

void Pendentes::setDoubtful(const std::vector<qint64> &ordens)
{
    each(u"UPDATE PE_Linhas SET incerta = 1 WHERE PE_Ordem = ?1"_s, ordens);
}

void Pendentes::setReason(qint64 ordem, const QString &motivo)
{
    onFile([&](sqlite3 *db) {
        Comando set(db, u"UPDATE PE_Linhas SET motivo = ?2 WHERE PE_Ordem = ?1 AND motivo IS NOT ?2"_s);
        set.bind(1, ordem);
        set.bind(2, motivo);
        set.run();
    });
}

bool Pendentes::accept(qint64 ordem)
{
    if (!exists())
        return false;
    return onFile([&](sqlite3 *db) {
        Comando set(db, u"UPDATE PE_Linhas SET sem_nomes = 1, motivo = NULL WHERE PE_Ordem = ?1"_s);
        set.bind(1, ordem);
        set.run();
        return sqlite3_changes(db) > 0;
    });
}

QStringList Pendentes::setAside() const
{
    QStringList names;
    for (int number = 1; QFileInfo::exists(asideName(mNative, number)); ++number)
        names << QFileInfo(asideName(mNative, number)).fileName();
    return names;
}

void Pendentes::exportTo(const QString &native)
{
    if (QFileInfo::exists(native))
        throw ErroBD(kErroArmazem, u"O arquivo de destino já existe."_s);
    onFile([&](sqlite3 *db) {
        const BancoSqlite to = openDatabase(native, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
        copyWhole(db, to.get());
    });
}

} // namespace quorel
