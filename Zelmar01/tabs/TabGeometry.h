#pragma once

#include <Zelmar01/tabs/Rect.h>
#include <Zelmar01/tabs/TabTypes.h>

#include <cstdint>
#include <functional>
#include <vector>

namespace Zelmar01 {

/// What the tabs of a control are laid out from.
struct TStripSpec
{
    std::uint32_t Style = 0;   ///< TabStyleWord.h
    int Width = 0, Height = 0; ///< of the control, in pixels
    bool RightToLeft = false;
    std::vector<int> Lengths; ///< each tab's size along the strip
    int Thickness = 0;        ///< the tabs' size across the strip
    int Selected = -1;        ///< the selected tab, -1 for none
    int FirstTab = 0;         ///< the tab that a strip too long for the control begins with
};

/// Where everything is on a tab control, in pixels of the control: tabs, rows, scroll arrows and page area.
///
/// Tabs begin 3 pixels from the strip's end, leave 3 pixels between them and begin 3 pixels from the outer
/// edge of the control. The selected ordinary tab is drawn 2 pixels larger along the strip and away from the
/// page, which leaves one pixel around it for its frame; the frame's line along the page lies behind the
/// tabs. With TCS_MULTILINE tabs that find no room go on in further rows; rows keep their order from the
/// outer edge on, but the row of the selected tab comes next to the page. Otherwise two scroll arrows are put
/// at the far end. A right-to-left control is laid out like any other and then mirrored, its left and right
/// sides too.
class TStripLayout
{
public:
    static constexpr int TabGap = 3;
    static constexpr int ArrowSize = 18; ///< of one of the two arrows, along the strip
    static constexpr int LongestArrow = 22;

    TStripLayout() = default;
    explicit TStripLayout(const TStripSpec &spec);

    int Count() const { return static_cast<int>(m_items.size()); }
    /// The place of a tab; empty for an index that there is not.
    TRect Item(int tab) const;
    /// What a tab is asked to draw in: its place, grown if it is the selected ordinary one.
    TRect DrawnItem(int tab) const;
    /// The tab at a point, -1 for none. A tab's frame belongs to it; what the arrows cover does not.
    int TabAt(TPoint point) const;

    int RowCount() const { return m_rowCount; }
    /// The tab nearest to `tab` in the next row (`step` 1) or the one before (-1), in the order of the tabs,
    /// that has one which `mayBe` agrees to; -1 for none.
    int TabInRow(int tab, int step, const std::function<bool(int)> &mayBe) const;
    /// All tabs, row by row from the outer edge on, the selected one last: the order to draw them in.
    const std::vector<int> &DrawingOrder() const { return m_order; }

    /// The place of the scroll arrows; empty when all tabs find room.
    const TRect &Arrows() const { return m_arrows; }
    /// The tab the strip begins with, which is at most what the last tab needs to be seen.
    int FirstTab() const { return m_firstTab; }
    int LastFirstTab() const { return m_lastFirstTab; }
    /// The tab the strip has to begin with to show a tab as a whole.
    int FirstTabShowing(int tab) const;

    /// The strip's own part of the control.
    TRect StripArea() const;
    /// The place of pages: the control less the strip, less 4 pixels a side.
    TRect DisplayArea() const;
    /// The area that has the control's colour: the control less the strip and less 2 pixels along it.
    TRect SheetArea() const;
    /// The outline of the page area, one pixel wide.
    TRect PageFrame() const { return lessStrip(1); }

    /// How far the content of a tab is moved from its place, so that it stands where the frame has it.
    TPoint ContentShift(bool selected) const;

private:
    int along() const;
    int across() const;
    TRect placed(int alongStart, int alongEnd, int acrossStart, int acrossEnd) const;
    TRect lessStrip(int more) const;
    int thicknessOfStrip() const;
    void layOutRow(int first, int end, int row, int start);

    TStripSpec m_spec;
    TExtTabPosition m_position = tabPosTop;
    std::vector<TRect> m_items, m_drawn;
    std::vector<int> m_order;
    std::vector<int> m_rows; // the first tab of each, and the number of tabs
    int m_rowCount = 0;
    TRect m_arrows;
    int m_firstTab = 0, m_lastFirstTab = 0;
};

} // namespace Zelmar01
