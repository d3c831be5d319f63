#pragma once

#include "pacote/pacote.h"

namespace quorel::pacote {

/// What a folder of an author's holds for a pack.
struct MontagemRec
{
    ManifestoRec manifesto; ///< with level, months and skills as the blocks tell them
    QStringList problemas; ///< why no pack is made
    QStringList notas; ///< what stays out, and what an author should know
    std::vector<std::pair<QString, QByteArray>> arquivos; ///< name in the pack and content, in the order of the names
};

/// Reads a folder:
///     manifesto.json                   what the pack says of itself
///     blocos/F1/0226MA.txt             sources, made into block files; or 0226MAF1.edb as it stands
///     figuras/…gif …bmp  sons/…wav     by their short names, in any folders below; Fig and Som serve too
///     videos/…avi  arqs/…              videos; pages with what they show
/// A source with an error is a problem, told as gnuLine() does.
/// @param pasta  native
MontagemRec leiaPasta(const QString &pasta);

/// Writes the pack: the same folder gives the same bytes. @return a sentence; empty when it was written
QString gravaPacote(const MontagemRec &montagem, const QString &native);

} // namespace quorel::pacote
