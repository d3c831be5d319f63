#include "shell/estado.h"

namespace quorel {

void reiniciaShell()
{
    gImgApontada = -1;
    gImgDica = 0;
}

} // namespace quorel
