#pragma once

#include <QMetaType>
#include <QString>

#include <compare>
#include <optional>

namespace Zelmar01 {

/// An exact decimal number of up to 18 digits, such as an amount of money: an integer and the number of its
/// digits that stand behind the decimal point. It never passes through a binary fraction. 1.5 and 1.50 are
/// equal and keep their own number of decimals when shown.
class TDecimal
{
public:
    static constexpr int MaxDecimals = 18;

    constexpr TDecimal() = default;
    /// `unscaled` divided by ten to the power of `decimals` (0 to 18).
    constexpr TDecimal(qint64 unscaled, int decimals = 0) : m_unscaled(unscaled), m_decimals(decimals) {}

    /// Reads an optional sign, digits and an optional part behind "."; none for another form, or for a number
    /// that has more than 18 digits.
    static std::optional<TDecimal> FromText(QStringView text);

    /// The decimal with that many decimals (0 to 18) that a binary fraction stands for: the only one of up to
    /// 15 digits that is nearest to it; none when there is not one.
    static std::optional<TDecimal> FromFraction(double fraction, int decimals);

    /// The same form, with exactly as many decimals as the number has: "-0.50".
    QString ToText() const;

    qint64 Unscaled() const { return m_unscaled; }
    int Decimals() const { return m_decimals; }

    /// What stands before the decimal point, and what stands behind it as a number of 18 digits. Both have
    /// the sign of the number.
    qint64 Whole() const;
    qint64 Fraction() const;

    /// The number with another number of decimals; half a unit is rounded away from zero. None when it does
    /// not fit.
    std::optional<TDecimal> Rounded(int decimals) const;

    /// For drawing and measuring only.
    double ToDouble() const;

    friend std::strong_ordering operator<=>(const TDecimal &a, const TDecimal &b);
    friend bool operator==(const TDecimal &a, const TDecimal &b) { return std::is_eq(a <=> b); }

private:
    qint64 m_unscaled = 0;
    int m_decimals = 0;
};

} // namespace Zelmar01

Q_DECLARE_METATYPE(Zelmar01::TDecimal)
