#pragma once

#include <QString>
#include <QVariant>

#include <vector>

namespace quorel {

class Linhas;

/// Type of a field, by the provider's number.
enum class TipoCampo : int {
    Longo = 3, ///< whole number of 32 bits
    Duplo = 5,
    Data = 7, ///< date and time to the second
    Logico = 11,
    Texto = 202,
    Memo = 203, ///< long text
    Binario = 205,
    Variante = 12, ///< a computed column: whatever the cell holds
};

/// A column of a query.
struct Coluna
{
    QString nome; ///< its alias in the query, else the name of its source column
    QString tabela; ///< base table; empty for a computed column
    QString origem; ///< column of that table
    TipoCampo tipo = TipoCampo::Variante;
    bool chave = false; ///< the key of its table
    bool numera = false; ///< numbered by the store on insert
    bool operator==(const Coluna &) const = default;
};

/// The type that a column is declared with; an unknown word is Variante. Lengths behind the word don't count.
TipoCampo typeOfDeclaration(QStringView declarado);

/// A value as a field of that type keeps it: int, double, QDateTime, bool, QString or QByteArray. Null stays Null.
/// @throws ErroBD kErroValor when it does not fit
QVariant convertedTo(TipoCampo tipo, const QVariant &valor);

/// A cell as a value of its column's type; Null is a null variant. Rows and columns from 0.
QVariant cellValue(const Linhas &linhas, qsizetype linha, int coluna, TipoCampo tipo);

/// A value as text: numbers without exponent, dates by dateText, "True" and "False". Empty for Null and for nothing.
QString variantText(const QVariant &valor);

/// Whether it is Null: a value of a type, but none there.
bool isNullValue(const QVariant &valor);

} // namespace quorel
