#include "tools/blocos_comando.h"

#include "autoria/checker.h"
#include "platform/caminho.h"
#include "platform/costuras.h"
#include "startup/quorel_zeto.h"
#include "startup/sistema_util.h"
#include "startup/texto_util.h"
#include "tools/blocos_fonte.h"
#include "tools/blocos_lista.h"
#include "tools/blocos_oficina.h"

#include <QJsonDocument>

#include <algorithm>
#include <iterator>

namespace quorel::blocos {

using namespace Qt::StringLiterals;

namespace {

enum Codigo : int { kBem = 0, kAConsertar = 1, kNaoRodou = 2 };

const QString kAjuda = uR"(Uso:
  quorel-blocos lista ARQUIVO|DIRETÓRIO [--json]
      mostra o que o programa lê de um arquivo de bloco, ou o catálogo do diretório de um nível
  quorel-blocos verifica ARQUIVO|DIRETÓRIO... [--json] [--cfg ARQUIVO]
      mostra, um por linha, com arquivo, linha e coluna, o que o programa passaria por cima em silêncio
  quorel-blocos faz FONTE|DIRETÓRIO ARQUIVO.edb|DIRETÓRIO [--json] [--cfg ARQUIVO]
      faz da fonte de um bloco o arquivo .edb, ou das fontes (*.txt) de um diretório os do diretório de um nível
  quorel-blocos desfaz ARQUIVO.edb FONTE [--sobrescreve]
      volta a fazer de um arquivo .edb a fonte dele
  quorel-blocos novo FONTE [TIPO] [--sobrescreve]
      grava uma fonte de exemplo, comentada, com cada tipo de exercício, ou só com aquele
%1  quorel-blocos --help

Opções:
  --json          lista em JSON; o que há para consertar, como os editores o leem (LSP Diagnostic)
  --sobrescreve   grava por cima da fonte que já existe
  --cfg ARQUIVO   o zeto_cnf.txt com os diretórios de figuras, sons e aulas HTML; sem ela vale
                  <windir>\QUOREL2001\zeto_cnf.txt. <windir> é QUOREL_WINDIR, ou o diretório do sistema.

Código de saída: 0 tudo em ordem (ou só notas), 1 há erros ou avisos, 2 não foi possível executar.
)"_s;

struct Pedido
{
    QString comando;
    QStringList caminhos;
    bool json = false;
    bool overwrite = false;
    QString cfg;
};

/// @return nothing for arguments that make no sense
std::optional<Pedido> parse(const QStringList &argumentos)
{
    Pedido pedido;
    for (qsizetype n = 0; n < argumentos.size(); ++n) {
        const QString &argumento = argumentos[n];
        if (argumento == "--json"_L1)
            pedido.json = true;
        else if (argumento == "--sobrescreve"_L1)
            pedido.overwrite = true;
        else if (argumento == "--cfg"_L1 && n + 1 < argumentos.size())
            pedido.cfg = argumentos[++n];
        else if (argumento.startsWith(u"--"))
            return std::nullopt;
        else if (pedido.comando.isEmpty())
            pedido.comando = argumento;
        else
            pedido.caminhos += argumento;
    }
    const qsizetype count = pedido.caminhos.size();
    const bool faz = pedido.comando == "faz"_L1 && count == 2 && !pedido.overwrite;
    const bool desfaz = pedido.comando == "desfaz"_L1 && count == 2 && !pedido.json;
    const bool novo = pedido.comando == "novo"_L1 && (count == 1 || count == 2) && !pedido.json;
    if (faz || desfaz || novo)
        return pedido;
    const bool lista = pedido.comando == "lista"_L1 && pedido.caminhos.size() == 1 && pedido.cfg.isEmpty();
    const bool verifica = pedido.comando == "verifica"_L1 && !pedido.caminhos.isEmpty();
    return lista || verifica ? std::optional(pedido) : std::nullopt;
}

int lista(const Pedido &pedido, QTextStream &saida, QTextStream &erros)
{
    const QString &caminho = pedido.caminhos.first();
    const std::optional<QList<BlockFile>> arquivos = blockFilesOf(caminho);
    const bool isFile = arquivos && arquivos->size() == 1 && arquivos->first().path == caminho;
    const std::optional<QByteArray> texto = isFile ? readWhole(caminho) : std::nullopt;
    if (!arquivos || (isFile && !texto)) {
        erros << u"Não é um arquivo de bloco nem um diretório com blocos: "_s << caminho << Qt::endl;
        return kNaoRodou;
    }
    QStringList unread;
    int end = 0;
    if (isFile) {
        const QJsonObject bloco = jsonDoBloco(*texto, end);
        saida << (pedido.json ? QString::fromUtf8(QJsonDocument(bloco).toJson()) : textoDoBloco(bloco));
    } else {
        const QJsonArray catalogo = jsonDoDiretorio(*arquivos, unread);
        saida << (pedido.json ? QString::fromUtf8(QJsonDocument(catalogo).toJson()) : textoDoDiretorio(catalogo));
    }
    for (const QString &name : unread)
        erros << u"O catálogo não lê o nome deste arquivo, e com ele o programa não começa: "_s << name << Qt::endl;
    if (end > 0)
        erros << u"A leitura acaba no Roteiro "_s << end << u"; quorel-blocos verifica diz por quê"_s << Qt::endl;
    return unread.isEmpty() && end == 0 ? kBem : kAConsertar;
}

/// Loads the configuration. @return whether there is one
/// @param quiet  say nothing where none was asked for and there is none
bool loadConfig(const Pedido &pedido, bool quiet, QTextStream &erros)
{
    const QString padrao = gSistema.DirWindows() + u"\\QUOREL2001\\zeto_cnf.txt"_s;
    const QString caminho = pedido.cfg.isEmpty() ? padrao : backslashPath(pedido.cfg);
    if (!gTexto.ArquivoExiste(caminho)) {
        if (quiet && pedido.cfg.isEmpty())
            return false;
        erros << u"Sem configuração ("_s << nativePath(caminho) << u"): figuras, sons e aulas HTML não são procurados"_s
              << Qt::endl;
        return false;
    }
    // No register is looked for: a name that no file bears.
    gConfig = Quorel_Zeto();
    gConfig.Init(caminho, u"\\*"_s);
    return true;
}

int verifica(const Pedido &pedido, QTextStream &saida, QTextStream &erros)
{
    const bool comConfig = loadConfig(pedido, false, erros);
    if (!comConfig && !pedido.cfg.isEmpty())
        return kNaoRodou;
    Checker checker(comConfig);
    Findings all;
    int codigo = kBem;
    for (const QString &caminho : pedido.caminhos) {
        const std::optional<QList<BlockFile>> arquivos = blockFilesOf(caminho);
        if (!arquivos) {
            erros << u"Não é um arquivo nem um diretório com blocos: "_s << caminho << Qt::endl;
            codigo = kNaoRodou;
            continue;
        }
        for (const BlockFile &arquivo : *arquivos) {
            const std::optional<QByteArray> texto = readWhole(arquivo.path);
            if (!texto) {
                erros << u"Não foi possível ler: "_s << arquivo.path << Qt::endl;
                codigo = kNaoRodou;
                continue;
            }
            Findings found = checker.check(arquivo, *texto);
            if (!pedido.json)
                printFindings(found, false, saida);
            std::ranges::move(found, std::back_inserter(all));
        }
    }
    if (pedido.json)
        printFindings(all, true, saida);
    return needMending(all) ? qMax(codigo, int(kAConsertar)) : codigo;
}

} // namespace

int executa(const QStringList &argumentos, QTextStream &saida, QTextStream &erros)
{
    if (argumentos.contains("--help"_L1)) {
        saida << kAjuda.arg(ajudaDaOficina());
        return kBem;
    }
    // The libraries' boxes have no window here.
    costuras().box = [&erros](const Caixa &caixa) {
        erros << caixa.texto << Qt::endl;
        return caixa.botoes == Botoes::Ok ? Resposta::Ok : Resposta::Nao;
    };
    if (const std::optional<int> code = executaOficina(argumentos, saida, erros))
        return *code;
    const std::optional<Pedido> pedido = parse(argumentos);
    if (!pedido) {
        erros << kAjuda.arg(ajudaDaOficina());
        return kNaoRodou;
    }
    PedidoDeFonte fonte{pedido->caminhos, pedido->json, pedido->overwrite, false};
    if (pedido->comando == "faz"_L1) {
        fonte.withMedia = loadConfig(*pedido, true, erros);
        return fonte.withMedia || pedido->cfg.isEmpty() ? faz(fonte, saida, erros) : int(kNaoRodou);
    }
    if (pedido->comando == "desfaz"_L1)
        return desfaz(fonte, saida, erros);
    if (pedido->comando == "novo"_L1)
        return novo(fonte, saida, erros);
    return pedido->comando == "lista"_L1 ? lista(*pedido, saida, erros) : verifica(*pedido, saida, erros);
}

} // namespace quorel::blocos
