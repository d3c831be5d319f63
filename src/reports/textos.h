#pragma once

#include <QString>

namespace quorel {

// The disciplines of the reports, as list, sheet and chart name them.
inline const QString kCiencias = QStringLiteral("Ciências");
inline const QString kMatematica = QStringLiteral("Matemática");
inline const QString kPortugues = QStringLiteral("Português");
inline const QString kDesenv = QStringLiteral("Desenv. Sensorio Motor");

inline const QString kFimLinha = QStringLiteral("\r\n");

/// Alias of the log rows.
inline const QString kLogAulas = QStringLiteral("rsLogAulas");

} // namespace quorel
