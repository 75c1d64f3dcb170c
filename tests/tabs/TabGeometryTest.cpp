#include <Zelmar01/tabs/TabGeometry.h>
#include <Zelmar01/tabs/TabStyleWord.h>

#include <gtest/gtest.h>

#include <ostream>
#include <set>

using namespace Zelmar01;

namespace Zelmar01 {

void PrintTo(const TRect &rect, std::ostream *out)
{
    *out << '{' << rect.Left << ", " << rect.Top << ", " << rect.Right << ", " << rect.Bottom << '}';
}
void PrintTo(const TPoint &point, std::ostream *out)
{
    *out << '{' << point.X << ", " << point.Y << '}';
}

} // namespace Zelmar01

namespace {

constexpr int width = 400, height = 300;

TStripSpec spec(TExtTabPosition position, std::vector<int> lengths, int thickness, int selected = -1)
{
    return {StyleWord(position, tabStDefault, false),
            width,
            height,
            false,
            std::move(lengths),
            thickness,
            selected,
            0};
}

struct TSide
{
    TExtTabPosition Position;
    bool RightToLeft;
    TRect Second, SecondDrawn, Display, Sheet;
    TPoint Selected, Other;
};

class Sides : public testing::TestWithParam<TSide>
{
};

} // namespace

TEST(StyleWord, namesOnlyTheBitsOfItsProperties)
{
    const struct
    {
        TExtTabPosition Position;
        TExtTabStyle Style;
        bool MultiLine;
        std::uint32_t Word;
    } cases[] = {
        {tabPosLeft, tabStDefault, false, 0x2080},  {tabPosRight, tabStDefault, false, 0x2082},
        {tabPosTop, tabStDefault, false, 0x2000},   {tabPosBottom, tabStDefault, false, 0x2002},
        {tabPosTop, tabStButton, false, 0x2100},    {tabPosTop, tabStDefault, true, 0x2200},
        {tabPosBottom, tabStDefault, true, 0x2202}, {tabPosRight, tabStButton, true, 0x2382},
    };
    for (const auto &[position, style, multiLine, word] : cases) {
        EXPECT_EQ(StyleWord(position, style, multiLine), word);
        EXPECT_EQ(PositionOf(word), position);
    }
}

// Three tabs of 80 along and 20 across, the second selected; strip of 22.
TEST_P(Sides, putEverythingInItsPlace)
{
    const auto &side = GetParam();
    auto what = spec(side.Position, {80, 80, 80}, 20, 1);
    what.RightToLeft = side.RightToLeft;
    const TStripLayout strip(what);
    EXPECT_EQ(strip.Item(1), side.Second);
    EXPECT_EQ(strip.DrawnItem(1), side.SecondDrawn);
    EXPECT_EQ(strip.DrawnItem(0), strip.Item(0));
    EXPECT_EQ(strip.DisplayArea(), side.Display);
    EXPECT_EQ(strip.SheetArea(), side.Sheet);
    EXPECT_EQ(strip.ContentShift(true), side.Selected);
    EXPECT_EQ(strip.ContentShift(false), side.Other);
    EXPECT_TRUE(strip.Arrows().IsEmpty());
    EXPECT_EQ(strip.TabAt({(side.Second.Left + side.Second.Right) / 2, side.Second.Top + 5}), 1);
}

INSTANTIATE_TEST_SUITE_P(Tabs, Sides,
                         testing::Values(TSide{tabPosTop,
                                               false,
                                               {86, 3, 166, 23},
                                               {84, 1, 168, 23},
                                               {4, 26, 396, 296},
                                               {0, 24, 400, 300},
                                               {0, -1},
                                               {0, 1}},
                                         TSide{tabPosBottom,
                                               false,
                                               {86, 277, 166, 297},
                                               {84, 277, 168, 299},
                                               {4, 4, 396, 274},
                                               {0, 0, 400, 276},
                                               {0, 0},
                                               {0, -2}},
                                         TSide{tabPosLeft,
                                               false,
                                               {3, 86, 23, 166},
                                               {1, 84, 23, 168},
                                               {26, 4, 396, 296},
                                               {24, 0, 400, 300},
                                               {-2, 0},
                                               {0, 0}},
                                         TSide{tabPosRight,
                                               false,
                                               {377, 86, 397, 166},
                                               {377, 84, 399, 168},
                                               {4, 4, 374, 296},
                                               {0, 0, 376, 300},
                                               {2, 0},
                                               {0, 0}},
                                         TSide{tabPosTop,
                                               true,
                                               {234, 3, 314, 23},
                                               {232, 1, 316, 23},
                                               {4, 26, 396, 296},
                                               {0, 24, 400, 300},
                                               {0, -1},
                                               {0, 1}},
                                         TSide{tabPosBottom,
                                               true,
                                               {234, 277, 314, 297},
                                               {232, 277, 316, 299},
                                               {4, 4, 396, 274},
                                               {0, 0, 400, 276},
                                               {0, 0},
                                               {0, -2}},
                                         TSide{tabPosLeft,
                                               true,
                                               {377, 86, 397, 166},
                                               {377, 84, 399, 168},
                                               {4, 4, 374, 296},
                                               {0, 0, 376, 300},
                                               {2, 0},
                                               {0, 0}},
                                         TSide{tabPosRight,
                                               true,
                                               {3, 86, 23, 166},
                                               {1, 84, 23, 168},
                                               {26, 4, 396, 296},
                                               {24, 0, 400, 300},
                                               {-2, 0},
                                               {0, 0}}));

TEST(TabGeometry, buttonsNeitherGrowNorShift)
{
    auto what = spec(tabPosTop, {80, 80}, 20, 1);
    what.Style |= TCS_BUTTONS;
    const TStripLayout strip(what);
    EXPECT_EQ(strip.DrawnItem(1), strip.Item(1));
    for (const bool selected : {false, true})
        EXPECT_EQ(strip.ContentShift(selected), TPoint());
}

TEST(TabGeometry, rowsKeepTheirOrderButTheSelectedOneIsAtThePage)
{
    // Rows of two tabs each: 0 1, 2 3, 4.
    const struct
    {
        int Selected;
        std::vector<int> Tops; // of the tabs 0, 2 and 4
    } cases[] = {{-1, {3, 23, 43}}, {1, {43, 3, 23}}, {2, {3, 43, 23}}, {4, {3, 23, 43}}};
    for (const auto &[selected, tops] : cases) {
        auto what = spec(tabPosTop, {180, 180, 180, 180, 180}, 20, selected);
        what.Style |= TCS_MULTILINE;
        const TStripLayout strip(what);
        EXPECT_EQ(strip.RowCount(), 3);
        EXPECT_EQ((std::vector{strip.Item(0).Top, strip.Item(2).Top, strip.Item(4).Top}), tops) << selected;
        EXPECT_EQ(strip.Item(1).Left, 186);
        EXPECT_EQ(strip.DisplayArea().Top, 3 * 20 + 2 + 4);
        EXPECT_TRUE(strip.Arrows().IsEmpty());
        if (selected >= 0) {
            EXPECT_EQ(strip.DrawingOrder().back(), selected);
        }
        EXPECT_EQ(std::set(strip.DrawingOrder().begin(), strip.DrawingOrder().end()).size(), 5U);
        // The grown tab covers the edge of the row before it.
        if (selected == 4) {
            EXPECT_EQ(strip.TabAt({10, 42}), 4);
            EXPECT_EQ(strip.TabAt({10, 39}), 2);
        }
    }
}

TEST(TabGeometry, arrowsScrollWhatFindsNoRoom)
{
    // Ten tabs of 80 need 830 pixels of the 400.
    auto what = spec(tabPosTop, std::vector<int>(10, 80), 20);
    const TStripLayout first(what);
    EXPECT_EQ(first.Arrows(), (TRect{364, 3, 400, 23}));
    EXPECT_EQ(first.Item(0).Left, 3);
    EXPECT_EQ(first.TabAt({380, 10}), -1) << "the arrows cover the tab below";
    EXPECT_EQ(first.LastFirstTab(), 6);

    what.FirstTab = 2;
    const TStripLayout scrolled(what);
    EXPECT_EQ(scrolled.Item(2).Left, 3);
    EXPECT_EQ(scrolled.Item(0).Left, 3 - 2 * 83);
    EXPECT_EQ(scrolled.FirstTabShowing(1), 1);
    EXPECT_EQ(scrolled.FirstTabShowing(3), 2) << "seen already";
    EXPECT_EQ(scrolled.FirstTabShowing(6), 3);

    what.FirstTab = 99;
    const TStripLayout last(what);
    EXPECT_EQ(last.FirstTab(), 6);
    EXPECT_LE(last.Item(9).Right, 364);

    for (const int size : {0, 1, 30}) {
        what.Width = size;
        what.FirstTab = 3;
        EXPECT_EQ(TStripLayout(what).Count(), 10) << "a control too small for anything";
    }
}

TEST(TabGeometry, withoutTabsThereIsAPageAreaOnly)
{
    const TStripLayout strip(spec(tabPosTop, {}, 20));
    EXPECT_EQ(strip.DisplayArea(), (TRect{4, 6, 396, 296}));
    EXPECT_EQ(strip.TabAt({10, 10}), -1);
    EXPECT_EQ(strip.Item(0), TRect());
    EXPECT_EQ(strip.Item(-1), TRect());
}
