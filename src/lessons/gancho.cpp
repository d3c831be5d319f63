#include "lessons/gancho.h"

#include "lessons/andamento.h"
#include "lessons/dismissal.h"
#include "lessons/endereco_blocos.h"
#include "lessons/espia.h"
#include "lessons/mensagens.h"
#include "platform/aplicacao.h"

namespace quorel {

Janela janelaBlocos()
{
    if (!gEnderecoBlocos)
        gEnderecoBlocos = std::make_unique<Endereco>();
    return gEnderecoBlocos->handle();
}

void InstalaGancho(Janela janela)
{
    if (janela == 0 || gJanelaGancho != 0 || janela != janelaBlocos())
        return;
    gJanelaGancho = janela;
    gProcAnterior = gEnderecoBlocos->replaceProc(ProcJanela);
    gEnderecoBlocos->publish(QString::fromUtf16(kTituloGerenciador));
}

void RemoveGancho()
{
    if (gJanelaGancho == 0)
        return;
    gEnderecoBlocos->replaceProc(gProcAnterior); // stays in gProcAnterior: a message may be on its way through the hook
    gEnderecoBlocos->withdraw();
    gJanelaGancho = 0;
}

qintptr ProcJanela(Janela janela, quint32 mensagem, quintptr wParam, qintptr lParam)
{
    try {
        if (mensagem == kCopyData && lParam != 0) {
            tellChegada(wParam, lParam);
            // The address comes as a number: that is what a window procedure is given.
            const auto &dados = *reinterpret_cast<const CopyData *>(lParam); // NOLINT(performance-no-int-to-ptr)
            const auto codigo = quint32(dados.code);
            RecebeMensagem(lParam);
            noteDeparture(wParam, codigo);
        }
        const WindowProc anterior = gProcAnterior;
        return callWindowProc(anterior, janela, mensagem, wParam, lParam);
    } catch (const std::exception &falha) {
        encerraPorFalha(falha);
    }
}

} // namespace quorel
