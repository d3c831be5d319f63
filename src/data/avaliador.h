#pragma once

#include "data/campos.h"
#include "data/comparacao.h"
#include "data/criterio.h"

#include <vector>

namespace quorel {

/// Number of the column with that name, case ignored. @throws ErroBD kErroNome
int columnNumber(const std::vector<Coluna> &colunas, QStringView nome);

/// A criterion made ready for the columns of a record set. Null meets none.
class Avaliador final
{
public:
    /// @throws ErroBD kErroNome for a column that is not there, kErroCriterio for a value that is not of its type
    Avaliador(const Criterio &criterio, const std::vector<Coluna> &colunas);

    int column() const { return mColuna; }
    bool matches(const Linhas &linhas, qsizetype linha) const; ///< row from 0
    bool matches(const QVariant &valor) const;

private:
    bool like() const { return mOperador >= Criterio::ComecaCom; }
    bool holds(int order) const; ///< whether the operator accepts "less" (-1), "equal" (0), "more" (1)
    bool matchesText(QByteArrayView utf8) const;
    bool matchesNumber(double number) const;

    int mColuna;
    TipoCampo mTipo;
    Criterio::Operador mOperador;
    QString mValor; ///< a date in the stored form
    Procurado mProcurado;
    double mNumero = 0;
    bool mPorNumero = false; ///< the column's values are numbers, and so is the criterion's
};

/// Order of two values of one column; Null stands first. -1, 0 or 1
int compareValues(const QVariant &a, const QVariant &b);

} // namespace quorel
