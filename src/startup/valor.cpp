#include "startup/valor.h"

#include "platform/erro.h"

#include <QLocale>

#include <cmath>
#include <limits>

namespace quorel {

static bool isBlank(QChar c)
{
    return c == u' ' || c == u'\t' || c == u'\r' || c == u'\n';
}

static bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

static QStringView withoutLeadingBlanks(QStringView text)
{
    while (!text.isEmpty() && isBlank(text.front()))
        text = text.sliced(1);
    return text;
}

/// Length of the number at the beginning of a text, sign and point included; 0 when no digit is in it.
static qsizetype numberLength(QStringView text)
{
    qsizetype end = !text.isEmpty() && (text[0] == u'-' || text[0] == u'+') ? 1 : 0;
    bool point = false;
    bool digits = false;
    for (; end < text.size(); ++end) {
        if (isDigit(text[end]))
            digits = true;
        else if (text[end] == u'.' && !point)
            point = true;
        else
            break;
    }
    return digits ? end : 0;
}

double valorNumerico(QStringView texto)
{
    constexpr double kLargest = std::numeric_limits<double>::max();
    const QStringView text = withoutLeadingBlanks(texto);
    const qsizetype length = numberLength(text);
    // A number of hundreds of digits is the largest one, not infinity, which has no decimal text.
    return length == 0 ? 0 : std::clamp(text.first(length).toDouble(), -kLargest, kLargest);
}

template <typename Integer>
static Integer checked(double whole)
{
    if (!(whole >= std::numeric_limits<Integer>::min() && whole <= std::numeric_limits<Integer>::max()))
        throw ErroExecucao(kFalhaEstouro);
    return static_cast<Integer>(whole);
}

qint32 parteInteira(double valor)
{
    return checked<qint32>(std::trunc(valor));
}

qint16 inteiro16(double valor)
{
    return checked<qint16>(std::nearbyint(valor)); // the default rounding: halves to even
}

qint32 inteiro32(double valor)
{
    return checked<qint32>(std::nearbyint(valor));
}

static double wholeTextValue(QStringView texto)
{
    QStringView text = withoutLeadingBlanks(texto);
    while (!text.isEmpty() && isBlank(text.back()))
        text.chop(1);
    if (text.isEmpty() || numberLength(text) != text.size())
        throw ErroExecucao(kFalhaTipo);
    return valorNumerico(text);
}

qint16 textoInteiro16(QStringView texto)
{
    return inteiro16(wholeTextValue(texto));
}

qint32 textoInteiro32(QStringView texto)
{
    return inteiro32(wholeTextValue(texto));
}

QString textoDecimal(double valor)
{
    return QString::number(valor == 0 ? 0 : valor, 'f', QLocale::FloatingPointShortest); // no "-0"
}

} // namespace quorel
