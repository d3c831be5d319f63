#pragma once

#include <QStringView>

#include <optional>

namespace quorel {

/// The numeric value of a text as a 32-bit integer, halves to even; 0 for a text that is no number.
/// @return nothing when it does not fit
std::optional<qint32> inteiro32(QStringView texto);

/// The numeric value of a text written back as decimal text, without exponent: "0" for a text that is no number.
QString textoDoValor(QStringView texto);

} // namespace quorel
