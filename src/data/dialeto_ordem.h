#pragma once

#include <QString>

#include <functional>

namespace quorel {

/// A query whose rows come in one order whatever is updated between two readings: the keys of the tables as they stand
/// in FROM go behind its ORDER BY, in the direction of the last term, and make one where there is none. Only a plain
/// SELECT over tables gets them: with DISTINCT, GROUP BY, an aggregate, a set of two queries, a query in FROM, or a
/// table without a key the text stays as it is.
/// @param sql  already of the store's dialect @param chave  the key column of a table; may be no function at all
QString orderedByKeys(const QString &sql, const std::function<QString(QStringView)> &chave);

} // namespace quorel
