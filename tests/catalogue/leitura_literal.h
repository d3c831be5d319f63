#pragma once

#include "catalogue/registros.h"

#include <QByteArray>

namespace quorel::teste {

/// The reading of a block file as it is told: one search of the whole section after the other. Slow, and short enough
/// to be checked by eye; the reader must give the same.
Vetor<RoteiroRec> leituraLiteral(const QByteArray &texto);

} // namespace quorel::teste
