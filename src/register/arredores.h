#pragma once

#include "visual/lugar.h"

#include <QString>

#include <functional>

namespace quorel {

/// What the register's window needs of the windows around it; every function is set.
struct Arredores
{
    std::function<Lugar()> lugarDoPainel; ///< where the panel stands on the screen, frame included; twips
    std::function<void()> mostraPainel; ///< the panel becomes visible again
    std::function<void(const QString &titulo)> setTituloPrincipal; ///< caption of the first window
    std::function<void()> mostraDesempenho; ///< shows the performance window, modally
};

} // namespace quorel
