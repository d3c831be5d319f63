#include "lessons/log_aulas.h"

#include "catalogue/estado.h"
#include "data/bd.h"
#include "data/consultas.h"
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
    bank().Records_Set(consultas::logDoAluno(gAluno, gClasse), kRSLog, {}, kCursorKeyset);
    eventTurn();
}

static void writeRow(const QString &respostas)
{
    bank().TransacaoInicio();
    bank().RegistroAdiciona(kRSLog);
    bank().RegistroTroca(u"LG_Aluno"_s, gAluno, kRSLog);
    bank().RegistroTroca(u"LG_Classe"_s, gClasse, kRSLog);
    bank().RegistroTroca(u"LG_Data"_s, agora(), kRSLog);
    bank().RegistroTroca(u"RO_Cod"_s, gCodRoteiro, kRSLog);
    bank().RegistroTroca(u"LG_Resp"_s, gNomeDisciplina + "<disc>"_L1 + gNomeRoteiro + "<rot>"_L1 + respostas, kRSLog);
    bank().RegistroAtualiza(kRSLog);
    bank().TransacaoFim();
    bank().ReAtualizaRecordSet(kRSLog);
}

void GravaLog(QString &respostas)
{
    const auto emptied = qScopeGuard([&] { respostas.clear(); });
    if (gAluno == 0)
        return;
    if (!bank().ExisteAlias(kRSLog))
        AbreLog();
    if (gCodRoteiro > 0)
        writeRow(respostas);
}

} // namespace quorel
