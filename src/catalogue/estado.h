#pragma once

#include "catalogue/registros.h"

#include <QByteArray>

namespace quorel {

/// Text of the open block file, in its bytes of code page 1252: one byte a character. Markers are sought in the bytes
/// and only what is kept is decoded.
inline QByteArray gTextoDB;

/// The level's block files, from 0. Built once, by MontaCatalogo().
inline Vetor<ArquivoRec> gArquivos;

/// The Roteiros of the open block file; element 0 unused. Changes at each reading, which may happen in any turn of
/// events: hold no reference into it across one.
inline Vetor<RoteiroRec> gRoteiros;

inline qint16 gDisciplina = 0; ///< number of the discipline pressed last, 1 to 10; 0 before the first
inline QString gNomeDisciplina; ///< its name

inline QString gRotSelec; ///< codes of the teacher's list, each with its CR LF; empty means no restriction
inline bool gSelecionando = false; ///< a click on a picture adds to the list instead of running

/// All of the above, and the views of catalogue/vistas.h, as at the start of the program; for tests.
void reiniciaCatalogue();

} // namespace quorel
