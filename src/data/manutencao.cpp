#include "data/manutencao.h"

#include "data/esquema.h"
#include "data/forma.h"
#include "data/schema.h"
#include "data/sqlite_base.h"
#include "platform/caminho.h"
#include "platform/sistema.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <sqlite3.h>

#include <filesystem>

using namespace Qt::StringLiterals;

namespace quorel {

static constexpr int kBusyMs = 10000; ///< for others' locks
static constexpr int kMaxFindings = 100; ///< of the store's own check

static BancoSqlite openForCare(const QString &caminho)
{
    BancoSqlite db = openDatabase(nativePath(caminho), SQLITE_OPEN_READWRITE);
    checkRegisterFile(db.get());
    sqlite3_busy_timeout(db.get(), kBusyMs);
    execute(db.get(), u"PRAGMA trusted_schema=OFF"_s);
    return db;
}

void createRegister(const QString &caminho)
{
    const QString native = nativePath(caminho);
    QFile file(native);
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly))
        throw ErroBD(kErroArmazem, u"O arquivo já existe ou não pode ser criado."_s);
    file.close();
    try {
        const BancoSqlite db = openDatabase(native, SQLITE_OPEN_READWRITE);
        runScript(db.get(), "BEGIN;" + registerSchema() + "COMMIT;");
    } catch (const ErroExecucao &) {
        QFile::remove(native);
        throw;
    }
}

/// What the store found, by the place that it names.
static QString damageText(const QString &message)
{
    static const QRegularExpression place(u"\\b(index|page) (\\w+)"_s, QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = place.match(message);
    if (!match.hasMatch())
        return u"dano no arquivo"_s;
    const bool isPage = match.captured(1).compare("page"_L1, Qt::CaseInsensitive) == 0;
    return (isPage ? u"dano na página %1 do arquivo"_s : u"dano no índice %1"_s).arg(match.captured(2));
}

static void findDamage(sqlite3 *db, QStringList &findings)
{
    Comando check(db, u"PRAGMA integrity_check(%1)"_s.arg(kMaxFindings));
    while (check.step()) {
        const QString text = check.text(0);
        if (text != "ok"_L1)
            findings << damageText(text);
    }
    findings.removeDuplicates();
}

/// @return whether all tables and columns are there
static bool findMissing(sqlite3 *db, QStringList &findings)
{
    const qsizetype before = findings.size();
    Esquema found = schemaOf(db);
    const Esquema wanted = wantedSchema();
    for (auto table = wanted.begin(); table != wanted.end(); ++table) {
        if (!found.contains(table.key())) {
            findings << u"falta a tabela %1"_s.arg(table.key());
            continue;
        }
        for (auto column = table->begin(); column != table->end(); ++column) {
            const auto there = found[table.key()].constFind(column.key());
            if (there == found[table.key()].constEnd())
                findings << u"falta a coluna %1 da tabela %2"_s.arg(column.key(), table.key());
            else if (*there != *column)
                findings << u"a coluna %1 da tabela %2 é de outro tipo"_s.arg(column.key(), table.key());
        }
    }
    return findings.size() == before;
}

/// Adds the text, with the query's number in the place of %1, unless that is 0.
static void findRows(sqlite3 *db, const QString &sql, const QString &text, QStringList &findings)
{
    Comando count(db, sql);
    const qint64 number = count.step() ? sqlite3_column_int64(count.get(), 0) : 0;
    if (number > 0)
        findings << QString(text).replace("%1"_L1, QString::number(number));
}

static void findLooseRows(sqlite3 *db, QStringList &findings)
{
    findRows(db, u"SELECT NOT EXISTS (SELECT 1 FROM CL_Classes WHERE CL_Cod = 9999)"_s,
        u"falta a classe genérica 9999; o programa a cria ao iniciar"_s, findings);
    findRows(db, u"SELECT NOT EXISTS (SELECT 1 FROM AL_Alunos WHERE AL_Cod = 9999)"_s,
        u"falta o aluno genérico 9999; o programa o cria ao iniciar"_s, findings);
    findRows(db, u"SELECT NOT EXISTS (SELECT 1 FROM CLxAL WHERE AL_Cod = 9999)"_s,
        u"falta a ligação do aluno genérico 9999; o programa a cria ao iniciar"_s, findings);
    findRows(db, u"SELECT count(*) FROM CLxAL WHERE AL_Cod NOT IN (SELECT AL_Cod FROM AL_Alunos) OR AL_Cod IS NULL"_s,
        u"ligações sem aluno na tabela CLxAL: %1"_s, findings);
    findRows(db, u"SELECT count(*) FROM CLxAL WHERE CL_Cod NOT IN (SELECT CL_Cod FROM CL_Classes) OR CL_Cod IS NULL"_s,
        u"ligações sem classe na tabela CLxAL: %1"_s, findings);
    findRows(db,
        u"SELECT count(*) FROM LG_LogAulas WHERE LG_Aluno NOT IN (SELECT AL_Cod FROM AL_Alunos) OR LG_Aluno IS NULL"_s,
        u"aulas registradas sem aluno na tabela LG_LogAulas: %1"_s, findings);
}

QStringList registerFindings(const QString &caminho)
{
    const BancoSqlite db = openForCare(caminho);
    QStringList findings;
    try {
        findDamage(db.get(), findings);
        const bool sound = findings.isEmpty(); // rows counted by a damaged index are not what is there
        if (findMissing(db.get(), findings) && sound) {
            findBadKeys(db.get(), findings);
            findBadCells(db.get(), findings);
            findLooseRows(db.get(), findings);
        }
    } catch (const ErroBD &erro) {
        findings << erro.descricao();
    }
    return findings;
}

std::vector<ContagemTabela> registerCounts(const QString &caminho)
{
    const BancoSqlite db = openForCare(caminho);
    QStringList tables;
    Comando names(
        db.get(), u"SELECT name FROM sqlite_schema WHERE type = 'table' AND name NOT LIKE 'sqlite%' ORDER BY name"_s);
    while (names.step())
        tables << names.text(0);
    std::vector<ContagemTabela> counts;
    for (const QString &table : tables) {
        Comando count(db.get(), u"SELECT count(*) FROM "_s + quotedName(table));
        count.step();
        counts.push_back({table, sqlite3_column_int64(count.get(), 0)});
    }
    return counts;
}

/// What is wrong with the file that a copy is to become.
[[noreturn]] static void refuseTarget(const QString &destino, const QString &description)
{
    throw ErroBD(kErroArmazem, description, destino);
}

static void backup(sqlite3 *from, sqlite3 *to, const QString &destino)
{
    sqlite3_backup *work = sqlite3_backup_init(to, "main", from, "main");
    if (!work)
        throw sqliteError(to, sqlite3_extended_errcode(to));
    int code = SQLITE_OK;
    for (int waited = 0; waited < kBusyMs; waited += 10) {
        code = sqlite3_backup_step(work, -1); // all at once: one moment's state
        if (code != SQLITE_BUSY && code != SQLITE_LOCKED)
            break;
        sqlite3_sleep(10);
    }
    const int end = sqlite3_backup_finish(work);
    if (code == SQLITE_DONE)
        code = end;
    if (code == SQLITE_FULL)
        refuseTarget(destino, sqliteError(to, code).descricao());
    if (code != SQLITE_OK)
        throw sqliteError(to, code);
}

/// Makes the file that takes the destination's name once it is whole.
static BancoSqlite makeUnfinished(const QString &native, const QString &destino)
{
    try {
        return openDatabase(native, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    } catch (const ErroBD &erro) {
        refuseTarget(destino, erro.descricao());
    }
}

static void writeChecked(const QString &origem, const QString &native, const QString &destino)
{
    const BancoSqlite from = openForCare(origem);
    const BancoSqlite to = makeUnfinished(native, destino);
    execute(to.get(), u"PRAGMA synchronous=EXTRA"_s);
    backup(from.get(), to.get(), destino);
    QStringList damage;
    findDamage(to.get(), damage);
    if (!damage.isEmpty())
        throw ErroBD(kErroArmazem, u"A cópia foi conferida; há "_s + damage.first());
}

/// Puts the copy in the destination's place. What a program that died left beside the old file goes before, since the
/// store would play it back into the copy.
static void takeThePlace(const QString &copy, const QString &destino)
{
    if (isOpenElsewhere(destino)) // a program that has it open would go on in a file without a name
        refuseTarget(destino, u"O cadastro está em uso por outro programa desta máquina. Feche-o e copie de novo."_s);
    const QString target = nativePath(destino);
    if (const QFileInfo there(target); there.exists()) // who may write the register may go on doing so
        QFile::setPermissions(copy, there.permissions());
    for (const auto suffix : {"-journal"_L1, "-wal"_L1}) {
        const QString left = target + suffix;
        if (QFileInfo::exists(left) && !QFile::remove(left))
            refuseTarget(destino, u"O que ficou de uma gravação interrompida no destino não pôde ser retirado."_s);
    }
    std::error_code failure;
    std::filesystem::rename(copy.toStdU16String(), target.toStdU16String(), failure);
    if (failure)
        refuseTarget(destino, u"A cópia não pôde receber o nome do destino."_s);
}

void copyRegister(const QString &origem, const QString &destino, bool sobrescreve)
{
    const QString target = nativePath(destino);
    const QFileInfo there(target);
    if (there.exists() && there.canonicalFilePath() == QFileInfo(nativePath(origem)).canonicalFilePath())
        throw ErroBD(kErroArmazem, u"A origem e o destino são o mesmo arquivo."_s);
    if (there.exists() && !sobrescreve)
        refuseTarget(destino, u"O arquivo de destino já existe."_s);
    const QString unfinished = target + u".parcial"_s;
    QFile::remove(unfinished);
    try {
        writeChecked(origem, unfinished, destino);
        takeThePlace(unfinished, destino);
    } catch (const ErroExecucao &) {
        QFile::remove(unfinished);
        throw;
    }
}

} // namespace quorel
