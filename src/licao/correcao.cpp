#include "licao/correcao.h"

#include "platform/codec.h"

#include <algorithm>

namespace quorel {

/// Two options of the same place may stand in either order.
static bool orderRight(const LicaoRec &licao, const std::vector<int> &escolhidas)
{
    if (escolhidas.size() != licao.Opcoes.size())
        return false;
    return std::ranges::is_sorted(escolhidas, {}, [&](int n) { return licao.Opcoes.at(size_t(n)).Lugar; });
}

bool escolhaCerta(const LicaoRec &licao, const std::vector<int> &escolhidas)
{
    if (licao.Tipo == TipoExercicio::Ordem)
        return orderRight(licao, escolhidas);
    const auto certas = std::ranges::count_if(licao.Opcoes, &OpcaoRec::Certa);
    const auto hits = std::ranges::count_if(escolhidas, [&](int n) { return licao.Opcoes.at(size_t(n)).Certa; });
    const bool onlyHits = hits == std::ssize(escolhidas) && hits > 0;
    return onlyHits && (licao.Tipo != TipoExercicio::Todas || hits == certas);
}

bool digitadaCerta(const LicaoRec &licao, QStringView digitada)
{
    return std::ranges::any_of(
        licao.Esperadas, [&](const QString &esperada) { return equalNoCase(esperada, digitada.trimmed()); });
}

} // namespace quorel
