#include <Zelmar01/core/DateTime.h>
#include <Zelmar01/core/Exceptions.h>

#include <gtest/gtest.h>

#include <cmath>

using namespace Zelmar01;

namespace {

struct TMoment
{
    TDateTime Value;
    TDateTimeParts Parts;
};

// Clang-format would give each part a line of its own.
// clang-format off
const TMoment moments[] = {
    {0.0, {1899, 12, 30, 0, 0, 0, 0}},
    {2.75, {1900, 1, 1, 18, 0, 0, 0}},
    {-1.25, {1899, 12, 29, 6, 0, 0, 0}},
    {25569.0, {1970, 1, 1, 0, 0, 0, 0}},
    {36585.5, {2000, 2, 29, 12, 0, 0, 0}},
    {-693593.0, {1, 1, 1, 0, 0, 0, 0}},
    {2958465.0 + 86'399'999 / 86'400'000.0, {9999, 12, 31, 23, 59, 59, 999}},
    {45000.0 + 86'399'999.7 / 86'400'000.0, {2023, 3, 16, 0, 0, 0, 0}}, // rounds up into the next day
};
// clang-format on

struct TBadDate
{
    int Year, Month, Day;
};
const TBadDate badDates[] = {{0, 1, 1},     {10000, 1, 1}, {2026, 0, 1},  {2026, 13, 1}, {2026, 1, 0},
                             {2026, 1, 32}, {2026, 4, 31}, {1900, 2, 29}, {2026, 2, 29}, {2026, -1, 257}};

} // namespace

TEST(DateTime, momentsAndTheirParts)
{
    for (const auto &moment : moments) {
        SCOPED_TRACE(moment.Value);
        EXPECT_EQ(DecodeDateTime(moment.Value), moment.Parts);
        const auto &p = moment.Parts;
        const double time = EncodeTime(p.Hour, p.Minute, p.Second, p.Millisecond);
        const double date = EncodeDate(p.Year, p.Month, p.Day);
        EXPECT_NEAR(moment.Value, date < 0 ? date - time : date + time, 0.4 / 86'400'000);
    }
}

TEST(DateTime, refusesWhatTheCalendarLacks)
{
    for (const auto &bad : badDates) {
        TDateTime untouched = 7;
        EXPECT_FALSE(TryEncodeDate(bad.Year, bad.Month, bad.Day, untouched)) << bad.Year << '-' << bad.Month;
        EXPECT_EQ(untouched, 7);
        EXPECT_THROW(EncodeDate(bad.Year, bad.Month, bad.Day), EConvertError);
    }
    for (const double bad : {-693594.0, 2958466.0, 2958466.0 - 1e-9, 1e9, -1e300, std::nan(""), HUGE_VAL})
        EXPECT_THROW(DecodeDateTime(bad), EConvertError) << bad;
    EXPECT_THROW(EncodeTime(24, 0, 0, 0), EConvertError);
    EXPECT_THROW(EncodeTime(23, 59, 60, 0), EConvertError);
    EXPECT_THROW(EncodeTime(0, -1, 0, 0), EConvertError);
}
