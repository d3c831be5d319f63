#pragma once

#include <QtGlobal>

#include <limits>
#include <span>
#include <string_view>
#include <vector>

namespace quorel {

/// A position in a text, in bytes from 0. Texts are read up to this size.
using Posicao = quint32;
inline constexpr Posicao kNenhum = std::numeric_limits<Posicao>::max(); ///< not found

/// Finds one marker's first occurrence at or behind any place of a text. All questions together cost one pass over the
/// text, and each a short look besides: sections that overlap, as damaged files have them, cost no more.
class ProximaMarca final
{
public:
    /// @param texto  must outlive this object
    ProximaMarca(std::string_view texto, std::string_view marca);

    /// @return where it begins; kNenhum when it doesn't occur from there on
    Posicao find(Posicao from);

    Posicao size() const { return Posicao(mMarca.size()); } ///< of the marker

private:
    static constexpr Posicao kBloco = 1024; ///< bytes between two remembered answers

    Posicao findStartingIn(Posicao from, Posicao end) const;

    std::string_view mTexto;
    std::string_view mMarca;
    Posicao mLastFrom = kNenhum; ///< the last question and its answer
    Posicao mLastFound = kNenhum;
    std::vector<Posicao> mFromBloco; ///< answer from the begin of each block, plus one; 0 is not asked yet
};

/// A numbered marker and where it stands.
struct MarcaNumerada
{
    quint32 numero;
    Posicao posicao;
};

/// The places of numbered markers, by number.
class PosicoesPorNumero final
{
public:
    /// @param marcas  ascending by place; numbers above `maximo` are left out
    void build(std::span<const MarcaNumerada> marcas, quint32 maximo);

    /// Ascending; empty for a number that has none.
    std::span<const Posicao> of(quint32 numero) const;

    /// The first place of a number at or behind another place; kNenhum when there is none.
    Posicao firstFrom(quint32 numero, Posicao from) const;

private:
    std::vector<Posicao> mEnd; ///< where each number's places end in mPosicoes
    std::vector<Posicao> mPosicoes;
};

/// A number at the begin of a text as it is written by the system: decimal, no leading zero, at most nine digits.
struct NumeroLido
{
    quint32 numero = 0; ///< 0 when there is none
    Posicao digitos = 0;
};
NumeroLido readNumero(std::string_view texto);

} // namespace quorel
