#include <Zelmar01/tabs/ExtCustomTab.h>

#include <Zelmar01/tabs/ComCtlVersion.h>
#include <Zelmar01/tabs/TabStyleWord.h>

#include <QScopeGuard>

namespace Zelmar01 {

namespace {

constexpr QSize verticalSize(70, 35); // of tabs that had none

// The value of a * b / c, rounded, as the scaling of forms has it.
int mulDiv(int a, int b, int c)
{
    return c == 0 ? a : qRound(static_cast<double>(a) * b / c);
}

} // namespace

void TExtCustomTab::setColor(TColor color)
{
    if (!m_parentColor && color == m_color)
        return;
    m_parentColor = false;
    m_color = color;
    forgetColors();
}

void TExtCustomTab::resetColor()
{
    m_color = clWindow;
    setParentColor(true);
}

void TExtCustomTab::setParentColor(bool parentColor)
{
    if (parentColor == m_parentColor)
        return;
    m_parentColor = parentColor;
    forgetColors();
}

void TExtCustomTab::setMultiLine(bool multiLine)
{
    if (multiLine == m_multiLine)
        return;
    m_multiLine = multiLine;
    m_style = CreateParams();
    layoutChanged();
}

void TExtCustomTab::setTabActiveColor(TColor color)
{
    if (color == m_activeColor)
        return;
    m_activeColor = color;
    forgetColors();
}

void TExtCustomTab::setTabInactiveColor(TColor color)
{
    if (color == m_inactiveColor)
        return;
    m_inactiveColor = color;
    forgetColors();
}

void TExtCustomTab::setTabHeight(int height)
{
    height = qBound(0, height, GreatestWord);
    if (height == m_tabHeight)
        return;
    m_tabHeight = height;
    (isVertical() ? m_itemWidth : m_itemHeight) = height;
    layoutChanged();
}

void TExtCustomTab::setTabWidth(int width)
{
    width = qBound(0, width, GreatestWord);
    if (width == m_tabWidth)
        return;
    m_tabWidth = width;
    (isVertical() ? m_itemHeight : m_itemWidth) = width;
    layoutChanged();
}

void TExtCustomTab::setTabHints(const QStringList &hints)
{
    m_tabHints = hints;
    m_reported.clear();
}

void TExtCustomTab::setTabPosition(TExtTabPosition position)
{
    if (position == m_tabPosition)
        return;
    BeginUpdate();
    const auto end = qScopeGuard([this] { EndUpdate(); });
    const bool wasVertical = isVertical();
    if (IsVertical(position) && !wasVertical) {
        if (m_tabHeight == 0)
            m_tabHeight = verticalSize.height();
        if (m_tabWidth == 0)
            m_tabWidth = verticalSize.width();
        m_itemWidth = m_tabHeight;
        m_itemHeight = m_tabWidth;
    } else if (!IsVertical(position) && wasVertical) {
        m_itemWidth = m_tabWidth;
        m_itemHeight = m_tabHeight;
    }
    m_tabPosition = position;
    if (position != tabPosTop && m_tabStyle == tabStButton)
        m_tabStyle = tabStDefault;
    m_style = CreateParams();
    forgetMouse();
    layoutChanged();
}

void TExtCustomTab::setTabStyle(TExtTabStyle style)
{
    if (style == m_tabStyle)
        return;
    m_tabStyle = style;
    if (style == tabStButton)
        setTabPosition(tabPosTop);
    m_style = style == tabStButton ? m_style | TCS_BUTTONS : m_style & ~TCS_BUTTONS;
    layoutChanged();
}

void TExtCustomTab::setTabWordWrap(bool wordWrap)
{
    if (wordWrap == m_wordWrap)
        return;
    m_wordWrap = wordWrap;
    layoutChanged();
}

void TExtCustomTab::ChangeScale(int m, int d)
{
    setTabHeight(mulDiv(m_tabHeight, m, d));
    setTabWidth(mulDiv(m_tabWidth, m, d));
    for (auto *font : {m_activeFont, m_inactiveFont})
        font->setHeight(mulDiv(font->Height(), m, d));
}

std::uint32_t TExtCustomTab::CreateParams() const
{
    return StyleWord(m_tabPosition, m_tabStyle, m_multiLine);
}

QFont TExtCustomTab::SizingFont() const
{
    const auto widthOfW = [](const QFont &font) {
        return QFontMetrics(font).horizontalAdvance(QLatin1Char('W'));
    };
    const auto active = m_activeFont->Font(), inactive = m_inactiveFont->Font();
    return widthOfW(inactive) > widthOfW(active) ? inactive : active;
}

bool TExtCustomTab::IsNewComCtl()
{
    static const bool isNew = IsNewComCtlVersion(ComCtlVersion());
    return isNew;
}

void TExtCustomTab::TabFontChanged()
{
    forgetColors();
    layoutChanged();
}

} // namespace Zelmar01
