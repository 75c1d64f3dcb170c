#include <Zelmar01/tabs/TabGeometry.h>

#include <Zelmar01/tabs/TabStyleWord.h>

#include <algorithm>
#include <cstdlib>

namespace Zelmar01 {

namespace {

constexpr int start = 3;       // of the first tab, and of the outer row
constexpr int stripMargin = 2; // what the strip has besides its rows
constexpr int grown = 2;
constexpr int pageMargin = 4;

// The first tab of each row, and the number of tabs behind the last.
std::vector<int> rowsOf(const std::vector<int> &lengths, int room)
{
    std::vector<int> firsts;
    int used = 0;
    for (std::size_t tab = 0; tab < lengths.size(); ++tab) {
        if (firsts.empty() || used + lengths[tab] > room) {
            firsts.push_back(static_cast<int>(tab));
            used = 0;
        }
        used += lengths[tab] + TStripLayout::TabGap;
    }
    firsts.push_back(static_cast<int>(lengths.size()));
    return firsts;
}

} // namespace

TStripLayout::TStripLayout(const TStripSpec &spec) : m_spec(spec), m_position(PositionOf(spec.Style))
{
    const int count = static_cast<int>(m_spec.Lengths.size());
    const int room = along() - 2 * start;
    m_items.resize(m_spec.Lengths.size());
    m_drawn.resize(m_spec.Lengths.size());
    if (count == 0)
        return;

    if (m_spec.Style & TCS_MULTILINE) {
        m_rows = rowsOf(m_spec.Lengths, room);
        m_rowCount = static_cast<int>(m_rows.size()) - 1;
        std::vector<int> rows;
        int nearest = -1;
        for (int row = 0; row < m_rowCount; ++row) {
            const auto at = static_cast<std::size_t>(row);
            if (m_spec.Selected >= m_rows[at] && m_spec.Selected < m_rows[at + 1])
                nearest = row;
            else
                rows.push_back(row);
        }
        if (nearest >= 0)
            rows.push_back(nearest);
        for (int place = 0; place < m_rowCount; ++place) {
            const auto row = static_cast<std::size_t>(rows[static_cast<std::size_t>(place)]);
            layOutRow(m_rows[row], m_rows[row + 1], place, start);
        }
    } else {
        m_rowCount = 1;
        m_rows = {0, count};
        int whole = -TabGap;
        for (const int length : m_spec.Lengths)
            whole += length + TabGap;
        int skipped = 0;
        if (whole > room) {
            const int size = std::min(2 * ArrowSize, along());
            const int acrossEnd = std::min(across(), start + m_spec.Thickness);
            m_arrows = placed(along() - size, along(), std::max(start, acrossEnd - LongestArrow), acrossEnd);
            int rest = whole;
            while (m_lastFirstTab < count - 1 && rest > room - size + start)
                rest -= m_spec.Lengths[static_cast<std::size_t>(m_lastFirstTab++)] + TabGap;
            m_firstTab = std::clamp(m_spec.FirstTab, 0, m_lastFirstTab);
            for (int tab = 0; tab < m_firstTab; ++tab)
                skipped += m_spec.Lengths[static_cast<std::size_t>(tab)] + TabGap;
        }
        layOutRow(0, count, 0, start - skipped);
    }
    if (m_spec.Selected >= 0 && m_spec.Selected < count) {
        m_order.erase(std::find(m_order.begin(), m_order.end(), m_spec.Selected));
        m_order.push_back(m_spec.Selected);
    }
}

void TStripLayout::layOutRow(int first, int end, int row, int from)
{
    const int outer = start + row * m_spec.Thickness, inner = outer + m_spec.Thickness;
    for (int tab = first; tab < end; ++tab) {
        const auto at = static_cast<std::size_t>(tab);
        const int to = from + m_spec.Lengths[at];
        const bool grows = tab == m_spec.Selected && !(m_spec.Style & TCS_BUTTONS);
        m_items[at] = placed(from, to, outer, inner);
        m_drawn[at] = grows ? placed(from - grown, to + grown, outer - grown, inner) : m_items[at];
        m_order.push_back(tab);
        from = to + TabGap;
    }
}

TRect TStripLayout::Item(int tab) const
{
    return tab < 0 || tab >= Count() ? TRect() : m_items[static_cast<std::size_t>(tab)];
}

TRect TStripLayout::DrawnItem(int tab) const
{
    return tab < 0 || tab >= Count() ? TRect() : m_drawn[static_cast<std::size_t>(tab)];
}

int TStripLayout::TabAt(TPoint point) const
{
    if (m_arrows.Contains(point) || !StripArea().Contains(point))
        return -1;
    const auto found = std::find_if(m_order.rbegin(), m_order.rend(),
                                    [&](int tab) { return DrawnItem(tab).Grown(1, 1).Contains(point); });
    return found == m_order.rend() ? -1 : *found;
}

int TStripLayout::TabInRow(int tab, int step, const std::function<bool(int)> &mayBe) const
{
    if (tab < 0 || tab >= Count())
        return -1;
    const auto middle = [&](int one) {
        const auto item = Item(one);
        return IsVertical(m_position) ? item.Top + item.Bottom : item.Left + item.Right;
    };
    const auto own = std::upper_bound(m_rows.begin(), m_rows.end(), tab) - m_rows.begin() - 1;
    for (auto row = own + step; row >= 0 && row < m_rowCount; row += step) {
        const auto at = static_cast<std::size_t>(row);
        int nearest = -1;
        for (int other = m_rows[at]; other < m_rows[at + 1]; ++other) {
            if (mayBe(other) && (nearest < 0 || std::abs(middle(other) - middle(tab)) <
                                                    std::abs(middle(nearest) - middle(tab))))
                nearest = other;
        }
        if (nearest >= 0)
            return nearest;
    }
    return -1;
}

int TStripLayout::FirstTabShowing(int tab) const
{
    if (m_arrows.IsEmpty() || tab < 0 || tab >= Count())
        return m_firstTab;
    if (tab <= m_firstTab)
        return tab;
    const int room = along() - 2 * ArrowSize - start;
    int first = tab, used = m_spec.Lengths[static_cast<std::size_t>(tab)];
    while (first > m_firstTab) {
        used += m_spec.Lengths[static_cast<std::size_t>(first - 1)] + TabGap;
        if (used > room)
            break;
        --first;
    }
    return first;
}

TRect TStripLayout::StripArea() const
{
    return placed(0, along(), 0, std::min(across(), thicknessOfStrip() + stripMargin));
}

TRect TStripLayout::DisplayArea() const
{
    return lessStrip(0).Grown(-pageMargin, -pageMargin);
}

TRect TStripLayout::SheetArea() const
{
    return lessStrip(2);
}

TPoint TStripLayout::ContentShift(bool selected) const
{
    if (m_spec.Style & TCS_BUTTONS)
        return {};
    switch (m_position) {
    case tabPosLeft:
        return selected ? TPoint{m_spec.RightToLeft ? 2 : -2, 0} : TPoint();
    case tabPosRight:
        return selected ? TPoint{m_spec.RightToLeft ? -2 : 2, 0} : TPoint();
    case tabPosTop:
        return {0, selected ? -1 : 1};
    default:
        return {0, selected ? 0 : -2};
    }
}

int TStripLayout::along() const
{
    return IsVertical(m_position) ? m_spec.Height : m_spec.Width;
}

int TStripLayout::across() const
{
    return IsVertical(m_position) ? m_spec.Width : m_spec.Height;
}

int TStripLayout::thicknessOfStrip() const
{
    return m_rowCount * m_spec.Thickness + stripMargin;
}

// From places along the strip and from its outer edge to a rectangle of the control.
TRect TStripLayout::placed(int alongStart, int alongEnd, int acrossStart, int acrossEnd) const
{
    const int far = across();
    TRect rect;
    switch (m_position) {
    case tabPosLeft:
        rect = {acrossStart, alongStart, acrossEnd, alongEnd};
        break;
    case tabPosRight:
        rect = {far - acrossEnd, alongStart, far - acrossStart, alongEnd};
        break;
    case tabPosTop:
        rect = {alongStart, acrossStart, alongEnd, acrossEnd};
        break;
    case tabPosBottom:
        rect = {alongStart, far - acrossEnd, alongEnd, far - acrossStart};
        break;
    }
    return m_spec.RightToLeft ? rect.Mirrored(m_spec.Width) : rect;
}

TRect TStripLayout::lessStrip(int more) const
{
    return placed(0, along(), thicknessOfStrip() + more, across());
}

} // namespace Zelmar01
