#pragma once

#include "autoria/model.h"

#include <array>

namespace quorel {

/// What the authors' form fills in where a source is silent, and what no text of it may hold.

/// Said after a right answer where the source gives no praise. @param aula  number in the Roteiro, from 1
QString defaultPraise(int aula);

/// @param roteiro  its code @param aula  number in the Roteiro, from 1
QString defaultCode(const QString &roteiro, int aula);

/// How far the options of an exercise of order are turned, so that they are never shown in the right order.
/// @param codigo  of the Aula, decimal
qsizetype turnOf(const QString &codigo, qsizetype options);

/// Types of lesson that the shell knows, as a source writes them.
inline constexpr std::array<QStringView, 8> kProgramas{
    u"Zeto", u"Desenho", u"Vrel", u"Livros", u"Dicionario", u"Calc", u"Calculadora", u"HTML"};

/// In place of a program where the key `tipo` tells it.
inline constexpr QStringView kOutroPrograma = u"outro";

} // namespace quorel
