#pragma once

#include <QtGlobal>

#include <limits>
#include <span>
#include <string_view>
#include <vector>

namespace quorel {

/// A place in a text, in bytes from 0. Texts are read up to this size.
using Lugar = quint32;
inline constexpr Lugar kNenhum = std::numeric_limits<Lugar>::max(); ///< not found

/// Finds one marker's first occurrence at or behind any place of a text. All questions together cost one pass over the
/// text, and each a short look besides: sections that overlap, as damaged files have them, cost no more.
class ProximaMarca final
{
public:
    /// @param texto  must outlive this object
    ProximaMarca(std::string_view texto, std::string_view marca);

    /// @return where it begins; kNenhum when it doesn't occur from there on
    Lugar find(Lugar from);

    Lugar size() const { return Lugar(mMarca.size()); } ///< of the marker

private:
    static constexpr Lugar kBloco = 1024; ///< bytes between two remembered answers

    Lugar findStartingIn(Lugar from, Lugar end) const;

    std::string_view mTexto;
    std::string_view mMarca;
    Lugar mLastFrom = kNenhum; ///< the last question and its answer
    Lugar mLastFound = kNenhum;
    std::vector<Lugar> mFromBloco; ///< answer from the begin of each block, plus one; 0 is not asked yet
};

/// A numbered marker and where it stands.
struct MarcaNumerada
{
    quint32 numero;
    Lugar lugar;
};

/// The places of numbered markers, by number.
class LugaresPorNumero final
{
public:
    /// @param marcas  ascending by place; numbers above `maximo` are left out
    void build(std::span<const MarcaNumerada> marcas, quint32 maximo);

    /// Ascending; empty for a number that has none.
    std::span<const Lugar> of(quint32 numero) const;

    /// The first place of a number at or behind another place; kNenhum when there is none.
    Lugar firstFrom(quint32 numero, Lugar from) const;

private:
    std::vector<Lugar> mEnd; ///< where each number's places end in mLugares
    std::vector<Lugar> mLugares;
};

/// A number at the begin of a text as it is written by the system: decimal, no leading zero, at most nine digits.
struct NumeroLido
{
    quint32 numero = 0; ///< 0 when there is none
    Lugar digitos = 0;
};
NumeroLido readNumero(std::string_view texto);

} // namespace quorel
