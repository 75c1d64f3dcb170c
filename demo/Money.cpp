#include "Money.h"

namespace Shop {

TCents WithoutVat(TCents withVat)
{
    constexpr TCents divisor = 1000 + VatRate;
    return (withVat * 1000 + divisor / 2) / divisor;
}

QString AmountText(TCents amount, QChar blank)
{
    auto euros = QString::number(amount / 100);
    for (auto place = euros.size() - 3; place > 0; place -= 3)
        euros.insert(place, blank);
    return euros + u',' + QString::number(amount % 100).rightJustified(2, u'0');
}

QString EuroText(TCents amount, QChar blank)
{
    return AmountText(amount, blank) + blank + u'€';
}

} // namespace Shop
