#pragma once

#include <QString>

namespace quorel {

/// What a masked box of a date shows while nothing is typed.
inline constexpr char16_t kMascaraVazia[] = u"__/__/__";

/// The date that many days from today as a box takes it, "dd/mm/yy".
QString dataEmDias(int dias);

enum class EstadoPeriodo {
    Incompleto, ///< a box is not filled in to the end: nothing is said
    Invalido, ///< a box holds no date: "Data Inválida"
    Valido
};

/// A period as a query takes it.
struct Periodo
{
    EstadoPeriodo estado = EstadoPeriodo::Incompleto;
    QString inicio; ///< "mm/dd/yyyy"; empty unless valid
    QString fim; ///< likewise; may lie before inicio
    bool operator==(const Periodo &) const = default;
};

/// Reads the texts of the two boxes, each strictly day first; a year of two digits lies within 80 years back and 19
/// ahead of today. An incomplete box counts before a bad one, whichever comes first.
Periodo lePeriodo(const QString &inicial, const QString &final);

} // namespace quorel
