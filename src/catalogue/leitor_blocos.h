#pragma once

#include "catalogue/registros.h"

#include <QByteArrayView>

namespace quorel {

/// What a block file holds.
struct Bloco
{
    Vetor<RoteiroRec> roteiros; ///< bounds 0 to the number of "[ROT<"; a number that has no section is an empty record
    /// Roteiros 1 to this one have their head read. Less than the upper bound only where a failure ended the reading: a
    /// CODROT beyond 32 bits, or texts that overlap so often that they would not fit in memory. The next record then
    /// holds what was read before the failure.
    int lidos = 0;
    bool operator==(const Bloco &) const = default;
};

/// Reads a block file: sections and fields are found by the first occurrence of their markers, and a missing marker
/// gives an empty field. Never fails; the time grows with the size of the text, whatever it holds.
/// @param texto  bytes of code page 1252; empty gives bounds 0 to 0
Bloco leBloco(QByteArrayView texto);

/// The text between the first `antes` and the first `depois` behind it, decoded; empty when either is missing.
QString textoEntre(QByteArrayView texto, QByteArrayView antes, QByteArrayView depois);

} // namespace quorel
