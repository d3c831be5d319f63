#pragma once

#include <QMap>
#include <QStringList>
#include <QTextStream>

namespace quorel::blocos {

enum CodigoDeSaida : int { kTudoEmOrdem = 0, kHaOQueConsertar = 1, kNaoExecutou = 2 };

/// A command of the workshop, its words and its options.
struct PedidoDaOficina
{
    QString comando;
    QStringList palavras; ///< paths and names, native
    QMap<QString, QString> opcoes; ///< "--cfg" and what follows it; "" for an option that stands alone
    bool tem(const QString &opcao) const { return opcoes.contains(opcao); }
};

struct Fluxos
{
    QTextStream &saida;
    QTextStream &erros;
};

/// Makes gConfig from --cfg, else from the installed configuration. @return false, told, where there is none
bool carregaConfiguracao(const PedidoDaOficina &pedido, Fluxos fluxos);

/// Asks on the terminal. @return false where the answer is no, or nobody answers
bool pergunta(const QString &texto, Fluxos fluxos);

} // namespace quorel::blocos
