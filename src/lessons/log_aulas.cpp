#include "lessons/log_aulas.h"

#include "catalogue/estado.h"
#include "data/bd.h"
#include "data/consultas.h"
#include "data/linha_log.h"
#include "lessons/andamento.h"
#include "platform/costuras.h"
#include "platform/erro.h"
#include "platform/eventos.h"
#include "startup/estado.h"

#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace quorel {

static const QString kRSLog = u"RSLog"_s;

static BD &bank()
{
    if (!gBD)
        throw ErroExecucao(kFalhaObjeto);
    return *gBD;
}

void AbreLog()
{
    if (gAluno == 0)
        return;
    bank().deferRecords_Set(consultas::logDoAluno(gAluno, gClasse), kRSLog);
    eventTurn();
}

static void writeRow(const QString &respostas)
{
    bank().RegistraLog({.aluno = gAluno,
                           .classe = gClasse,
                           .data = agora(),
                           .roteiro = gCodRoteiro,
                           .respostas = gNomeDisciplina + "<disc>"_L1 + gNomeRoteiro + "<rot>"_L1 + respostas},
        kRSLog);
}

void GravaLog(QString &respostas)
{
    const auto emptied = qScopeGuard([&] { respostas.clear(); });
    if (gAluno == 0)
        return;
    if (bank().Source() && !bank().ExisteAlias(kRSLog))
        AbreLog();
    if (gCodRoteiro > 0)
        writeRow(respostas);
}

} // namespace quorel
