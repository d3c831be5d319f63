#pragma once

#include "catalogue/vistas.h"

namespace quorel {

// The views that usaVistas() handed in. All throw ErroExecucao 91 while there is none.
VistaRoteiros &vistaRoteiros();
VistaPalco &vistaPalco();
VistaMeses &vistaMeses();

} // namespace quorel
