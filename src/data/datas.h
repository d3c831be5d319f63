#pragma once

#include <QDateTime>
#include <QString>

#include <optional>

namespace quorel {

/// A date and time as the clock on the wall showed them, without a zone (kept as UTC): every time of every day exists,
/// midnight of the day on which summer time begins included. Seconds are whole.
QDateTime wallClock(const QDate &data, const QTime &hora);

/// A date as text, the same in every locale: "dd/MM/yy" and, unless it is midnight, a blank and "HH:mm:ss". Empty for
/// an invalid date.
QString dateText(const QDateTime &data);

/// Reads such a text strictly day first, as wallClock(); the year has two digits (the century that puts it within 80
/// years back and 19 ahead of today) or four (from 100 on), the time may lack its seconds. Blanks around it are
/// skipped.
/// @return nothing for any other text, or a day that does not exist
std::optional<QDateTime> readDate(QStringView texto);

/// The form in which a store keeps a date: "yyyy-MM-dd HH:mm:ss".
QString storedDate(const QDateTime &data);

/// As wallClock(). @return nothing when it is not exactly that form
std::optional<QDateTime> readStoredDate(QStringView texto);

} // namespace quorel
