#pragma once

#include <QString>

namespace quorel {

/// Line break of boxes and of texts in lines.
inline const QString kFimLinha = QStringLiteral("\r\n");

} // namespace quorel
