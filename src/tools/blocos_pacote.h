#pragma once

#include "tools/blocos_pedido.h"

namespace quorel::blocos {

// The commands on packs; each returns the exit code.
int comandoPacote(const PedidoDaOficina &pedido, Fluxos fluxos);
int comandoInstala(const PedidoDaOficina &pedido, Fluxos fluxos);
int comandoRetira(const PedidoDaOficina &pedido, Fluxos fluxos);
int comandoVerificaPacote(const PedidoDaOficina &pedido, Fluxos fluxos);

} // namespace quorel::blocos
