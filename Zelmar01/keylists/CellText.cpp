#include "CellText.h"

#include <Zelmar01/data/Decimal.h>
#include <Zelmar01/data/binding/AmountText.h>
#include <Zelmar01/data/binding/FieldText.h>

#include <cmath>

namespace Zelmar01 {

namespace {

constexpr double largestPlain = 1e15;

QString amountText(const TDecimal &amount, const QLocale &locale)
{
    return FormatAmount(amount, QStringLiteral(",0.") + QString(amount.Decimals(), u'0'), locale);
}

} // namespace

QString CellText(const QVariant &value, TFieldType type, const QLocale &locale)
{
    if (!value.isValid())
        return {};
    if (type == ftBCD)
        return amountText(value.value<TDecimal>(), locale);
    if (type == ftFloat && std::abs(value.toDouble()) < largestPlain)
        return locale.toString(value.toDouble(), 'f', QLocale::FloatingPointShortest);
    if (type == ftBytes)
        return QStringLiteral("(%1 octets)").arg(value.toByteArray().size());
    auto text = FieldTextOf(value, type, locale);
    return type == ftString ? text.replace(u'\n', u' ').remove(u'\r') : text;
}

} // namespace Zelmar01
