#include "catalogue/marcas.h"

#include <algorithm>

namespace quorel {

ProximaMarca::ProximaMarca(std::string_view texto, std::string_view marca) : mTexto(texto), mMarca(marca) { }

/// Only occurrences that begin inside the range count.
Posicao ProximaMarca::findStartingIn(Posicao from, Posicao end) const
{
    const std::size_t limit = std::min(mTexto.size(), std::size_t(end) + mMarca.size() - 1);
    const std::size_t found = mTexto.substr(0, limit).find(mMarca, from);
    return found == std::string_view::npos ? kNenhum : Posicao(found);
}

Posicao ProximaMarca::find(Posicao from)
{
    if (mLastFrom <= from && from <= mLastFound)
        return mLastFound;
    mLastFrom = from;
    const std::size_t own = from / kBloco;
    const Posicao size = Posicao(mTexto.size());
    mLastFound = findStartingIn(from, Posicao(std::min<std::size_t>(size, (own + 1) * kBloco)));
    if (mLastFound != kNenhum)
        return mLastFound;

    if (mFromBloco.empty())
        mFromBloco.resize(size / kBloco + 1);
    std::size_t bloco = own + 1;
    while (bloco < mFromBloco.size() && mFromBloco[bloco] == 0 && mLastFound == kNenhum) {
        const std::size_t begin = bloco * kBloco;
        mLastFound = findStartingIn(Posicao(begin), Posicao(std::min<std::size_t>(size, begin + kBloco)));
        ++bloco;
    }
    if (mLastFound == kNenhum && bloco < mFromBloco.size())
        mLastFound = mFromBloco[bloco] == kNenhum ? kNenhum : mFromBloco[bloco] - 1;
    const Posicao remembered = mLastFound == kNenhum ? kNenhum : mLastFound + 1;
    std::fill(mFromBloco.begin() + std::ptrdiff_t(std::min(own + 1, mFromBloco.size())),
        mFromBloco.begin() + std::ptrdiff_t(std::min(bloco, mFromBloco.size())), remembered);
    return mLastFound;
}

void PosicoesPorNumero::build(std::span<const MarcaNumerada> marcas, quint32 maximo)
{
    // Counting sort: first how many each number has, then where they begin, which filling moves to where they end.
    mEnd.assign(std::size_t(maximo) + 2, 0);
    for (const MarcaNumerada &marca : marcas) {
        if (marca.numero <= maximo)
            ++mEnd[marca.numero + 1];
    }
    for (std::size_t numero = 1; numero < mEnd.size(); ++numero)
        mEnd[numero] += mEnd[numero - 1];
    mPosicoes.resize(mEnd.back());
    for (const MarcaNumerada &marca : marcas) {
        if (marca.numero <= maximo)
            mPosicoes[mEnd[marca.numero]++] = marca.posicao;
    }
}

std::span<const Posicao> PosicoesPorNumero::of(quint32 numero) const
{
    if (std::size_t(numero) + 1 >= mEnd.size())
        return {};
    const Posicao begin = numero == 0 ? 0 : mEnd[numero - 1];
    return std::span(mPosicoes).subspan(begin, mEnd[numero] - begin);
}

Posicao PosicoesPorNumero::firstFrom(quint32 numero, Posicao from) const
{
    const std::span<const Posicao> posicoes = of(numero);
    const auto found = std::lower_bound(posicoes.begin(), posicoes.end(), from);
    return found == posicoes.end() ? kNenhum : *found;
}

NumeroLido readNumero(std::string_view texto)
{
    constexpr std::size_t kMaxDigitos = 9;
    NumeroLido lido;
    while (lido.digitos < texto.size() && texto[lido.digitos] >= '0' && texto[lido.digitos] <= '9') {
        if (lido.digitos == kMaxDigitos || (lido.digitos == 0 && texto[0] == '0'))
            return {};
        lido.numero = lido.numero * 10 + quint32(texto[lido.digitos] - '0');
        ++lido.digitos;
    }
    return lido;
}

} // namespace quorel
