#include "register/estado.h"

namespace quorel {

bool gSenhaOK = false;

void reiniciaRegister()
{
    gSenhaOK = false;
}

} // namespace quorel
