#include "shell/rolagem.h"

#include "startup/valor.h"

#include <cmath>

namespace quorel {

static constexpr double kBordaInferior = 2760; // twips: lower edge of the band for the keyboard
static constexpr double kMargem = 30; // twips

std::optional<qint16> corrigeRolagem(const Lugar &opcao, double anterior, qint16 minimo, qint16 maximo)
{
    const double base = opcao.Top + opcao.Height;
    // Kept: the band ends at 2760 whatever the frame's height; the options that fill it are placed for that.
    if (base >= kBordaInferior) {
        const double valor = anterior + (base + kMargem - kBordaInferior);
        return valor < maximo ? inteiro16(valor) : maximo;
    }
    if (opcao.Top < 0) {
        const double valor = anterior - (std::abs(opcao.Top) + kMargem);
        return valor > minimo ? inteiro16(valor) : minimo;
    }
    return std::nullopt;
}

double topoRolado(double topo, double anterior, double valor)
{
    return topo - (valor - anterior);
}

} // namespace quorel
