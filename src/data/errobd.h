#pragma once

#include "platform/erro.h"

namespace quorel {

/// Numbers of the failures of the data layer. 9 (a slot that does not exist) and 91 come from ErroExecucao itself.
enum NumeroErroBD : int {
    kErroCriterio = 3001, ///< a criterion, filter or argument that can't be read
    kErroSemRegistro = 3021, ///< the cursor is at an end, or on a deleted record
    kErroContexto = 3219, ///< not allowed now: a change is pending
    kErroNome = 3265, ///< a name or number that is not in the collection
    kErroFechado = 3704, ///< the record set is not open
    kErroSemConexao = 3709, ///< there is no connection
    kErroValor = -2147217887, ///< a value that does not fit its field
    kErroSql = -2147217900, ///< the query can't be understood
    kErroTabela = -2147217865, ///< no such table
    kErroArmazem = -2147467259, ///< any other failure of the store
};

/// A failure of the data layer: number, Portuguese description, and what raised it.
class ErroBD final : public ErroExecucao
{
public:
    explicit ErroBD(NumeroErroBD numero); ///< with the description of that number
    ErroBD(NumeroErroBD numero, const QString &descricao, const QString &origem = {});

    QString origem() const { return mOrigem; } ///< empty when it is the record set itself

private:
    QString mOrigem;
};

} // namespace quorel
