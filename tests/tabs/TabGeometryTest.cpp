#include <Zelmar01/tabs/ComCtlVersion.h>
#include <Zelmar01/tabs/TabGeometry.h>
#include <Zelmar01/tabs/TabStyleWord.h>

#include <gtest/gtest.h>

#include <set>
#include <sstream>

using namespace Zelmar01;

namespace {

// A control of 400 by 300, with tabs of 20 across the strip.
TStripSpec spec(std::uint32_t style, std::vector<int> lengths, int selected = -1)
{
    return {style, 400, 300, false, std::move(lengths), 20, selected, 0};
}

std::string text(const TRect &rect)
{
    std::ostringstream out;
    out << rect.Left << ' ' << rect.Top << ' ' << rect.Right << ' ' << rect.Bottom;
    return out.str();
}

std::string text(TPoint point)
{
    return std::to_string(point.X) + ' ' + std::to_string(point.Y);
}

} // namespace

// Three tabs of 80 along the strip, the second selected: its place, what is drawn of it, page, page area, and
// how far the contents of the selected tab and of the others are moved.
TEST(TabGeometry, everythingIsInItsPlaceOnEverySide)
{
    const struct
    {
        TExtTabPosition Position;
        bool RightToLeft;
        const char *Places;
    } cases[] = {
        {tabPosTop, false, "86 3 166 23, 84 1 168 23, 4 26 396 296, 0 24 400 300, 0 -1, 0 1"},
        {tabPosBottom, false, "86 277 166 297, 84 277 168 299, 4 4 396 274, 0 0 400 276, 0 0, 0 -2"},
        {tabPosLeft, false, "3 86 23 166, 1 84 23 168, 26 4 396 296, 24 0 400 300, -2 0, 0 0"},
        {tabPosRight, false, "377 86 397 166, 377 84 399 168, 4 4 374 296, 0 0 376 300, 2 0, 0 0"},
        {tabPosTop, true, "234 3 314 23, 232 1 316 23, 4 26 396 296, 0 24 400 300, 0 -1, 0 1"},
        {tabPosLeft, true, "377 86 397 166, 377 84 399 168, 4 4 374 296, 0 0 376 300, 2 0, 0 0"},
        {tabPosRight, true, "3 86 23 166, 1 84 23 168, 26 4 396 296, 24 0 400 300, -2 0, 0 0"},
    };
    for (const auto &[position, rightToLeft, places] : cases) {
        auto what = spec(StyleWord(position, tabStDefault, false), {80, 80, 80}, 1);
        what.RightToLeft = rightToLeft;
        const TStripLayout strip(what);
        EXPECT_EQ(text(strip.Item(1)) + ", " + text(strip.DrawnItem(1)) + ", " + text(strip.DisplayArea()) +
                      ", " + text(strip.SheetArea()) + ", " + text(strip.ContentShift(true)) + ", " +
                      text(strip.ContentShift(false)),
                  places);
        EXPECT_EQ(strip.DrawnItem(0), strip.Item(0));
        EXPECT_EQ(strip.TabAt({strip.Item(1).Left + 9, strip.Item(1).Top + 9}), 1);
    }
    const TStripLayout buttons(spec(TCS_BUTTONS, {80, 80}, 1));
    EXPECT_EQ(buttons.DrawnItem(1), buttons.Item(1));
    EXPECT_EQ(buttons.ContentShift(true), TPoint());
    EXPECT_EQ(buttons.ContentShift(false), TPoint());

    const TStripLayout none(spec(0, {}));
    EXPECT_EQ(text(none.DisplayArea()), "4 6 396 296");
    EXPECT_EQ(none.TabAt({10, 10}), -1);
    EXPECT_EQ(none.Item(-1), TRect());
}

// Rows of two tabs each: 0 1, 2 3, 4.
TEST(TabGeometry, rowsKeepTheirOrderButTheSelectedOneIsAtThePage)
{
    const struct
    {
        int Selected;
        std::vector<int> Tops; // of the tabs 0, 2 and 4
    } cases[] = {{-1, {3, 23, 43}}, {1, {43, 3, 23}}, {2, {3, 43, 23}}, {4, {3, 23, 43}}};
    for (const auto &[selected, tops] : cases) {
        const TStripLayout strip(spec(TCS_MULTILINE, {180, 180, 180, 180, 180}, selected));
        EXPECT_EQ((std::vector{strip.Item(0).Top, strip.Item(2).Top, strip.Item(4).Top}), tops) << selected;
        EXPECT_EQ(strip.Item(1).Left, 186);
        EXPECT_EQ(strip.DisplayArea().Top, 3 * 20 + 2 + 4);
        EXPECT_TRUE(strip.Arrows().IsEmpty());
        EXPECT_EQ(std::set(strip.DrawingOrder().begin(), strip.DrawingOrder().end()).size(), 5U);
        if (selected == 4) {
            EXPECT_EQ(strip.TabAt({10, 42}), 4) << "the grown tab covers the edge of the row before it";
            EXPECT_EQ(strip.TabAt({10, 39}), 2);
            EXPECT_EQ(strip.DrawingOrder().back(), 4);
        }
    }
}

TEST(TabGeometry, anotherRowIsEnteredAtTheNearestTab)
{
    // 0 1 2, 3 4, 5 6 7, where 3 and 4 are wide and the tabs of `refused` cannot be entered.
    const TStripLayout strip(spec(TCS_MULTILINE, {120, 120, 120, 180, 180, 120, 120, 120}, 4));
    const struct
    {
        int Tab, Step, Next;
        std::set<int> Refused;
    } cases[] = {{0, 1, 3, {}},  {2, 1, 4, {}},     {4, -1, 2, {}},        {3, 1, 5, {}},
                 {5, 1, -1, {}}, {2, 1, 7, {3, 4}}, {7, -1, 1, {2, 3, 4}}, {-1, 1, -1, {}}};
    for (const auto &[tab, step, next, refused] : cases)
        EXPECT_EQ(strip.TabInRow(tab, step, [&](int other) { return !refused.contains(other); }), next)
            << tab;
}

// Ten tabs of 80 need 830 pixels of the 400.
TEST(TabGeometry, arrowsScrollWhatFindsNoRoom)
{
    auto what = spec(0, std::vector<int>(10, 80));
    const TStripLayout first(what);
    EXPECT_EQ(text(first.Arrows()), "364 3 400 23");
    EXPECT_EQ(first.TabAt({380, 10}), -1) << "the arrows cover the tab below";
    EXPECT_EQ(first.LastFirstTab(), 6);
    what.FirstTab = 2;
    const TStripLayout scrolled(what);
    EXPECT_EQ(scrolled.Item(2).Left, 3);
    EXPECT_EQ(scrolled.Item(0).Left, 3 - 2 * 83);
    for (const auto &[tab, begin] : {std::pair(1, 1), std::pair(3, 2), std::pair(6, 3)})
        EXPECT_EQ(scrolled.FirstTabShowing(tab), begin);
    what.FirstTab = 99;
    const TStripLayout last(what);
    EXPECT_EQ(last.FirstTab(), 6);
    EXPECT_LE(last.Item(9).Right, 364);
    for (const int size : {0, 1, 30}) {
        what.Width = size;
        EXPECT_EQ(TStripLayout(what).Count(), 10) << "a control too small for anything";
    }
}

TEST(ComCtlVersion, newMeansBeyond448)
{
    EXPECT_FALSE(IsNewComCtlVersion(0x00040030));
    EXPECT_TRUE(IsNewComCtlVersion(0x00040031));
#ifdef _WIN32
    EXPECT_TRUE(IsNewComCtlVersion(ComCtlVersion()));
#else
    EXPECT_FALSE(IsNewComCtlVersion(ComCtlVersion()));
#endif
}
