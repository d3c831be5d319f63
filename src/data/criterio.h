#pragma once

#include <QString>

#include <vector>

namespace quorel {

/// A criterion of Find and Filter: one column, an operator, a value.
struct Criterio
{
    enum Operador { Igual, Diferente, Menor, Maior, MenorIgual, MaiorIgual, ComecaCom, TerminaCom, Contem };

    QString coluna; ///< as written, without brackets
    Operador operador = Igual;
    QString valor; ///< number or text; without apostrophes and asterisks
    bool numero = false; ///< written as a number
    bool operator==(const Criterio &) const = default;
};

/// Reads a criterion. Accepted: column, one of = <> < > <= >=, a number or a text between apostrophes; column, like, a
/// text with an asterisk in front, behind or both, between apostrophes or bare to the end, blanks included. A text
/// between apostrophes holds none itself.
/// @throws ErroBD kErroCriterio for anything else
Criterio readCriterio(QStringView texto);

/// A column of a sort order.
struct TermoOrdem
{
    QString coluna;
    bool decrescente = false;
    bool operator==(const TermoOrdem &) const = default;
};

/// Reads "column, column DESC". Empty gives none. @throws ErroBD kErroCriterio
std::vector<TermoOrdem> readOrdem(QStringView texto);

} // namespace quorel
