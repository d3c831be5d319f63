#include "lessons/andamento.h"

#include "lessons/dismissal.h"
#include "lessons/endereco_blocos.h"
#include "lessons/vista_andamento.h"
#include "lessons/vista_blocos.h"

namespace quorel {

void reiniciaLessons()
{
    gRotAtual = 0;
    gAulaAtual = 0;
    gCodRoteiro = 0;
    gNomeRoteiro.clear();
    gEmRoteiro = false;
    gExecExterno = false;
    gRespostas.clear();
    gMensagem = {};
    for (Janela *janela :
        {&gJanelaFilha, &gJanelaZeto, &gJanelaLivros, &gJanelaVrel, &gJanelaCalc, &gJanelaDesenho, &gJanelaGancho})
        *janela = 0;
    gProcAnterior = {};
    gEnderecoBlocos.reset();
    setVistaBlocos(nullptr);
    setVistaAndamento(nullptr);
    resetDismissal();
}

} // namespace quorel
