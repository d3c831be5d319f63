#pragma once

#include <QString>

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
void incluiRoteiro(qint32 cod);

/// Whether a Roteiro may run: gRotSelec is empty or holds the code's digits at any place, also as part of a longer
/// code. Says so when it may not.
bool autorizaRoteiro(qint32 cod);

} // namespace quorel
