#pragma once

#include <QString>
#include <QVariant>

class QComboBox;

namespace quorel {

// Aliases are told apart without regard to case; each is spelled as its operation names it, since that spelling heads
// the boxes of its failures.

/// Searches an alias from its first record on, and leaves the found one current; see BD::Pesquisa.
/// @return the field's text; empty for a miss, and for a criterion without a value (the first record is then current)
QString procura(QString criterio, const QString &alias, const QVariant &campo);

/// Makes the row with that key current; without a key, or when it is gone, no row. @return whether it is there
bool goTo(const QString &coluna, const QString &chave, const QString &alias);

/// Whether a record of the alias has been begun and neither saved nor cancelled.
bool isAdding(const QString &alias);

/// The code that a field or a combo gave; 0 for no value at all.
qint32 codigo(const QVariant &valor);

/// Lists the names of the classes in a combo; without classes only its text goes.
void ligaClasses(QComboBox &combo, const QString &alias);

/// Sets a data combo's text so that it names the current record before any other of that name, also when the text
/// stays the same.
void escolhe(QComboBox &combo, const QString &texto);

/// One record on; behind the last one back to it.
void avanca(const QString &alias);
/// One record back; before the first one on to it.
void recua(const QString &alias);

/// Position and number of the records, "3 / 12". @param alias  empty: the one that was named last
QString textoPosicao(const QString &alias = {});

} // namespace quorel
