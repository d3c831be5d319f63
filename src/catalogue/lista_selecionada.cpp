#include "catalogue/lista_selecionada.h"

#include "catalogue/estado.h"
#include "platform/costuras.h"
#include "startup/quorel_zeto.h"
#include "startup/sistema_util.h"
#include "startup/texto_util.h"

namespace quorel {

using namespace Qt::StringLiterals;

static const QString kArquivo = u"\\RotSelec.cfg"_s;
static const QString kTituloSelecao = u"Selecionador de Roteiros"_s;

static QString arquivoDoWindows()
{
    return gSistema.DirWindows() + u"\\QUOREL2001"_s + kArquivo;
}

void leListaSelecionada()
{
    const QString diretorio = gConfig.Config(u"DIRQUOREL"_s);
    QString caminho = diretorio + kArquivo;
    if (diretorio.isEmpty() || !gTexto.ArquivoExiste(caminho))
        caminho = arquivoDoWindows();
    // Kept: without a file the list stays, so that a "no" leaves in force what was clicked.
    if (gTexto.ArquivoExiste(caminho))
        gRotSelec = gTexto.LeArquivo(caminho, 0, 0);
}

static void gravaListaSelecionada()
{
    const QString diretorio = gConfig.Config(u"DIRQUOREL"_s);
    gTexto.GravaArquivo(diretorio.isEmpty() ? arquivoDoWindows() : diretorio + kArquivo, gRotSelec, 0, 0);
}

void iniciaSelecao()
{
    gSelecionando = true;
    gRotSelec.clear();
}

void terminaSelecao()
{
    Caixa pergunta;
    pergunta.icone = Icone::Informacao;
    pergunta.botoes = Botoes::SimNao;
    if (gRotSelec.isEmpty()) {
        pergunta.texto = u"Confirma a exclusão da lista dos Roteiros Selecionado"_s;
        pergunta.titulo = u"Exclusão da Lista"_s;
    } else {
        pergunta.texto = u"Confirma a substituição da lista dos Roteiros Selecionado"_s;
        pergunta.titulo = u"Substituição da Lista"_s;
    }
    if (caixa(pergunta) == Resposta::Sim)
        gravaListaSelecionada();
    leListaSelecionada();
    gSelecionando = false;
}

void incluiRoteiro(std::optional<qint32> cod)
{
    if (cod)
        gRotSelec += QString::number(*cod) + u"\r\n"_s;
    caixa({u"Roteiro Incluído"_s, kTituloSelecao, Icone::Informacao});
}

bool autorizaRoteiro(std::optional<qint32> cod)
{
    // Kept: a piece of text, not a line; 261 may run where only 12610 is listed.
    if (gRotSelec.isEmpty() || (cod && gTexto.ContaDelimitador(gRotSelec, QString::number(*cod), 0) > 0))
        return true;
    caixa({u"Roteiro não autorizado"_s, kTituloSelecao, Icone::Informacao});
    return false;
}

} // namespace quorel
