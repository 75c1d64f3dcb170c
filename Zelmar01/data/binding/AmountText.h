#pragma once

#include <Zelmar01/data/Decimal.h>

#include <QLocale>
#include <QString>

#include <optional>

namespace Zelmar01 {

/// Reads an amount as people write and paste it: "1 234,50", "1,234.50", "-0.5", "1234", "12,50 €". Blanks of
/// all widths and apostrophes stand between thousands, and a currency sign may stand at either end. Where
/// both
/// "," and "." occur, the last one begins the decimals. Where one of them occurs alone it separates thousands
/// if the locale says so and the digits stand in threes ("1,234" is 1234 in English), else the decimals. None
/// for another form, for groups that are not three digits, and beyond the 18 digits of TDecimal.
std::optional<TDecimal> ParseAmount(QStringView text, const QLocale &locale);

/// An amount in a display format, as in ",0.00;-,0.00": up to three sections for positive, negative and zero
/// amounts (the first one serves for a missing one, with a leading minus for a negative amount). In a section
///   0   is a digit that is always shown, # one that is shown when there is one,
///   .   begins the decimals; the amount is rounded to as many as there are digits behind it, half a unit
///       away from zero,
///   ,   anywhere asks for the locale's separator between thousands,
/// and other characters, and all in '...' or "...", stand for themselves. An empty format shows the amount as
/// it is. Separators and minus are the locale's.
QString FormatAmount(const TDecimal &amount, const QString &format, const QLocale &locale);

} // namespace Zelmar01
