#pragma once

#include "catalogue/vistas.h"

namespace quorel {

// The views that usaVistas() handed in. All throw ErroExecucao 91 while there is none.
VistaRoteiros &vistaRoteiros();
VistaPalco &vistaPalco();
VistaMeses &vistaMeses();

/// Begins a reading of the block text into gRoteiros. @return its number
quint64 comecaLeitura();
quint64 numeroDaLeitura(); ///< of the newest reading

} // namespace quorel
