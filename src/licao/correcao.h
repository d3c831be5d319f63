#pragma once

#include "linha/textolicao.h"

namespace quorel {

/// Whether what was chosen answers the lesson.
/// @param escolhidas  0-based positions of options: for Ordem in the order of choosing, else in any; none twice
bool escolhaCerta(const LicaoRec &licao, const std::vector<int> &escolhidas);

/// Whether what was typed is one of the expected answers, case and outer blanks apart.
bool digitadaCerta(const LicaoRec &licao, QStringView digitada);

} // namespace quorel
