#include "lessons/log_aulas.h"

#include "catalogue/estado.h"
#include "data/bd.h"
#include "lessons/andamento.h"
#include "platform/costuras.h"
#include "platform/eventos.h"
#include "startup/estado.h"

#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace quorel {

static const QString kRSLog = u"RSLog"_s;

void AbreLog()
{
    if (gAluno == 0)
        return;
    gBD->Records_Set(u"SELECT * FROM LG_LogAulas where LG_Aluno="_s + QString::number(gAluno) + " and LG_Classe="_L1
            + QString::number(gClasse) + " order by LG_Data DESC"_L1,
        kRSLog, QString(), kCursorStatic, kTravaOtimista, kOpcaoTexto);
    eventTurn();
}

static void writeRow(const QString &respostas)
{
    gBD->TransacaoInicio();
    gBD->RegistroAdiciona(kRSLog);
    gBD->RegistroTroca(u"LG_Aluno"_s, gAluno, kRSLog);
    gBD->RegistroTroca(u"LG_Classe"_s, gClasse, kRSLog);
    gBD->RegistroTroca(u"LG_Data"_s, agora(), kRSLog);
    gBD->RegistroTroca(u"RO_Cod"_s, gCodRoteiro, kRSLog);
    gBD->RegistroTroca(u"LG_Resp"_s, gNomeDisciplina + "<disc>"_L1 + gNomeRoteiro + "<rot>"_L1 + respostas, kRSLog);
    gBD->RegistroAtualiza(kRSLog);
    gBD->TransacaoFim();
    gBD->ReAtualizaRecordSet(kRSLog);
}

void GravaLog(QString &respostas)
{
    const auto emptied = qScopeGuard([&] { respostas.clear(); });
    if (gAluno == 0)
        return;
    if (!gBD->ExisteAlias(kRSLog))
        AbreLog();
    if (gCodRoteiro > 0)
        writeRow(respostas);
}

} // namespace quorel
