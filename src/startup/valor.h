#pragma once

#include <QString>

namespace quorel {

/// The numeric value of a text: leading blanks skipped, sign, digits, one point, no exponent; what follows is not
/// read. Anything else, an empty text included, is 0.
double valorNumerico(QStringView texto);

/// The integer part, without the decimals, as a 32-bit integer. @throws ErroExecucao 6 outside its range
qint32 parteInteira(double valor);

/// A number assigned to a 16-bit or 32-bit integer: halves to even. @throws ErroExecucao 6 outside its range
qint16 inteiro16(double valor);
qint32 inteiro32(double valor);

/// The numeric value of a text that must be a number (blanks around it allowed), assigned to an integer.
/// @throws ErroExecucao 13 when it is none, 6 outside the range
qint16 textoInteiro16(QStringView texto);
qint32 textoInteiro32(QStringView texto);

/// Decimal text of a number: no exponent, no blank, a point before the decimals, none when it is whole.
QString textoDecimal(double valor);

} // namespace quorel
