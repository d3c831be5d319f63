#include "tools/cadastro_comando.h"

#include "data/bd.h"
#include "data/errobd.h"
#include "data/manutencao.h"
#include "data/pendentes.h"
#include "platform/caminho.h"
#include "platform/costuras.h"
#include "platform/erro.h"
#include "tools/cadastro_importa.h"
#include "tools/cadastro_pendentes.h"

#include <algorithm>
#include <array>

namespace quorel::cadastro {

using namespace Qt::StringLiterals;

namespace {

enum Codigo : int { kBem = 0, kAConsertar = 1, kNaoRodou = 2 };

const QString kAjuda = uR"(Uso:
  quorel-cadastro cria ARQUIVO
      cria um cadastro que só tem a classe e o aluno genéricos; um arquivo que existe fica como está
  quorel-cadastro importa ARQUIVO LISTA
      acrescenta classes e alunos de um texto (UTF-8 ou página de código 1252), um por linha, ou nada, se uma
      linha não serve; no fim diz quantos gravou e que nomes já estavam lá:
          classe<TAB>nome<TAB>professor<TAB>senha (de até 8 caracteres)
          aluno<TAB>nome                         (vai para a classe acima)
  quorel-cadastro verifica ARQUIVO
      confere o arquivo, as tabelas, colunas e chaves, a forma dos valores, os registros genéricos e as ligações;
      mostra um achado por linha
  quorel-cadastro conta ARQUIVO
      mostra quantas linhas há em cada tabela
  quorel-cadastro copia ARQUIVO DESTINO [--sobrescreve] [--muda]
      copia o cadastro, mesmo em uso, e confere a cópia; um destino que existe só é trocado com --sobrescreve, e
      nunca enquanto outro programa desta máquina o tem aberto (os das outras máquinas não se veem: feche-os antes);
      com --muda o destino passa a ser o cadastro, e o que fica na origem não se usa mais
  quorel-cadastro atualiza ARQUIVO
      acrescenta a um cadastro de versão anterior as tabelas que faltam; depois dele nenhuma aula se repete
  quorel-cadastro restaurado ARQUIVO
      depois que uma cópia de segurança voltou: dá ao cadastro nova identidade, e o que espera nas máquinas só entra
      para o aluno que ainda tem o mesmo código e o mesmo nome
  quorel-cadastro pendentes [lista] [--todas]
      mostra as aulas que esperam nesta máquina porque o cadastro não as pôde receber, uma por linha: número, data,
      aluno, classe, roteiro, cadastro e, se ele a recusou, o motivo; com --todas, as de todas as contas
  quorel-cadastro pendentes entrega [--todas]
      entrega as aulas que esperam aos seus cadastros; uma que já entrou não entra de novo
  quorel-cadastro pendentes exporta DESTINO
      copia o arquivo das aulas que esperam
  quorel-cadastro pendentes aceita NÚMERO
      diz que a aula é mesmo do aluno que tem agora o seu código, embora o nome seja outro
  quorel-cadastro --help

Código de saída: 0 tudo em ordem, 1 há o que consertar, 2 não foi possível executar.
)"_s;

struct Pedido
{
    QStringList caminhos; ///< with backslashes
    QStringList opcoes; ///< with their "--"
    bool has(QLatin1StringView opcao) const { return opcoes.contains(opcao); }
};

constexpr auto kSobrescreve = "--sobrescreve"_L1;
constexpr auto kMuda = "--muda"_L1;

int cria(const Pedido &pedido, QTextStream &)
{
    createRegister(pedido.caminhos[0]);
    return kBem;
}

int importaLista(const Pedido &pedido, QTextStream &saida)
{
    const Importado importado = importa(pedido.caminhos[0], pedido.caminhos[1]);
    for (const QString &each : importado.repetidos)
        saida << each << u'\n';
    saida << u"classes gravadas: %1; alunos gravados: %2\n"_s.arg(importado.classes).arg(importado.alunos);
    return kBem;
}

int verifica(const Pedido &pedido, QTextStream &saida)
{
    const QStringList findings = registerFindings(pedido.caminhos[0]);
    for (const QString &finding : findings)
        saida << finding << u'\n';
    if (const LugarPendentes place = waitingPlace(); !place.daMaquina)
        saida << u"aviso: as aulas que esperam ficam com a conta, em "_s << place.arquivo
              << u", e se perdem com ela\n"_s;
    return findings.isEmpty() ? kBem : kAConsertar;
}

int conta(const Pedido &pedido, QTextStream &saida)
{
    for (const ContagemTabela &each : registerCounts(pedido.caminhos[0]))
        saida << each.tabela << u'\t' << each.linhas << u'\n';
    return kBem;
}

int copia(const Pedido &pedido, QTextStream &)
{
    const auto copies = pedido.has(kMuda) ? moveRegister : copyRegister;
    copies(pedido.caminhos[0], pedido.caminhos[1], pedido.has(kSobrescreve));
    return kBem;
}

int atualiza(const Pedido &pedido, QTextStream &saida)
{
    if (!updateRegister(pedido.caminhos[0]))
        saida << u"não faltava nada\n"_s;
    return kBem;
}

int restaurado(const Pedido &pedido, QTextStream &)
{
    renewRegister(pedido.caminhos[0]);
    return kBem;
}

struct Comando
{
    QLatin1StringView nome;
    int arquivos; ///< how many names of files it takes
    int (*executa)(const Pedido &, QTextStream &saida);
    std::array<QLatin1StringView, 2> opcoes{}; ///< that it knows
};

constexpr std::array kComandos{Comando{"cria"_L1, 1, cria}, Comando{"importa"_L1, 2, importaLista},
    Comando{"verifica"_L1, 1, verifica}, Comando{"conta"_L1, 1, conta},
    Comando{"copia"_L1, 2, copia, {kSobrescreve, kMuda}}, Comando{"atualiza"_L1, 1, atualiza},
    Comando{"restaurado"_L1, 1, restaurado}};

/// "pendentes" takes words of its own. @return as executa(); -1 for words that make no sense
int waiting(const QStringList &argumentos, QTextStream &saida)
{
    QStringList words = argumentos.sliced(1);
    const bool all = words.removeAll(u"--todas"_s) > 0;
    if (std::ranges::any_of(words, [](const QString &word) { return word.startsWith("--"_L1); }))
        return -1;
    return pendentes(words.replaceInStrings(u"/"_s, u"\\"_s), all, saida);
}

/// @return null for arguments that make no sense
const Comando *parse(const QStringList &argumentos, Pedido &pedido)
{
    pedido = {};
    QString name;
    for (const QString &argument : argumentos) {
        if (argument.startsWith("--"_L1))
            pedido.opcoes << argument;
        else if (name.isEmpty())
            name = argument;
        else
            pedido.caminhos << backslashPath(argument);
    }
    for (const Comando &command : kComandos) {
        const bool optionsFit = std::ranges::all_of(pedido.opcoes,
            [&](const QString &option) { return std::ranges::find(command.opcoes, option) != command.opcoes.end(); });
        if (name == command.nome && pedido.caminhos.size() == command.arquivos && optionsFit)
            return &command;
    }
    return nullptr;
}

} // namespace

int executa(const QStringList &argumentos, QTextStream &saida, QTextStream &erros)
{
    if (argumentos.contains("--help"_L1)) {
        saida << kAjuda;
        return kBem;
    }
    const bool isWaiting = argumentos.value(0) == "pendentes"_L1;
    Pedido pedido{.caminhos = {waitingPlace().arquivo}, .opcoes = {}}; // told in a failure
    const Comando *command = isWaiting ? nullptr : parse(argumentos, pedido);
    if (!command && !isWaiting) {
        erros << kAjuda;
        return kNaoRodou;
    }
    bool boxed = false; // what the libraries show in a box is a failure here
    costuras().box = [&](const Caixa &caixa) {
        boxed = true;
        erros << caixa.texto << Qt::endl;
        return caixa.botoes == Botoes::Ok ? Resposta::Ok : Resposta::Nao;
    };
    try {
        const int code = isWaiting ? waiting(argumentos, saida) : command->executa(pedido, saida);
        if (code < 0)
            erros << kAjuda;
        return boxed || code < 0 ? kNaoRodou : code;
    } catch (const ErroBD &erro) {
        const QString file = erro.origem().isEmpty() ? pedido.caminhos[0] : erro.origem();
        erros << nativePath(file) << u": "_s << erro.descricao() << Qt::endl;
    } catch (const ErroExecucao &erro) {
        erros << nativePath(pedido.caminhos[0]) << u": "_s << erro.descricao() << Qt::endl;
    }
    return kNaoRodou;
}

} // namespace quorel::cadastro
