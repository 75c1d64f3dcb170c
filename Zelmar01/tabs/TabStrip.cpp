#include <Zelmar01/tabs/ExtCustomTab.h>

#include "TabArrows.h"

#include <Zelmar01/tabs/QtRect.h>

namespace Zelmar01 {

namespace {

// Around the content of tabs that are as large as it.
constexpr QSize padding(12, 8);
constexpr int leastLength = 24;

} // namespace

const TStripLayout &TExtCustomTab::Strip() const
{
    if (m_strip)
        return *m_strip;
    TStripSpec spec{m_style, width(), height(), isRightToLeft(), {}, m_itemHeight, m_selected, m_firstTab};
    const int count = TabCount();
    spec.Lengths.assign(static_cast<std::size_t>(count), m_itemWidth);
    if (m_itemWidth == 0 || m_itemHeight == 0) {
        const QFontMetrics metrics(SizingFont());
        auto content = contentOf({});
        content.HasGlyph = m_glyphs->ImageList()->Count() > 0;
        int thickness = 0;
        for (int tab = 0; tab < count; ++tab) {
            auto size = ContentSize(content, TabCaption(tab), m_wordWrap, m_tabWidth, metrics) + padding;
            if (isVertical())
                size.transpose();
            if (m_itemWidth == 0)
                spec.Lengths[static_cast<std::size_t>(tab)] = qMax(size.width(), leastLength);
            thickness = qMax(thickness, size.height());
        }
        if (m_itemHeight == 0)
            spec.Thickness = thickness;
    }
    return m_strip.emplace(spec);
}

int TExtCustomTab::GetTabNumber(TPoint point) const
{
    return HandleAllocated() ? Strip().TabAt(point) : -1;
}

TRect TExtCustomTab::GetTabRect(int tab) const
{
    return Strip().Item(tab);
}

TRect TExtCustomTab::GetSheetRect() const
{
    return Strip().SheetArea();
}

TRect TExtCustomTab::DisplayRect() const
{
    return Strip().DisplayArea();
}

void TExtCustomTab::layoutChanged()
{
    m_strip.reset();
    if (HandleAllocated() || testAttribute(Qt::WA_Resized)) {
        bringSelectedIntoSight();
        placeArrows();
        const auto page = DisplayRect();
        setContentsMargins(page.Left, page.Top, width() - page.Right, height() - page.Bottom);
        realign();
    }
    updateGeometry();
    Invalidate();
}

void TExtCustomTab::bringSelectedIntoSight()
{
    m_firstTab = Strip().FirstTabShowing(m_selected);
    m_strip.reset();
}

void TExtCustomTab::placeArrows()
{
    const auto &strip = Strip();
    m_firstTab = strip.FirstTab();
    if (strip.Arrows().IsEmpty() && !m_arrows)
        return;
    if (!m_arrows)
        m_arrows = new TTabArrows(this, [this](int step) { scrollTo(m_firstTab + step); });
    m_arrows->Place(strip.Arrows(), isVertical(), m_firstTab > 0, m_firstTab < strip.LastFirstTab());
    m_arrows->raise();
}

void TExtCustomTab::scrollTo(int firstTab)
{
    m_firstTab = qMax(0, firstTab);
    m_strip.reset();
    forgetMouse();
    placeArrows();
    Invalidate();
}

QSize TExtCustomTab::sizeHint() const
{
    const auto page = DisplayRect();
    return QSize(width() - page.Width(), height() - page.Height()) + pageSizeHint(false);
}

QSize TExtCustomTab::minimumSizeHint() const
{
    const auto page = DisplayRect();
    return QSize(width() - page.Width(), height() - page.Height()) + pageSizeHint(true);
}

} // namespace Zelmar01
