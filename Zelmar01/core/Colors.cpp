#include <Zelmar01/core/Colors.h>

#include <algorithm>
#include <cmath>

namespace Zelmar01 {

namespace {

double luminance(const QColor &colour)
{
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

} // namespace

TColor::TColor(const QColor &colour)
    : m_value(!colour.isValid() || colour.alpha() == 0
                  ? clNone.Value()
                  : static_cast<std::uint32_t>(colour.red() | colour.green() << 8 | colour.blue() << 16))
{
}

QColor TColor::Resolved(const QPalette &palette) const
{
    if (IsNone())
        return Qt::transparent;
    switch (m_value) {
    case clWindow.Value():
        return palette.color(QPalette::Base);
    case clWindowText.Value():
        return palette.color(QPalette::Text);
    case clHighlight.Value():
        return palette.color(QPalette::Highlight);
    case clHighlightText.Value():
        return palette.color(QPalette::HighlightedText);
    case clBtnFace.Value():
        return palette.color(QPalette::Window);
    case clBtnShadow.Value():
        return palette.color(QPalette::Dark);
    case clGrayText.Value():
        return palette.color(QPalette::Disabled, QPalette::WindowText);
    case clBtnText.Value():
        return palette.color(QPalette::WindowText);
    case clBtnHighlight.Value():
        return palette.color(QPalette::Light);
    default:
        return QColor(static_cast<int>(m_value & 0xFF), static_cast<int>(m_value >> 8 & 0xFF),
                      static_cast<int>(m_value >> 16 & 0xFF));
    }
}

double ContrastOf(const QColor &a, const QColor &b)
{
    const auto [dark, light] = std::minmax({luminance(a), luminance(b)});
    return (light + 0.05) / (dark + 0.05);
}

QColor WithContrast(const QColor &moving, const QColor &still, double least)
{
    if (ContrastOf(moving, still) >= least)
        return moving;
    const auto moved = [&](double lightness) {
        const auto colour = moving.toHsl();
        return QColor::fromHslF(std::max(colour.hslHueF(), 0.0F), colour.hslSaturationF(),
                                static_cast<float>(lightness))
            .toRgb();
    };
    // Away from the other colour, and the opposite way where that end is still too near.
    const bool darker = luminance(moving) < luminance(still);
    const double ends[] = {darker ? 0.0 : 1.0, darker ? 1.0 : 0.0};
    const double end = ContrastOf(moved(ends[0]), still) >= least ||
                               ContrastOf(moved(ends[0]), still) >= ContrastOf(moved(ends[1]), still)
                           ? ends[0]
                           : ends[1];
    double nearest = moving.lightnessF(), farthest = end;
    // Beyond the other colour's own lightness the contrast grows towards the end.
    if (end != ends[0])
        nearest = still.lightnessF();
    for (int step = 0; step < 10; ++step) {
        const double middle = (nearest + farthest) / 2;
        (ContrastOf(moved(middle), still) >= least ? farthest : nearest) = middle;
    }
    return moved(farthest);
}

} // namespace Zelmar01
