#include "data/manutencao.h"

#include "data/esquema.h"
#include "data/forma.h"
#include "data/identidade.h"
#include "data/instantaneo.h"
#include "data/schema.h"
#include "data/sqlite_base.h"
#include "platform/caminho.h"
#include "platform/costuras.h"

#include <QFile>
#include <QRegularExpression>
#include <QVariant>

#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace quorel {

static constexpr int kMaxFindings = 100; ///< of the store's own check

/// Class, pupil and link 9999: so new codes begin at 10000, and machines that meet a fresh register find nothing to do.
static void writeGenericRows(sqlite3 *db)
{
    runScript(db,
        "BEGIN;"
        "INSERT INTO CL_Classes (CL_Cod, CL_Nome, CL_Prof, CL_Senha) "
        "VALUES (9999, 'Genérica', 'Genérica', 'Chavema');"
        "INSERT INTO AL_Alunos (AL_Cod, AL_Nome) VALUES (9999, 'Genérico');");
    Comando link(db, u"INSERT INTO CLxAL (AL_Cod, CL_Cod, CLxAL_DataIngr) VALUES (9999, 9999, ?1)"_s);
    link.bind(1, agora());
    link.run();
    execute(db, u"COMMIT"_s);
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
        writeGenericRows(db.get());
        layOwnTables(db.get());
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

void findDamage(sqlite3 *db, QStringList &findings)
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

static void findOldTables(sqlite3 *db, QStringList &findings)
{
    const IdentidadeCadastro identity = readIdentity(db);
    if (identity.identidade.isEmpty() || !identity.temEntregas || identity.versao < kVersaoCadastro)
        findings << u"o cadastro é de uma versão anterior; rode quorel-cadastro atualiza"_s;
    if (!identity.mudou.isEmpty())
        findings << movedText(identity.mudou);
}

QStringList registerFindings(const QString &caminho)
{
    const BancoSqlite source = openForCare(caminho);
    QStringList findings;
    try {
        const BancoSqlite db = oneMoment(source.get()); // a long look at the register itself would hold up who writes
        findDamage(db.get(), findings);
        const bool sound = findings.isEmpty(); // rows counted by a damaged index are not what is there
        if (findMissing(db.get(), findings) && sound) {
            findBadKeys(db.get(), findings);
            findBadCells(db.get(), findings);
            findLooseRows(db.get(), findings);
            findOldTables(db.get(), findings);
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

bool updateRegister(const QString &caminho)
{
    return layOwnTables(openForCare(caminho).get());
}

void renewRegister(const QString &caminho)
{
    const BancoSqlite db = openForCare(caminho);
    layOwnTables(db.get());
    renewIdentity(db.get(), true);
}

} // namespace quorel
