#include "data/identidade.h"
#include "data/instantaneo.h"
#include "data/manutencao.h"
#include "platform/caminho.h"
#include "platform/sistema.h"

#include <QFile>
#include <QFileInfo>

#include <sqlite3.h>

#include <filesystem>

using namespace Qt::StringLiterals;

namespace quorel {

/// What is wrong with the file that a copy is to become.
[[noreturn]] static void refuseTarget(const QString &destino, const QString &description)
{
    throw ErroBD(kErroArmazem, description, destino);
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

static void writeChecked(const QString &origem, const QString &native, const QString &destino, bool muda)
{
    const BancoSqlite from = openForCare(origem);
    const BancoSqlite moment = oneMoment(from.get()); // however slow the copy's disk is, it holds up nobody
    const BancoSqlite to = makeUnfinished(native, destino);
    execute(to.get(), u"PRAGMA synchronous=EXTRA"_s);
    try {
        copyWhole(moment.get(), to.get());
    } catch (const ErroBD &erro) { // what can be read is in the moment already
        refuseTarget(destino, erro.descricao());
    }
    QStringList damage;
    findDamage(to.get(), damage);
    if (!damage.isEmpty())
        throw ErroBD(kErroArmazem, u"A cópia foi conferida; há "_s + damage.first());
    const IdentidadeCadastro identity = readIdentity(to.get());
    if (!identity.mudou.isEmpty())
        throw ErroBD(kErroArmazem, movedText(identity.mudou));
    if (!muda && !identity.identidade.isEmpty())
        renewIdentity(to.get(), false);
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

static void copyTo(const QString &origem, const QString &destino, bool sobrescreve, bool muda)
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
        writeChecked(origem, unfinished, destino, muda);
        takeThePlace(unfinished, destino);
    } catch (const ErroExecucao &) {
        QFile::remove(unfinished);
        throw;
    }
}

void copyRegister(const QString &origem, const QString &destino, bool sobrescreve)
{
    copyTo(origem, destino, sobrescreve, false);
}

// Nobody writes between the copy and the mark: what came in then would be in neither place that is used.
void moveRegister(const QString &origem, const QString &destino, bool sobrescreve)
{
    const BancoSqlite source = openForCare(origem);
    layOwnTables(source.get());
    execute(source.get(), u"BEGIN IMMEDIATE"_s);
    copyTo(origem, destino, sobrescreve, true);
    markMoved(source.get(), backslashPath(QFileInfo(nativePath(destino)).absoluteFilePath()));
    execute(source.get(), u"COMMIT"_s);
}

} // namespace quorel
