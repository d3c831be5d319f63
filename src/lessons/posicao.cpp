#include "lessons/posicao.h"

#include "catalogue/estado.h"
#include "lessons/andamento.h"
#include "lessons/executa_aula.h"
#include "lessons/vista_andamento.h"
#include "startup/texto_util.h"

#include <limits>

using namespace Qt::StringLiterals;

namespace quorel {

const RoteiroRec &roteiroAtual()
{
    return gRoteiros[gRotAtual];
}

bool aulaExiste()
{
    return gAulaAtual <= roteiroAtual().Aulas.upperBound();
}

void moveAula(int passo)
{
    const int nova = gAulaAtual + passo;
    if (nova < std::numeric_limits<qint16>::min() || nova > std::numeric_limits<qint16>::max())
        throw ErroExecucao(kFalhaEstouro);
    gAulaAtual = qint16(nova);
}

void tomaRoteiro()
{
    gCodRoteiro = roteiroAtual().Cod;
    gNomeRoteiro = roteiroAtual().Nome;
}

void executaAulaAtual()
{
    vistaAndamento().aulaBegan(gAulaAtual, roteiroAtual().Aulas.upperBound());
    QString tipo = gTexto.Campo(roteiroAtual().Aulas[gAulaAtual].Tipo, 1, u"\t"_s, 1);
    ExecutaAula(gRoteiros.edit(gRotAtual).Aulas.edit(gAulaAtual).Linha, tipo);
}

} // namespace quorel
