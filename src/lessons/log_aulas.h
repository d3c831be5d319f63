#pragma once

#include <QString>

namespace quorel {

/// Opens the log rows of gAluno in gClasse under the alias "RSLog", newest first, then lets window events run. They are
/// read by whoever reads the alias first. Nothing for a gAluno of 0. @throws ErroBD after its box, without a register
void AbreLog();

/// Writes one row with the answers, for gAluno, gClasse and the Roteiro that runs; none for a gAluno of 0 or a
/// gCodRoteiro of 0 or less. A row that the register does not take waits on this machine; only when it can't wait there
/// either it is lost, with a box. The answers are emptied in all cases.
/// @param respostas  gRespostas; read when the row is written
void GravaLog(QString &respostas);

} // namespace quorel
