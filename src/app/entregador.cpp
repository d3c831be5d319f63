#include "app/entregador.h"

#include "data/bd.h"
#include "data/pendentes.h"
#include "lessons/andamento.h"
#include "platform/erro.h"

#include <QCoreApplication>
#include <QRandomGenerator>
#include <QStandardPaths>
#include <QStringList>

#include <algorithm>

namespace quorel {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

static constexpr auto kLongest = 300s;
static constexpr int kGrowth = 2;

static QString program()
{
    return QStandardPaths::findExecutable(u"quorel-cadastro"_s, {QCoreApplication::applicationDirPath()});
}

static QStringList arguments()
{
    return {u"pendentes"_s, u"entrega"_s};
}

static bool rowsWait(Pendentes &pendentes)
{
    bool wait = false;
    ignora([&] { wait = pendentes.count() > 0; });
    return wait;
}

Entregador::Entregador(std::chrono::milliseconds primeiro) : mPausa(primeiro)
{
    mProcess.setStandardInputFile(QProcess::nullDevice());
    mProcess.setStandardOutputFile(QProcess::nullDevice());
    mProcess.setStandardErrorFile(QProcess::nullDevice());
    mTimer.setSingleShot(true);
    connect(&mTimer, &QTimer::timeout, this, &Entregador::looks);
    mTimer.start(mPausa);
}

void Entregador::looks()
{
    const bool free = !gEmRoteiro && mProcess.state() == QProcess::NotRunning && gBD;
    const bool due = free && rowsWait(gBD->waitingRows());
    if (due)
        mProcess.start(program(), arguments());
    if (due)
        mPausa = std::min<std::chrono::milliseconds>(mPausa * kGrowth, kLongest);
    else
        mPausa = std::min(mPausa, kPrimeiro);
    // Machines of one room that were switched on together don't come all at once.
    const auto spread = std::chrono::milliseconds(QRandomGenerator::global()->bounded(qint64(mPausa.count()) + 1));
    mTimer.start(mPausa + spread);
}

void Entregador::leavesToAnother()
{
    Pendentes pendentes(waitingPlace().arquivo);
    if (rowsWait(pendentes))
        QProcess::startDetached(program(), arguments());
}

} // namespace quorel
