#include <Zelmar01/data/Decimal.h>

#include <array>
#include <cmath>
#include <limits>

namespace Zelmar01 {

namespace {

constexpr auto powersOfTen = [] {
    std::array<qint64, TDecimal::MaxDecimals + 1> powers{1};
    for (std::size_t i = 1; i < powers.size(); ++i)
        powers[i] = powers[i - 1] * 10;
    return powers;
}();

constexpr qint64 largest = powersOfTen.back() - 1; // 18 nines

qint64 powerOfTen(int exponent)
{
    return powersOfTen[static_cast<std::size_t>(exponent)];
}

} // namespace

std::optional<TDecimal> TDecimal::FromText(QStringView text)
{
    const bool negative = text.startsWith(u'-');
    if (negative || text.startsWith(u'+'))
        text = text.mid(1);
    qint64 unscaled = 0;
    int decimals = 0;
    bool point = false, digits = false;
    for (const QChar c : text) {
        if (c == u'.' && !point) {
            point = true;
            continue;
        }
        if (c < u'0' || c > u'9' || unscaled > largest / 10 || decimals == MaxDecimals)
            return std::nullopt;
        unscaled = unscaled * 10 + (c.unicode() - u'0');
        decimals += point;
        digits = true;
    }
    if (!digits)
        return std::nullopt;
    return TDecimal(negative ? -unscaled : unscaled, decimals);
}

std::optional<TDecimal> TDecimal::FromFraction(double fraction, int decimals)
{
    if (decimals < 0 || decimals > MaxDecimals)
        return std::nullopt;
    const auto power = static_cast<double>(powerOfTen(decimals));
    const double unscaled = std::round(fraction * power);
    if (!(std::abs(unscaled) < 1e15) || unscaled / power != fraction)
        return std::nullopt;
    return TDecimal(static_cast<qint64>(unscaled), decimals);
}

QString TDecimal::ToText() const
{
    QString text = QString::number(m_unscaled < 0 ? -m_unscaled : m_unscaled);
    if (m_decimals > 0) {
        text = text.rightJustified(m_decimals + 1, u'0');
        text.insert(text.size() - m_decimals, u'.');
    }
    return m_unscaled < 0 ? u'-' + text : text;
}

std::optional<TDecimal> TDecimal::Rounded(int decimals) const
{
    if (decimals < 0 || decimals > MaxDecimals)
        return std::nullopt;
    if (decimals >= m_decimals) {
        const qint64 factor = powerOfTen(decimals - m_decimals);
        if (m_unscaled > largest / factor || m_unscaled < -largest / factor)
            return std::nullopt;
        return TDecimal(m_unscaled * factor, decimals);
    }
    const qint64 divisor = powerOfTen(m_decimals - decimals);
    const qint64 half = m_unscaled < 0 ? -divisor / 2 : divisor / 2;
    return TDecimal((m_unscaled + half) / divisor, decimals);
}

double TDecimal::ToDouble() const
{
    return static_cast<double>(m_unscaled) / static_cast<double>(powerOfTen(m_decimals));
}

qint64 TDecimal::Whole() const
{
    return m_unscaled / powerOfTen(m_decimals);
}

qint64 TDecimal::Fraction() const
{
    return m_unscaled % powerOfTen(m_decimals) * powerOfTen(MaxDecimals - m_decimals);
}

std::strong_ordering operator<=>(const TDecimal &a, const TDecimal &b)
{
    const auto wholes = a.Whole() <=> b.Whole();
    return std::is_neq(wholes) ? wholes : a.Fraction() <=> b.Fraction();
}

} // namespace Zelmar01
