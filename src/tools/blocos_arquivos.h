#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace quorel::blocos {

/// A block file named on the command line, or found in a directory named there. Paths are native.
struct ArquivoDeBloco
{
    QString caminho;
    QString nome; ///< without directory
    QString nivel; ///< upper case; the name of its directory, or where that is no level's, the two letters in the name
};

/// @param caminho  a file, or a level's directory, whose .edb files come in the catalogue's order
/// @return nothing when there is no such file, or the directory holds no block file
std::optional<QList<ArquivoDeBloco>> arquivosDe(const QString &caminho);

/// The whole file. @return nothing when it can't be read
std::optional<QByteArray> leArquivo(const QString &caminho);

} // namespace quorel::blocos
