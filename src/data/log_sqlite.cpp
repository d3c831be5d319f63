#include "data/log_sqlite.h"

#include "data/comparacao.h"
#include "data/identidade.h"
#include "data/sqlite_base.h"
#include "platform/costuras.h"
#include "startup/estado.h"

#include <QVariant>

#include <sqlite3.h>

#include <memory>
#include <optional>

using namespace Qt::StringLiterals;

namespace quorel {

namespace {

constexpr int kMostMerges = 16; ///< of one pupil into the next, in a row

/// The rows of one transaction; each statement is prepared once, when it is needed.
class EscritaLog final
{
public:
    EscritaLog(sqlite3 *db, bool hasIds) : mDb(db), mHasIds(hasIds) { }

    SorteLinha write(LinhaLog row);

private:
    Comando &statement(std::unique_ptr<Comando> &kept, const QString &sql);
    bool hasId(const QString &uuid);
    bool standsThere(const LinhaLog &row);
    std::optional<qint32> codeNow(qint32 aluno);
    bool bearsName(std::unique_ptr<Comando> &kept, const QString &sql, qint32 code, const QString &name);
    void insert(const LinhaLog &row);

    sqlite3 *mDb;
    bool mHasIds;
    std::unique_ptr<Comando> mHasId, mSame, mMoved, mPupil, mClass, mInsert, mInsertId;
};

Comando &EscritaLog::statement(std::unique_ptr<Comando> &kept, const QString &sql)
{
    if (kept)
        kept->again();
    else
        kept = std::make_unique<Comando>(mDb, sql);
    return *kept;
}

bool EscritaLog::hasId(const QString &uuid)
{
    Comando &found = statement(mHasId, u"SELECT 1 FROM LG_Entregas WHERE LG_Uuid = ?1"_s);
    found.bind(1, uuid);
    return found.step();
}

/// Whether a row like it came in before the register had ids: of that kind an id tells nothing.
bool EscritaLog::standsThere(const LinhaLog &row)
{
    Comando &found = statement(mSame,
        u"SELECT 1 FROM LG_LogAulas L JOIN LG_Entregas E ON E.LG_Id = L.LG_Id AND E.origem = 'atualiza' "
        "WHERE L.LG_Aluno = ?1 AND L.LG_Classe = ?2 AND L.LG_Data = ?3 AND L.RO_Cod = ?4 AND L.LG_Resp = ?5"_s);
    found.bind(1, row.aluno);
    found.bind(2, row.classe);
    found.bind(3, row.data);
    found.bind(4, row.roteiro);
    found.bind(5, row.respostas);
    return found.step();
}

/// The code that a pupil has now, mergers followed. @return nothing when the pupil's data was erased
std::optional<qint32> EscritaLog::codeNow(qint32 aluno)
{
    for (int i = 0; i < kMostMerges; ++i) {
        Comando &moved = statement(mMoved, u"SELECT novo FROM AL_Destinos WHERE AL_Cod = ?1"_s);
        moved.bind(1, aluno);
        if (!moved.step())
            break;
        aluno = sqlite3_column_int(moved.get(), 0);
        if (aluno == 0)
            return std::nullopt;
    }
    return aluno;
}

bool EscritaLog::bearsName(std::unique_ptr<Comando> &kept, const QString &sql, qint32 code, const QString &name)
{
    if (code == kGenerico || name.isNull())
        return true;
    Comando &found = statement(kept, sql);
    found.bind(1, code);
    return found.step() && sameName(found.text(0), name);
}

void EscritaLog::insert(const LinhaLog &row)
{
    Comando &log = statement(mInsert,
        u"INSERT INTO LG_LogAulas (LG_Aluno, LG_Classe, LG_Data, RO_Cod, LG_Resp) VALUES (?1, ?2, ?3, ?4, ?5)"_s);
    log.bind(1, row.aluno);
    log.bind(2, row.classe);
    log.bind(3, row.data);
    log.bind(4, row.roteiro);
    log.bind(5, row.respostas);
    log.run();
    if (!mHasIds)
        return;
    Comando &id =
        statement(mInsertId, u"INSERT INTO LG_Entregas (LG_Uuid, LG_Id, origem, recebida) VALUES (?1, ?2, ?3, ?4)"_s);
    id.bind(1, row.uuid);
    id.bind(2, qint64(sqlite3_last_insert_rowid(mDb)));
    id.bind(3, row.origem);
    id.bind(4, agora());
    id.run();
}

SorteLinha EscritaLog::write(LinhaLog row)
{
    if (row.incerta && !mHasIds)
        return SorteLinha::Espera;
    if (mHasIds && row.esperou) {
        if (hasId(row.uuid) || (row.incerta && standsThere(row)))
            return SorteLinha::JaEstava;
        const std::optional<qint32> code = codeNow(row.aluno);
        if (!code)
            return SorteLinha::Apagada;
        if (*code != row.aluno) // told to be the same child, whatever the name
            row.nomeAluno = QString();
        row.aluno = *code;
    }
    const bool named = !row.esperou || row.semNomes
        || (bearsName(mPupil, u"SELECT AL_Nome FROM AL_Alunos WHERE AL_Cod = ?1"_s, row.aluno, row.nomeAluno)
            && bearsName(mClass, u"SELECT CL_Nome FROM CL_Classes WHERE CL_Cod = ?1"_s, row.classe, row.nomeClasse));
    if (!named)
        return SorteLinha::OutroNome;
    insert(row);
    return SorteLinha::Entrou;
}

/// A name that nobody noted is not compared; where the codes may be another register's, that is not enough.
LinhaLog checked(LinhaLog row, const IdentidadeCadastro &identity)
{
    if (row.esperou && row.cadastro != identity.identidade) {
        for (QString *name : {&row.nomeAluno, &row.nomeClasse}) {
            if (name->isNull())
                *name = u""_s;
        }
    }
    return row;
}

std::vector<SorteLinha> writeAll(
    sqlite3 *db, const std::vector<LinhaLog> &linhas, const std::function<void(bool comIds)> &antesDoCommit)
{
    const IdentidadeCadastro identity = readIdentity(db);
    if (!identity.mudou.isEmpty())
        throw ErroBD(kErroArmazem, EspecieFalha::Sumiu, movedText(identity.mudou));
    std::vector<SorteLinha> fates;
    {
        EscritaLog writer(db, identity.temEntregas);
        for (const LinhaLog &row : linhas)
            fates.push_back(writer.write(checked(row, identity)));
    }
    antesDoCommit(identity.temEntregas);
    execute(db, u"COMMIT"_s);
    return fates;
}

} // namespace

std::vector<SorteLinha> logToSqlite(
    sqlite3 *db, const std::vector<LinhaLog> &linhas, const std::function<void(bool comIds)> &antesDoCommit)
{
    // The whole lock: a commit that had to wait for readers could fail when all else had worked.
    execute(db, u"BEGIN EXCLUSIVE"_s);
    try {
        return writeAll(db, linhas, antesDoCommit);
    } catch (const ErroExecucao &) {
        if (sqlite3_get_autocommit(db) == 0)
            ignora([&] { execute(db, u"ROLLBACK"_s); });
        throw;
    }
}

} // namespace quorel
