#pragma once

#include <QString>

namespace quorel {

class Conexao;
class Pendentes;

/// What a delivery did.
struct Entregue
{
    int entraram = 0; ///< rows; those that an earlier attempt had brought in are among them
    int apagadas = 0; ///< rows of pupils whose data was erased
    int ficaram = 0; ///< rows that the register did not take, each with its reason
};

/// Delivers the waiting rows that are meant for an open register, oldest first, up to 1,000 a transaction. A batch that
/// fails is halved until the bad row is alone: that one stays, with its reason, and holds up no other. Rows for other
/// registers stay untouched. What goes wrong in the waiting rows' own file ends the delivery in silence.
/// @param caminho  native path of the register, for rows that don't know its identity
/// @param presas  also rows that were refused before
/// @throws ErroBD when the register can't be written now; what was delivered until then is not offered again
Entregue deliverWaiting(Pendentes &pendentes, Conexao &conexao, const QString &caminho, bool presas);

} // namespace quorel
