#include "lessons/quadrinhos.h"

#include "lessons/andamento.h"
#include "lessons/executa_aula.h"
#include "lessons/posicao.h"
#include "lessons/programas_filhos.h"
#include "lessons/vista_blocos.h"
#include "platform/costuras.h"
#include "startup/quorel_zeto.h"
#include "startup/sistema_util.h"
#include "startup/texto_util.h"

using namespace Qt::StringLiterals;

namespace quorel {

static constexpr int kCampoArquivo = 9; // of the lesson text
static constexpr float kEsperaAbertura = 1000; // ms, for the viewer to come up
static constexpr float kEsperaFecho = 1000; // ms between two looks at it
static constexpr float kEsperaInicial = 5000; // ms, before the first of them

static Janela viewer()
{
    return procuraFilho(u"Quadrinhos -"_s);
}

static QString directoryOfArqs()
{
    const QString base = gConfig.Config(u"DIRQUOREL"_s);
    return base.isEmpty() ? gSistema.DirWindows() + u"\\Quorel2001\\Arqs\\"_s : base + u"\\Arqs\\"_s;
}

void mostraQuadrinhos(const QString &aula)
{
    const QString arquivo = gTexto.Campo(aula, kCampoArquivo, u"<SPÇ>"_s, 1);
    if (!gTexto.ArquivoExiste(gSistema.DirWindows() + u"\\QUOREL2001\\Arqs\\"_s + arquivo))
        return;
    baixaFilhos();
    DocumentRequest request;
    request.owner = vistaBlocos().handleActive();
    request.verb = u"OPEN"_s;
    request.document = directoryOfArqs() + arquivo;
    request.directory = arquivo; // Kept: the file's name, not a directory; viewers are set up for being called so
    request.show = ShowMode::Maximized;
    openDocument(request);
    gSistema.Pausa(kEsperaAbertura);
    placeWindow(viewer(), Ordem::Top, kKeepSize);
    placeWindow(viewer(), Ordem::Topmost, kKeepSize | kKeepPosition);
    if (!gExecExterno)
        AguardaQuadrinhos();
}

void AguardaQuadrinhos()
{
    gSistema.Pausa(kEsperaInicial);
    do
        gSistema.Pausa(kEsperaFecho);
    while (viewer() != 0);
    moveAula(1);
    if (!aulaExiste())
        return;
    tomaRoteiro();
    executaAulaAtual();
}

} // namespace quorel
