#include <Zelmar01/controls/GaugeGeometry.h>

#include <gtest/gtest.h>

#include <limits>

using namespace Zelmar01;

TEST(GaugeGeometry, percentIsCutNotRounded)
{
    constexpr int lowest = std::numeric_limits<int>::min(), highest = std::numeric_limits<int>::max();
    const struct
    {
        int Min, Max, Progress, Percent;
    } cases[] = {
        {0, 3, 1, 33},
        {0, 3, 2, 66},
        {7, 7, 7, 0},
        {-100, 100, -1, 49},
        {lowest, highest, highest, 100},
        {lowest, highest, -1, 49},
        {lowest, highest, 0, 50},
        {200, 100, 150, 50},
        {0, 1, highest, highest},
        {0, -1, highest, lowest},
    };
    for (const auto &one : cases)
        EXPECT_EQ(GaugePercent(one.Min, one.Max, one.Progress), one.Percent)
            << one.Min << ".." << one.Max << " at " << one.Progress;
}

TEST(GaugeGeometry, barsEndWhereTheyAlwaysDid)
{
    const TGaugeRect margin{1, 1, 419, 31}, whole{0, 0, 420, 32};
    const struct
    {
        TGaugeRect Rect;
        int Percent;
        TGaugeRect Horizontal, Vertical;
    } cases[] = {
        {margin, 0, {}, {1, 31, 419, 31}},
        {margin, 1, {1, 1, 4, 31}, {1, 31, 419, 31}},
        {margin, 50, {1, 1, 209, 31}, {1, 16, 419, 31}},
        {margin, 100, {1, 1, 419, 31}, {1, 1, 419, 31}},
        {whole, 50, {0, 0, 210, 33}, {0, 17, 421, 33}},
        {whole, 100, {0, 0, 421, 33}, {0, 1, 421, 33}},
        {{0, 0, 99, 99}, 29, {0, 0, 29, 100}, {0, 71, 100, 100}},
        {{0, 0, 0, 0}, 100, {0, 0, 1, 1}, {0, 1, 1, 1}},
    };
    for (const auto &one : cases) {
        EXPECT_EQ(HorizontalBar(one.Rect, one.Percent), one.Horizontal) << one.Percent;
        EXPECT_EQ(VerticalBar(one.Rect, one.Percent), one.Vertical) << one.Percent;
    }
}
