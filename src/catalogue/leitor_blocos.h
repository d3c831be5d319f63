#pragma once

#include "catalogue/registros.h"

#include <QByteArrayView>

#include <vector>

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

/// An opening marker or a section of a block file. Places are in bytes from 0.
struct LugarBloco
{
    int roteiro = 0; ///< 0 for a "[ROT<" that no number follows as it must
    int aula = 0; ///< 0 for a Roteiro, -1 for a "[<i>" that no number, bracket and line end follow
    qint64 begin = 0; ///< of the marker; of the text behind it for a section
    qint64 end = 0; ///< of a section; 0 for a marker
    bool operator==(const LugarBloco &) const = default;
};

/// Where a block file has what: for those who have to name a line of it.
struct PlantaBloco
{
    std::vector<LugarBloco> marcas; ///< every opening marker, in the order of the text
    std::vector<LugarBloco> secoes; ///< every section that was read, in the order of reading
};

/// Reads a block file: sections and fields are found by the first occurrence of their markers, and a missing marker
/// gives an empty field. Never fails; the time grows with the size of the text, whatever it holds.
/// @param texto  bytes of code page 1252; empty gives bounds 0 to 0
/// @param planta  filled with the places of what was read, unless it is null
Bloco leBloco(QByteArrayView texto, PlantaBloco *planta = nullptr);

/// The text between the first `antes` and the first `depois` behind it, decoded; empty when either is missing.
QString textoEntre(QByteArrayView texto, QByteArrayView antes, QByteArrayView depois);

} // namespace quorel
