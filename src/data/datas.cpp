#include "data/datas.h"

#include "platform/costuras.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace quorel {

static constexpr int kYearsAhead = 19; ///< of today, for a year of two digits
static constexpr int kCentury = 100;
static constexpr int kFirstYear = 100; ///< that a date column can hold

static const QString kStoredForm = u"yyyy-MM-dd HH:mm:ss"_s;

QDateTime wallClock(const QDate &data, const QTime &hora)
{
    return QDateTime(data, QTime(hora.hour(), hora.minute(), hora.second()), Qt::UTC);
}

QString dateText(const QDateTime &data)
{
    if (!data.isValid())
        return {};
    const bool midnight = data.time() == QTime(0, 0);
    return data.toString(midnight ? u"dd/MM/yy"_s : u"dd/MM/yy HH:mm:ss"_s);
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
    return data.toString(kStoredForm);
}

std::optional<QDateTime> readStoredDate(QStringView texto)
{
    static constexpr qsizetype kDatePart = 10; ///< characters of "yyyy-MM-dd"
    if (texto.size() <= kDatePart)
        return std::nullopt;
    const QDateTime data = wallClock(QDate::fromString(texto.first(kDatePart).toString(), Qt::ISODate),
        QTime::fromString(texto.sliced(kDatePart + 1).toString(), Qt::ISODate));
    if (!data.isValid() || storedDate(data) != texto)
        return std::nullopt;
    return data;
}

} // namespace quorel
