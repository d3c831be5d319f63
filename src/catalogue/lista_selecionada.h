#pragma once

#include <QString>

#include <optional>

namespace quorel {

/// Reads RotSelec.cfg into gRotSelec: the file in Config("DIRQUOREL") if it exists, else that in <windir>\QUOREL2001.
/// Without either gRotSelec keeps its value.
void leListaSelecionada();

/// The teacher ticks the box: from now on clicks add to a new, empty list. The file is not touched.
void iniciaSelecao();

/// The teacher unticks it: asks, on yes writes the list (an empty one empties the file), and yes or no reads it back.
/// A failed write is not reported.
void terminaSelecao();

/// A click while selecting: adds the code to gRotSelec and says so.
/// @param cod  none when it could not be read: nothing is added, and the message comes all the same
void incluiRoteiro(std::optional<qint32> cod);

/// Whether a Roteiro may run: gRotSelec is empty or holds the code's digits at any place, also as part of a longer
/// code. Says so when it may not. @param cod  none when it could not be read: no list holds it
bool autorizaRoteiro(std::optional<qint32> cod);

} // namespace quorel
