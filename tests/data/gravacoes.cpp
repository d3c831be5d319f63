#include "gravacoes.h"

#include "data/bd.h"
#include "data/consultas.h"
#include "lessons/andamento.h"
#include "lessons/log_aulas.h"
#include "startup/estado.h"

using namespace Qt::StringLiterals;

namespace quorel::teste {

static const QString kClasses = u"RsClasses"_s;

void openClasses()
{
    gBD->Records_Set(consultas::classesPorNome(), kClasses);
}

static void save(const QString &text)
{
    gBD->TransacaoInicio();
    for (const QString &field : {u"CL_Prof"_s, u"CL_Nome"_s, u"CL_Senha"_s})
        gBD->RegistroTroca(field, text, kClasses, kTrocaTexto);
    gBD->RegistroAtualiza(kClasses);
    gBD->TransacaoFim();
    gBD->ReAtualizaRecordSet(kClasses);
    QString criterion = u"CL_Prof='"_s + text + u'\'';
    gBD->Pesquisa(criterion, kClasses, 0);
}

void saveNewClass(const QString &text)
{
    gBD->RegistroAdiciona(kClasses);
    save(text);
}

void saveFirstClass(const QString &text)
{
    gBD->MoveParaComecoDeArquivo(kClasses);
    save(text);
}

void logRow(qint32 roteiro)
{
    gAluno = kGenerico;
    gClasse = kGenerico;
    gCodRoteiro = roteiro;
    gNomeRoteiro = u"Rota"_s;
    gRespostas = u"A:E:"_s;
    GravaLog(gRespostas);
}

} // namespace quorel::teste
