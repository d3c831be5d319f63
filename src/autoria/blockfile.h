#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

namespace quorel {

/// A block file named on the command line, or found in a directory named there. Paths are native.
struct BlockFile
{
    QString path;
    QString name; ///< without directory
    QString nivel; ///< upper case; the name of its directory where the file's name ends in it, else what stands in the
                   ///< file's name behind month, year and discipline
    QString disciplina() const; ///< the two letters in front of the level; empty where the name has another form
};

/// What a path says of a block file; nothing is looked up.
BlockFile blockFile(const QString &path);

/// @param path  a file, or a level's directory, whose .edb files come in the catalogue's order
/// @return nothing when there is no such file, or the directory holds no block file
std::optional<QList<BlockFile>> blockFilesOf(const QString &path);

/// The whole file. @return nothing when it can't be read
std::optional<QByteArray> readWhole(const QString &path);

} // namespace quorel
