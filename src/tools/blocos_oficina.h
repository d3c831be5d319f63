#pragma once

#include <QStringList>
#include <QTextStream>

#include <optional>

namespace quorel::blocos {

/// The commands of quorel-blocos that bring in, pack, install and show: importa, figura, som, voz, pacote, instala,
/// retira, ve, and verifica of a pack.
/// @return the exit code; nothing for a command that is another's
std::optional<int> executaOficina(const QStringList &argumentos, QTextStream &saida, QTextStream &erros);

/// What the help says of them.
QString ajudaDaOficina();

} // namespace quorel::blocos
