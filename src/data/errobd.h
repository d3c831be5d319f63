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

/// What kind of failure it is, for who decides what to do next; the number alone does not tell.
enum class EspecieFalha {
    Ocupado, ///< others hold it: trying again may help
    Sumiu, ///< it is not there, or can't be reached any more
    SoLeitura, ///< it can't be written
    Cheio, ///< no space is left
    Danificado,
    Recusado, ///< this value or statement, not the store: trying again does not help
    Outra,
};

/// A failure of the data layer: number, Portuguese description, what raised it, and its kind.
class ErroBD final : public ErroExecucao
{
public:
    explicit ErroBD(NumeroErroBD numero); ///< with the description of that number
    ErroBD(NumeroErroBD numero, const QString &descricao, const QString &origem = {});
    ErroBD(NumeroErroBD numero, EspecieFalha especie, const QString &descricao);

    QString origem() const { return mOrigem; } ///< empty when it is the record set itself
    EspecieFalha especie() const { return mEspecie; } ///< Outra, unless the store told

private:
    QString mOrigem;
    EspecieFalha mEspecie = EspecieFalha::Outra;
};

} // namespace quorel
