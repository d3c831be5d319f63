#pragma once

#include "platform/erro.h"
#include "shell/estado.h"

namespace quorel {

/// Runs a step of a timer's tick: one that fails forgets the pointed picture, and the next step follows.
template <typename Step>
void tenta(Step &&step)
{
    try {
        step();
    } catch (const ErroExecucao &) {
        gImgApontada = -1;
    }
}

} // namespace quorel
