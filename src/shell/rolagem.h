#pragma once

#include "visual/lugar.h"

#include <QtGlobal>

#include <optional>

namespace quorel {

inline constexpr qint16 kRolagemInicial = 675; ///< minimum of scrVertical, and its maximum and value at design

/// New value of the scroll bar for a month option that has received the focus.
/// @param opcao     its place inside the frame, twips
/// @param anterior  the scroll bar's previous value, as the panel keeps it
/// @return nothing when the option lies in the visible band
/// @throws ErroExecucao 6 when the value does not fit into 16 bits
std::optional<qint16> corrigeRolagem(const Lugar &opcao, double anterior, qint16 minimo, qint16 maximo);

/// Top of an option after a change of the scroll bar: moved by exactly the difference.
double topoRolado(double topo, double anterior, double valor);

} // namespace quorel
