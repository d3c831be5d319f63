#include "data/bd.h"
#include "data/conexao.h"
#include "data/entrega.h"
#include "data/errobd.h"
#include "data/linha_log.h"
#include "data/pendentes.h"
#include "data/recordset.h"
#include "platform/caminho.h"
#include "platform/eventos.h"
#include "platform/sistema.h"

#include <QFileInfo>
#include <QSysInfo>
#include <QUuid>

#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace quorel {

Pendentes &BD::waitingRows()
{
    if (!mPendentes)
        mPendentes = std::make_unique<Pendentes>(waitingPlace().arquivo);
    return *mPendentes;
}

void BD::expectSource(const QString &caminho)
{
    mEsperado = caminho;
}

void BD::openAtNextNeed(std::function<void()> open)
{
    auto &source = mConexoes[static_cast<size_t>(mSourceAtual)];
    if (source)
        source->Close(); // record sets may hold it, and it the lock
    source.reset();
    mAbreDepois = std::move(open);
}

void BD::openIfPutOff()
{
    if (const auto open = std::exchange(mAbreDepois, {}))
        open();
}

QString BD::sourcePath() const
{
    const QString &source = mFontes[static_cast<size_t>(mSourceAtual)];
    const QString path = nativePath(source.isEmpty() ? mEsperado : source);
    return path.isEmpty() ? path : QFileInfo(path).absoluteFilePath();
}

void BD::deferRecords_Set(const QString &Sql, const QVariant &Alias)
{
    openIfPutOff();
    const auto &source = mConexoes[static_cast<size_t>(mSourceAtual)];
    if (!source || !source->isOpen())
        return Records_Set(Sql, Alias, {}, kCursorKeyset);
    const int slot = Resolve_Alias(Alias, false);
    growTables(slot);
    eventTurn(); // other calls may come in here
    growTables(slot);
    const auto set = std::make_shared<RecordSet>();
    set->openLater(mConexoes[static_cast<size_t>(mSourceAtual)], Sql);
    mRecordSets[static_cast<size_t>(slot - 1)] = set;
    mAliases[static_cast<size_t>(slot - 1)] = variantText(Alias);
    mAberto = true;
}

void BD::RegistraLog(LinhaLog linha, const QVariant &Alias)
{
    linha.uuid = QUuid::createUuid().toString(QUuid::WithoutBraces);
    linha.origem = QSysInfo::machineHostName() + u'/' + accountName();
    reported(Alias, u"Registro Atualiza"_s, true, [&] { takeLogRow(std::move(linha)); });
    ignora([&] {
        const int slot = aliasSlot(variantText(Alias));
        if (slot < 1 || !mRecordSets[static_cast<size_t>(slot - 1)])
            return;
        // Kept: the mark that adding a row sets, on the set's first record if it was not read yet.
        RecordSet &set = *mRecordSets[static_cast<size_t>(slot - 1)];
        mAtual = slot;
        if (set.isPutOff())
            mMarca = 1;
        else if (!set.BOF() && !set.EOF_())
            mMarca = set.Bookmark();
        set.requeryLater();
    });
}

static bool isBusy(const ErroBD &erro)
{
    return erro.especie() == EspecieFalha::Ocupado;
}

void BD::takeLogRow(LinhaLog row)
{
    std::optional<ErroBD> failure;
    try {
        openIfPutOff();
        if (logged(row, row.incerta))
            return;
    } catch (const ErroBD &erro) {
        failure = erro;
    }
    try {
        keepRow(row);
    } catch (const ErroBD &erro) {
        // Where many programs crowd both files, neither is held for long.
        const bool crowded = failure && isBusy(*failure) && isBusy(erro);
        if (crowded && logged(row, row.incerta))
            return;
        throw failure ? *failure : erro; // what is wrong with the register is what matters
    }
}

/// @return false when it must not be tried: a transaction is open, which may yet be undone
bool BD::logged(const LinhaLog &row, bool &doubtful)
{
    Conexao &open = connection();
    if (open.holdsLock()) {
        mGuardouDentro = true;
        return false;
    }
    bool waiting = false;
    ignora([&] { waiting = waitingRows().anyFresh(); });
    if (waiting)
        deliverWaiting(waitingRows(), open, sourcePath(), false);
    open.log({row}, [&](bool comIds) { doubtful = !comIds; });
    return true;
}

/// A name from rows that were read before, since the register can't be asked now. Null when they don't tell.
QString BD::nameIn(const QVariant &Alias, const QString &chave, const QString &campo, qint32 codigo) const
{
    QString name;
    ignora([&] {
        const int slot = aliasSlot(variantText(Alias));
        if (slot < 1 || !mRecordSets[static_cast<size_t>(slot - 1)])
            return;
        const RecordSet &set = *mRecordSets[static_cast<size_t>(slot - 1)];
        if (const QVariant value = set.lookUp(set.fieldNumber(chave), codigo, set.fieldNumber(campo)); value.isValid())
            name = u""_s + variantText(value);
    });
    return name;
}

void BD::keepRow(LinhaLog row)
{
    row.esperou = true;
    row.cadastro = mIdentidade;
    row.nomeAluno = nameIn(u"RsAlunos"_s, u"AL_Cod"_s, u"AL_Nome"_s, row.aluno);
    row.nomeClasse = nameIn(u"RsClasses"_s, u"CL_Cod"_s, u"CL_Nome"_s, row.classe);
    waitingRows().keep(row, sourcePath());
}

void BD::deliverWaitingRows()
{
    ignora([&] {
        if (!connection().holdsLock() && waitingRows().count() > 0)
            deliverFrom(waitingRows());
    });
}

Entregue BD::deliverFrom(Pendentes &pendentes)
{
    return deliverWaiting(pendentes, connection(), sourcePath(), true);
}

void BD::afterTransaction()
{
    if (connection().depth() > 0 || !std::exchange(mGuardouDentro, false))
        return;
    ignora([&] { deliverWaiting(waitingRows(), connection(), sourcePath(), false); });
}

} // namespace quorel
