#pragma once

#include <QColor>
#include <QPalette>

#include <cstdint>

namespace Zelmar01 {

/// A colour value: a fixed colour, a colour of the desktop (a role, looked up when it is painted), or none.
///
/// Its number is 0x00BBGGRR for a fixed colour. Forms and users see a QColor: none is alpha 0 there, and a
/// role is a default that is never written, which RESET restores. Any other alpha counts as opaque.
class TColor
{
public:
    constexpr explicit TColor(std::uint32_t value) : m_value(value) {}
    /// Fixed, or none for an invalid colour and for one of alpha 0.
    TColor(const QColor &colour);
    TColor(Qt::GlobalColor colour) : TColor(QColor(colour)) {}

    constexpr std::uint32_t Value() const { return m_value; }
    constexpr bool IsNone() const { return m_value == 0x1FFFFFFF; }
    constexpr bool IsRole() const { return m_value >> 24 == 0xFF; }
    constexpr bool IsFixed() const { return !IsNone() && !IsRole(); }

    /// The colour on a desktop of that palette; alpha 0 for none.
    QColor Resolved(const QPalette &palette) const;

    constexpr bool operator==(const TColor &) const = default;

private:
    std::uint32_t m_value;
};

inline constexpr TColor clNone(0x1FFFFFFF);
inline constexpr TColor clFuchsia(0x00FF00FF);
// The desktop's, and the palette's colour each stands for.
inline constexpr TColor clWindow(0xFF000005);        ///< Base
inline constexpr TColor clWindowText(0xFF000008);    ///< Text
inline constexpr TColor clHighlight(0xFF00000D);     ///< Highlight
inline constexpr TColor clHighlightText(0xFF00000E); ///< HighlightedText
inline constexpr TColor clBtnFace(0xFF00000F);       ///< Window
inline constexpr TColor clBtnShadow(0xFF000010);     ///< Dark
inline constexpr TColor clGrayText(0xFF000011);      ///< WindowText of what is disabled
inline constexpr TColor clBtnText(0xFF000012);       ///< WindowText
inline constexpr TColor clBtnHighlight(0xFF000014);  ///< Light

/// The contrast ratio of two opaque colours, from 1 (the same) to 21 (black and white).
double ContrastOf(const QColor &a, const QColor &b);

/// `moving`, with its lightness changed as little as gives it a contrast of `least` against `still`; hue and
/// saturation stay. Where a fixed colour meets one of the desktop, this keeps texts readable on dark and
/// high-contrast desktops. 4.5 is what a text needs, 3 what a line needs.
QColor WithContrast(const QColor &moving, const QColor &still, double least = 4.5);

} // namespace Zelmar01
