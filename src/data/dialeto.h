#pragma once

#include <QString>

#include <functional>

namespace quorel {

/// What the translator writes for a store.
struct Dialeto
{
    QString verdadeiro; ///< the literal for True
    QString falso;
    QString ordemTexto; ///< put behind an ORDER BY term of a text column, with its leading blank
    std::function<bool(QStringView)> colunaTexto; ///< whether a column (bare name, case ignored) is a text
    std::function<QString(QStringView)> chave = {}; ///< the key column of a table (likewise); empty: it has none
};

/// A query of the provider's dialect as the store wants it: DISTINCTROW is dropped, "#mm/dd/yyyy#" becomes the stored
/// form at midnight, texts between double quotes become texts, names between brackets or grave accents quoted names,
/// True and False the store's, and ORDER BY terms of text columns get its order of texts. The order of the rows is made
/// certain; see orderedByKeys(). All else stays as it is.
/// @throws ErroBD kErroSql for a text, name or date that never ends, and for a day that does not exist
QString translated(QStringView sql, const Dialeto &dialeto);

} // namespace quorel
