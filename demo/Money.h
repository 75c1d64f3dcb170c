#pragma once

#include <QString>

#include <cstdint>

namespace Shop {

/// An amount of money in cents of a euro.
using TCents = std::int64_t;

/// The rate of VAT, in thousandths.
inline constexpr int VatRate = 200;

/// The amount without VAT of an amount with it, to the nearest cent.
TCents WithoutVat(TCents withVat);

/// An amount as "1 250,00", with `blank` between the thousands.
QString AmountText(TCents amount, QChar blank = QChar::Nbsp);

/// An amount as "1 250,00 €".
QString EuroText(TCents amount, QChar blank = QChar::Nbsp);

} // namespace Shop
