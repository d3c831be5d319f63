#pragma once

#include "reports/estado.h"

namespace quorel::teste {

/// One block file read as it is told: one search of the text after the other. Slow, and short enough to be checked by
/// eye; the index must come out the same.
struct LeituraLiteral
{
    std::vector<RoteiroArqRec> roteiros;
    QString linhas; ///< that the file adds to the index string of its discipline
    int falha = 0; ///< number of the failure that ended it; 0 for none
};
LeituraLiteral leituraLiteral(const QString &texto);

} // namespace quorel::teste
