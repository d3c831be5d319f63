#include "catalogue/numeros.h"

#include "startup/valor.h"

#include <QLocale>

#include <cmath>
#include <limits>

namespace quorel {

std::optional<qint32> inteiro32(QStringView texto)
{
    const double valor = std::nearbyint(valorNumerico(texto));
    if (valor < std::numeric_limits<qint32>::min() || valor > std::numeric_limits<qint32>::max())
        return std::nullopt;
    return qint32(valor);
}

QString textoDoValor(QStringView texto)
{
    return QString::number(valorNumerico(texto), 'f', QLocale::FloatingPointShortest);
}

} // namespace quorel
