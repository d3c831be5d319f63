#include "app/inicio.h"

#include "app/entregador.h"
#include "catalogue/catalogo.h"
#include "catalogue/lista_selecionada.h"
#include "catalogue/vistas.h"
#include "data/bd.h"
#include "data/cadastros.h"
#include "lessons/andamento.h"
#include "lessons/vista_andamento.h"
#include "lessons/vista_blocos.h"
#include "platform/costuras.h"
#include "platform/endereco.h"
#include "platform/eventos.h"
#include "platform/fim.h"
#include "platform/protocolo.h"
#include "shell/faux.h"
#include "shell/fblocos.h"
#include "shell/fprincip.h"
#include "shell/janelas.h"
#include "startup/estado.h"
#include "startup/parametros.h"
#include "startup/sistema_util.h"

namespace quorel {

using namespace Qt::StringLiterals;

static void askFirstInstance()
{
    if (gSistema.ProcuraJanela(QString::fromUtf16(kTituloGerenciador), kModoBusca, false) == 0)
        return;
    const Resposta resposta =
        caixa({.texto = u"Este programa já está sendo executado.\r\nDeseja executá-lo mesmo assim"_s,
            .titulo = u"Atenção"_s,
            .icone = Icone::Informacao,
            .botoes = Botoes::SimNao});
    if (resposta == Resposta::Nao)
        encerraPrograma();
}

/// Without a place to be reached at, the answers of the lessons would be lost without a word.
static void tellUnreachable()
{
    if (const QString why = whyUnreachable(); !why.isEmpty())
        caixa({.texto = why, .icone = Icone::Aviso});
}

static void openRegister()
{
    criaBD();
    AbreBDAlunos();
    CopiaCadastros();
    gBD->deliverWaitingRows();
    beforeEnd([] { Entregador::leavesToAnother(); });
}

static void connectViews(Janelas &janelas)
{
    usaVistas({.roteiros = &janelas.blocos(), .palco = &janelas.blocos(), .meses = &janelas.painel()});
    setVistaBlocos(&janelas.blocos());
    setVistaAndamento(&janelas.andamento());
}

void iniciaPrograma(const QString &linhaDeComando, Janelas &janelas)
{
    const HeldUserInput untilStarted; // windows appear before the start is over
    askFirstInstance();
    LeParametros(linhaDeComando);
    openRegister();
    gRotAtual = 1;
    gAulaAtual = 1;
    connectViews(janelas);
    MontaCatalogo();
    janelas.blocos().carrega();
    tellUnreachable();
    leListaSelecionada();
    gAluno = kGenerico;
    gClasse = kGenerico; // Kept: /CLASSE: has done its work in the register's opening and ends here
    janelas.principal().acertaBotao();
    janelas.principal().mostra();
}

} // namespace quorel
