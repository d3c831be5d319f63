#include "shell/fim_da_sessao.h"

#include "lessons/dismissal.h"
#include "lessons/gancho.h"
#include "lessons/mensagens.h"
#include "platform/eventos.h"
#include "platform/fim.h"
#include "platform/protocolo.h"
#include "shell/faux.h"
#include "shell/fblocos.h"
#include "shell/fprincip.h"
#include "shell/janelas.h"
#include "startup/sistema_util.h"

namespace quorel {

void encerraSessao(Janelas &janelas)
{
    const Janela gerenciador = gSistema.ProcuraJanela(QString::fromUtf16(kTituloGerenciador), kModoBusca, true);
    EnviaTexto(gerenciador, handleOf(&janelas.principal()), MSG_FECHA_BLOCOS, QString());
    janelas.painel().desmarcaSelecao();
    despedeFilhos(); // the hook still stands: what they answer, at once or a little later, is logged
    waitForChildren();
    RemoveGancho();
    janelas.blocos().setTmrRot(false);
    eventTurn();
    janelas.painel().hide();
    janelas.blocos().hide();
    janelas.principal().hide();
    encerraPrograma();
}

} // namespace quorel
