#include "lessons/vista_blocos.h"

#include "platform/erro.h"

namespace quorel {

static VistaBlocos *sVista = nullptr;

void setVistaBlocos(VistaBlocos *vista)
{
    sVista = vista;
}

VistaBlocos &vistaBlocos()
{
    if (!sVista)
        throw ErroExecucao(kFalhaObjeto);
    return *sVista;
}

} // namespace quorel
