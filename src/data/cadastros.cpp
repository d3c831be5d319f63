#include "data/cadastros.h"

#include "data/bd.h"
#include "data/conexao.h"
#include "data/consultas.h"
#include "data/errobd.h"
#include "data/textos.h"
#include "platform/costuras.h"
#include "platform/erro.h"
#include "platform/eventos.h"
#include "startup/arquivo_util.h"
#include "startup/estado.h"
#include "startup/quorel_zeto.h"
#include "startup/sistema_util.h"
#include "startup/texto_util.h"
#include "startup/valor.h"

using namespace Qt::StringLiterals;

namespace quorel {

static const QString kClasses = u"RsClasses"_s;
static const QString kAlunos = u"RsAlunos"_s;
static const QString kLigacoes = u"rsClxAl"_s;
static const QString kSemCadastro =
    u"O programa segue sem o cadastro, e as respostas esperam nesta máquina. Quando isto estiver resolvido, feche-o e abra-o de novo."_s;
static const QString kAbreDepois =
    u"O programa segue sem o cadastro, e o abre assim que puder; até lá as respostas esperam nesta máquina."_s;

/// Opens the register where the configuration says. @return false when there is none, which was told in a box
static bool opensRegister()
{
    const QString folder = gConfig.Config(u"ZETO_CAD"_s);
    const QString path = folder + u"\\Cadastros.mdb"_s;
    if (gTexto.ArquivoExiste(path)) {
        gBD->Source(path);
        return true;
    }
    if (!gConfig.Config(u"DIRWIN"_s).isEmpty()) {
        // Kept: with DIRWIN set the Windows directory is never looked in, and a missing register is not told.
        if (gTexto.ArquivoExiste(path))
            gBD->Source(path);
        return true;
    }
    const QString fallback = gSistema.DirWindows() + u"\\Cadastros.mdb"_s;
    if (!gTexto.ArquivoExiste(fallback)) {
        caixa({.texto = u"Arquivo de Cadastros dos alunos não foi localizado"_s,
            .titulo = folder,
            .icone = Icone::Informacao});
        return false;
    }
    gBD->Source(fallback);
    return true;
}

/// The class that the command line named, and the pupils of it or all.
static void opensPupils()
{
    if (!gNomeClasse.isEmpty() || gClasse != 0)
        gBD->Records_Set(consultas::todasClasses(), u"rsClasses"_s);
    if (!gNomeClasse.isEmpty() && gClasse == 0) {
        QString criterion = u"CL_NOME like "_s + gNomeClasse + u'*';
        gClasse = inteiro32(valorNumerico(gBD->Pesquisa(criterion, u"rsClasses"_s, u"CL_Cod"_s, true)));
    }
    gBD->Records_Set(gClasse == 0 ? consultas::alunosEClasses() : consultas::alunosEClasses(gClasse), u"RSAluno"_s);
}

/// @param tells  whether a failure is told; the operation that needs the register has its own words
static void opensAll(bool tells)
{
    try {
        gBD->expectSource(gConfig.Config(u"ZETO_CAD"_s) + u"\\Cadastros.mdb"_s);
        if (!opensRegister())
            return;
        CriaGenericos();
        opensPupils();
        AbreTabelasCadastro();
    } catch (const ErroExecucao &erro) {
        const auto *store = dynamic_cast<const ErroBD *>(&erro);
        const bool busy = store && store->especie() == EspecieFalha::Ocupado;
        if (busy)
            gBD->openAtNextNeed(
                [] { opensAll(false); }); // with a part of it open every window would fail in its own way
        if (!tells)
            return;
        caixa({.texto = QString::number(erro.numero()) + u' ' + erro.descricao() + kFimLinha
                + (busy ? kAbreDepois : kSemCadastro),
            .titulo = u"AbreBDAlunos"_s,
            .icone = Icone::Informacao});
    }
}

void AbreBDAlunos()
{
    opensAll(true);
}

namespace {

struct Valor
{
    QString campo;
    QVariant valor;
    qint32 tipo;
};

} // namespace

static bool lacksGeneric(const QString &alias, const QString &procura, const QString &mostra)
{
    QString criterion = procura + u" = "_s + QString::number(kGenerico);
    return gBD->Pesquisa(criterion, alias, mostra, true).isEmpty();
}

/// Adds the generic row of a table where it is missing. @param procura  the column that has 9999 in it
static void addGeneric(const QString &alias, const QString &procura, const QString &mostra, const QList<Valor> &valores)
{
    if (!lacksGeneric(alias, procura, mostra))
        return;
    gBD->RegistroAdiciona(alias, true);
    gBD->TransacaoInicio();
    for (const Valor &each : valores)
        gBD->RegistroTroca(each.campo, each.valor, alias, each.tipo, true);
    gBD->RegistroAtualiza(alias, true);
    gBD->TransacaoFim();
    gBD->ReAtualizaRecordSet(alias, true);
}

static void openAllTables()
{
    gBD->Records_Set(consultas::todasClasses(), u"rsClasses"_s);
    gBD->Records_Set(consultas::todosAlunos(), u"rsAlunos"_s);
    gBD->Records_Set(consultas::todasLigacoes(), kLigacoes);
}

static void addGenerics()
{
    addGeneric(kClasses, u"CL_COD"_s, u"CL_COD"_s,
        {{u"CL_COD"_s, kGenerico, kTrocaNumero}, {u"CL_Prof"_s, u"Genérica"_s, kTrocaTexto},
            {u"CL_Nome"_s, u"Genérica"_s, kTrocaTexto}, {u"CL_Senha"_s, u"Chavema"_s, kTrocaTexto}});
    addGeneric(kAlunos, u"AL_COD"_s, u"AL_COD"_s,
        {{u"AL_COD"_s, kGenerico, kTrocaNumero}, {u"AL_Nome"_s, u"Genérico"_s, kTrocaTexto}});
    addGeneric(kLigacoes, u"AL_COD"_s, u"CL_COD"_s,
        {{u"AL_COD"_s, kGenerico, kTrocaNumero}, {u"CL_COD"_s, kGenerico, kTrocaNumero},
            {u"CLxAl_DataIngr"_s, agora(), kTrocaComoEsta}});
}

void CriaGenericos()
{
    openAllTables();
    const bool lacks = lacksGeneric(kClasses, u"CL_COD"_s, u"CL_COD"_s)
        || lacksGeneric(kAlunos, u"AL_COD"_s, u"AL_COD"_s) || lacksGeneric(kLigacoes, u"AL_COD"_s, u"CL_COD"_s);
    if (!lacks)
        return;
    // Another machine may be at it as well: what is missing is looked for once more when nobody else writes.
    gBD->TransacaoInicio();
    try {
        ignora([] { gBD->Source()->reserve(); }); // a lock that can't be had is told by the writes
        openAllTables();
        addGenerics();
    } catch (const ErroExecucao &) { // nobody else would end it, and it holds the lock of all
        ignora([] { gBD->TransacaoCancela(); });
        throw;
    }
    gBD->TransacaoFim();
}

void AbreTabelasCadastro()
{
    const QString path = gConfig.Config(u"ZETO_CAD"_s) + u"\\Cadastros.mdb"_s;
    if (path.isEmpty()) { // Kept: never so; the register's window was closed here
        caixa({.texto = u"Erro no arquivo de Configuração no Cadastro de Alunos !!!"_s});
        return;
    }
    gBD->Records_Set(consultas::alunosPorNome(), kAlunos, {}, kCursorKeyset);
    gBD->Records_Set(consultas::classesPorNome(), kClasses, {}, kCursorKeyset);
}

void CopiaCadastros()
{
    const QString name = u"\\CADASTROS.MDB"_s;
    const QString source = gConfig.Config(u"ZETO_CAD"_s) + name;
    if (!gTexto.ArquivoExiste(source))
        return;
    gArquivo.Abre(source);
    if (!gArquivo.SomenteLeitura())
        return;
    const QString folder = gSistema.DirWindows();
    gConfig.SetaCFG(gTexto.GravaChave(gConfig.TextoCnf, u"ZETO_CAD"_s, folder, u"="_s, kFimLinha));
    const QString target = gConfig.Config(u"ZETO_CAD"_s) + name;
    if (!gTexto.ArquivoExiste(target)) {
        if (gArquivo.Copia(source, target))
            eventTurn();
        else
            caixa({.texto = u"Erro ao copiar o arquivo CADASTROS.MDB para "_s + folder, .icone = Icone::Critico});
    }
    if (!gArquivo.TiraSomenteLeitura(target))
        caixa(
            {.texto = u"Erro ao modificar o atributo de leitura do arquivo CADASTROS.MDB"_s, .icone = Icone::Critico});
}

} // namespace quorel
