#include "data/datas.h"

#include "platform/costuras.h"

#include <QCalendar>
#include <QRegularExpression>

#include <array>

using namespace Qt::StringLiterals;

namespace quorel {

static constexpr int kYearsAhead = 19; ///< of today, for a year of two digits
static constexpr int kCentury = 100;
static constexpr int kFirstYear = 100; ///< that a date column can hold

QDateTime wallClock(const QDate &data, const QTime &hora)
{
    return QDateTime(data, QTime(hora.hour(), hora.minute(), hora.second()), Qt::UTC);
}

/// A number's last digits, filled up with zeros.
template <std::size_t Digits>
static void putDigits(char16_t *&out, int number)
{
    for (std::size_t i = Digits; i > 0; --i, number /= 10)
        out[i - 1] = static_cast<char16_t>(u'0' + number % 10);
    out += Digits;
}

static void putTime(char16_t *&out, const QTime &time)
{
    putDigits<2>(out, time.hour());
    *out++ = u':';
    putDigits<2>(out, time.minute());
    *out++ = u':';
    putDigits<2>(out, time.second());
}

// By hand, like the reading of stored dates: reports turn each date of a log from one form into the other.
QString dateText(const QDateTime &data)
{
    if (!data.isValid())
        return {};
    std::array<char16_t, 17> text; // dd/MM/yy HH:mm:ss
    char16_t *out = text.data();
    const auto [year, month, day] = QCalendar().partsFromDate(data.date());
    putDigits<2>(out, day);
    *out++ = u'/';
    putDigits<2>(out, month);
    *out++ = u'/';
    putDigits<2>(out, year);
    if (const QTime time = data.time(); time != QTime(0, 0)) {
        *out++ = u' ';
        putTime(out, time);
    }
    return QStringView(text.data(), out).toString();
}

static int fullYear(int twoDigits)
{
    const int last = agora().date().year() + kYearsAhead;
    const int year = last - last % kCentury + twoDigits;
    return year > last ? year - kCentury : year;
}

std::optional<QDateTime> readDate(QStringView texto)
{
    static const QRegularExpression form(
        u"^(\\d{1,2})/(\\d{1,2})/(\\d{2}|\\d{4})(?: (\\d{1,2}):(\\d{2})(?::(\\d{2}))?)?$"_s);
    const QRegularExpressionMatch match = form.match(texto.trimmed().toString());
    if (!match.hasMatch())
        return std::nullopt;
    const QStringView yearText = match.capturedView(3);
    const int year = yearText.size() == 2 ? fullYear(yearText.toInt()) : yearText.toInt();
    const QDate date(year, match.capturedView(2).toInt(), match.capturedView(1).toInt());
    const QTime time(match.capturedView(4).toInt(), match.capturedView(5).toInt(), match.capturedView(6).toInt());
    if (year < kFirstYear || !date.isValid() || !time.isValid())
        return std::nullopt;
    return wallClock(date, time);
}

QString storedDate(const QDateTime &data)
{
    return data.toString(u"yyyy-MM-dd HH:mm:ss"_s);
}

/// The number in some digits; -1 when one is none.
static int readDigits(QStringView digits)
{
    int number = 0;
    for (const QChar c : digits) {
        if (c < u'0' || c > u'9')
            return -1;
        number = number * 10 + (c.unicode() - u'0');
    }
    return number;
}

std::optional<QDateTime> readStoredDate(QStringView texto)
{
    static constexpr QStringView kForm = u"0000-00-00 00:00:00";
    if (texto.size() != kForm.size() || texto[4] != u'-' || texto[7] != u'-' || texto[10] != u' ' || texto[13] != u':'
        || texto[16] != u':')
        return std::nullopt;
    const auto number = [texto](qsizetype at, qsizetype digits) { return readDigits(texto.sliced(at, digits)); };
    const QDate date(number(0, 4), number(5, 2), number(8, 2));
    const QTime time(number(11, 2), number(14, 2), number(17, 2));
    if (!date.isValid() || !time.isValid())
        return std::nullopt;
    return wallClock(date, time);
}

} // namespace quorel
