#pragma once

#include "catalogue/registros.h"

#include <array>

namespace quorel {

inline constexpr int kNumBlocos = 12; ///< of ImgBloco; the last two have no picture and are never shown

/// Name of the discipline of a block. @param indice  1 to 10 @return empty for any other
QString ImgDisc(int indice);

/// For each block, from 1, the index in the catalogue that its tag gets, or -1 when it is hidden. Element 0 is unused.
using BlocosDoMes = std::array<int, kNumBlocos + 1>;

/// Which blocks a month shows. A later file of the same month and discipline wins.
/// @param arquivos  the catalogue; one never dimensioned shows nothing
/// @param mes       number of the month, 1-based
BlocosDoMes blocosDoMes(const Vetor<ArquivoRec> &arquivos, double mes);

} // namespace quorel
