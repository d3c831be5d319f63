#pragma once

#include "catalogue/registros.h"

namespace quorel {

/// The Roteiro at gRotAtual; hold it across no turn of events. @throws ErroExecucao 9 when there is none
const RoteiroRec &roteiroAtual();

/// Whether gAulaAtual lies at or below the last Aula of the current Roteiro. @throws ErroExecucao 9 as above
bool aulaExiste();

/// Moves gAulaAtual. @throws ErroExecucao 6 beyond 16 bits
void moveAula(int passo);

/// ExecutaAula() for the Aula at gAulaAtual, with the
/// record's Linha and a type of its own. @throws ErroExecucao 9 when there is none
void executaAulaAtual();

/// Sets gCodRoteiro and gNomeRoteiro from the current Roteiro. @throws ErroExecucao 9
void tomaRoteiro();

} // namespace quorel
