#pragma once

#include <QDate>
#include <QLocale>
#include <QString>
#include <QTime>

#include <optional>

namespace Zelmar01 {

/// The form in which dates are shown and typed in a country: day and month with two digits, the year with
/// four, in the locale's order and with its separators; "dd/MM/yyyy" in French. In a pattern d, M and y are
/// the digits of day, month and year, as in QDate's formats; a pattern without y is for a day and a month.
QString DatePattern(const QLocale &locale);

/// The pattern of an edit mask, such as "jj/MM": j and d stand for the day, M and m for the month, a and y
/// for the year.
QString DatePatternOfMask(const QString &mask);

/// Reads a date as people type and paste it, in the order of the pattern, with "/", ".", "-" or blanks, or
/// with digits alone ("280226"), and in the form 2026-02-28 whatever the pattern. A year of two digits is one
/// of the hundred from 50 years before `today`; a year left out is this year's. By a pattern without a year a
/// 29 February is always taken: it lies in the last leap year up to this one. None for another form and for a
/// day that there is not.
std::optional<QDate> ParseDate(QStringView text, const QString &pattern, QDate today);

/// Reads a time of day: "13:45", "13:45:10", "13h45", "13h". None for another form.
std::optional<QTime> ParseTime(QStringView text);

} // namespace Zelmar01
