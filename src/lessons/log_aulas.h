#pragma once

#include <QString>

namespace quorel {

/// Opens the log rows of gAluno in gClasse under the alias "RSLog", newest first, then lets window events run. Nothing
/// for a gAluno of 0. @throws ErroBD after its box, when the register can't be read
void AbreLog();

/// Writes one row with the answers, for gAluno, gClasse and the Roteiro that runs; none for a gAluno of 0 or a
/// gCodRoteiro of 0 or less. The answers are emptied in all cases, also when the write failed.
/// @param respostas  gRespostas; read when the row is written
void GravaLog(QString &respostas);

} // namespace quorel
