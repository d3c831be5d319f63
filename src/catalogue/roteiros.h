#pragma once

#include <QString>

namespace quorel {

/// Loads a block file into gTextoDB.
/// @param caminho  with backslashes; empty is replaced by the default: Config("zeto_mdb") + "\zetodb.ini", or
///                 <windir>\QUOREL2001\zetodb.ini where that key has no value
/// A missing file shows "Arquivo não encontrado!" and ends the program; an empty one gives an empty text.
void LeBancoBlocos(QString &caminho);

/// Reads gTextoDB into gRoteiros and sets up the picture buttons through VistaRoteiros, with a turn of events before
/// and after each picture, in which the records before are complete and the present one has Nome, Cod and Fig. When a
/// newer call came in such a turn, this one stops there.
/// Failures 91 and 340 are passed over; any other (a damaged picture) ends it with what was read so far. Never throws.
void LeRoteiros();

} // namespace quorel
