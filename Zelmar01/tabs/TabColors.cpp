#include <Zelmar01/tabs/ExtCustomTab.h>

namespace Zelmar01 {

namespace {

constexpr double textContrast = 4.5, lineContrast = 3;
// A disabled caption may be fainter than a text, but must be seen to be there; and to be no enabled one, on
// desktops that have one colour for both.
constexpr double disabledContrast = 2.3;

QColor mixed(const QColor &a, const QColor &b)
{
    return QColor((a.red() + b.red()) / 2, (a.green() + b.green()) / 2, (a.blue() + b.blue()) / 2);
}

} // namespace

const TExtCustomTab::TPaintColors &TExtCustomTab::colors() const
{
    if (m_colors)
        return *m_colors;
    const auto desktop = palette();
    TPaintColors painted;
    painted.Outside = GroundBehind(*this).color();
    painted.Page = m_parentColor && parentWidget() ? painted.Outside : m_color.Resolved(desktop);

    for (const bool active : {false, true}) {
        const auto ground = active ? m_activeColor : m_inactiveColor;
        const auto font = (active ? m_activeFont : m_inactiveFont)->Color();
        const auto hot = active ? m_hottrack->TabActiveColor() : m_hottrack->TabInactiveColor();
        auto &shown = painted.Ground[active];
        auto &text = painted.Text[active];
        shown = ground.Resolved(desktop);
        text = (font.IsNone() ? clWindowText : font).Resolved(desktop);
        if (ground.IsFixed() && !font.IsFixed())
            shown = WithContrast(shown, text, textContrast);
        const auto behind = ground.IsNone() ? painted.Outside : shown;
        if (!ground.IsFixed() && font.IsFixed())
            text = WithContrast(text, behind, textContrast);

        // The ground stays when the mouse comes, so the hot caption has to give way.
        auto &hotText = painted.HotText[active];
        hotText = hot.IsNone() ? text : hot.Resolved(desktop);
        if (!hot.IsNone() && !(hot.IsFixed() && ground.IsFixed()))
            hotText = WithContrast(hotText, behind, textContrast);
        const auto grey = clGrayText.Resolved(desktop);
        const bool tellsApart = grey != text && ContrastOf(grey, behind) >= disabledContrast;
        painted.Disabled[active] =
            tellsApart ? grey : WithContrast(mixed(text, behind), behind, disabledContrast);
    }
    painted.Embossed = clBtnHighlight.Resolved(desktop);
    painted.Frame = WithContrast(mixed(desktop.color(QPalette::WindowText), painted.Outside), painted.Outside,
                                 lineContrast);
    return m_colors.emplace(painted);
}

void TExtCustomTab::forgetColors()
{
    m_colors.reset();
    Invalidate();
    TellGroundChanged(*this);
}

} // namespace Zelmar01
