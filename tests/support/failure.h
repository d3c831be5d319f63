#pragma once

#include "platform/erro.h"

namespace quorel::teste {

/// Number of the failure that a statement ends with; 0 when it ends well.
template <typename Statement>
int failureOf(Statement &&statement)
{
    try {
        statement();
    } catch (const ErroExecucao &erro) {
        return erro.numero();
    }
    return 0;
}

} // namespace quorel::teste
