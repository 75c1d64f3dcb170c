#include "Samples.h"

#include <Zelmar01/tasks/service/TriggerTimes.h>

#include <gtest/gtest.h>

#include <iterator>
#include <random>

using namespace Zelmar01;

namespace {

// The starts from a moment on, one after the other; "none" behind the last one that there is.
struct TWorkedDates
{
    const char *What;
    TASK_TRIGGER Trigger;
    const char *From, *Starts;
};

constexpr std::uint16_t january = 1, february = 2, april = 8;

const TWorkedDates workedDates[] = {
    {"once", once("2027-01-31 08:15"), "2020-01-01", "2027-01-31 08:15, none"},
    {"asked at the very minute", daily("2027-01-01 08:00"), "2027-03-05 08:00",
     "2027-03-05 08:00, 2027-03-06 08:00"},
    {"days are counted from the first", daily("2027-12-30 06:00", 3), "2028-01-01",
     "2028-01-02 06:00, 2028-01-05 06:00"},
    {"the end date is the last day", ending(daily("2027-05-01 23:59"), "2027-05-02"), "2027-01-01",
     "2027-05-01 23:59, 2027-05-02 23:59, none"},
    {"an end before the begin", ending(daily("2027-05-01 23:59"), "2027-04-30"), "2027-01-01", "none"},
    {"every 2nd week, counted from Sunday", weekly("2027-02-03 09:00", 2, Mon | Fri), "2027-01-01",
     "2027-02-05 09:00, 2027-02-15 09:00, 2027-02-19 09:00, 2027-03-01 09:00"},
    {"begins after its day of the week", weekly("2027-02-06 09:00", 3, Mon), "2027-01-01",
     "2027-02-22 09:00, 2027-03-15 09:00"},
    {"every 5th week into the next year", weekly("2026-11-29 00:00", 5, Sun | Sat), "2026-12-06",
     "2027-01-03 00:00, 2027-01-09 00:00, 2027-02-07 00:00"},
    {"day 31", byDate("2027-01-31 12:00", bit(31)), "2027-01-01",
     "2027-01-31 12:00, 2027-03-31 12:00, 2027-05-31 12:00"},
    {"29 February, also past 2100", byDate("2027-01-01 12:00", bit(29), february), "2092-03-01",
     "2096-02-29 12:00, 2104-02-29 12:00"},
    {"30 and 31 of February", byDate("2027-01-01 12:00", bit(30) | bit(31), february), "2027-01-01", "none"},
    {"31 of the short months", byDate("2027-01-01 12:00", bit(31), 0b10100101010), "2027-01-01", "none"},
    {"3rd Monday and Friday", byWeekday("2027-01-01 07:00", 3, Mon | Fri, january | april), "2027-01-01",
     "2027-01-15 07:00, 2027-01-18 07:00, 2027-04-16 07:00, 2027-04-19 07:00"},
    {"last Tuesday of February", byWeekday("2027-01-01 07:00", 5, Tue, february), "2027-01-01",
     "2027-02-23 07:00, 2028-02-29 07:00"},
    {"the repetition stops before its duration", repeated(once("2027-01-31 08:00"), 1, 3), "2027-01-01",
     "2027-01-31 08:00, 2027-01-31 08:01, 2027-01-31 08:02, none"},
    {"a repetition past midnight", repeated(daily("2027-01-01 15:42"), 60, 1440), "2027-01-05 12:43",
     "2027-01-05 13:42, 2027-01-05 14:42, 2027-01-05 15:42"},
    {"no repetition before the first day", repeated(daily("2027-01-02 15:42"), 60, 1440), "2027-01-01",
     "2027-01-02 15:42, 2027-01-02 16:42"},
    {"no repetition past the end date", ending(repeated(daily("2027-01-01 22:30"), 60, 300), "2027-01-01"),
     "2027-01-01", "2027-01-01 22:30, 2027-01-01 23:30, none"},
    {"repetitions that overlap", repeated(daily("2027-01-01 00:00"), 1000, 4000), "2027-01-10",
     "2027-01-10 00:00, 2027-01-10 02:00, 2027-01-10 09:20, 2027-01-10 16:40, 2027-01-11 00:00"},
    {"one start repeated for years", repeated(once("2027-01-01 00:00"), 1440, 1440 * 3000), "2035-03-18",
     "2035-03-18 00:00, 2035-03-19 00:00, none"},
    {"no days", weekly("2027-01-01 00:00", 1, 0x80), "2027-01-01", "none"},
    {"every 0 days", daily("2027-01-01 00:00", 0), "2027-01-01", "none"},
    {"every 0 weeks", weekly("2027-01-01 00:00", 0, Mon), "2027-01-01", "none"},
    {"no months", byDate("2027-01-01 00:00", bit(1), 0xF000), "2027-01-01", "none"},
    {"the 6th week", byWeekday("2027-01-01 00:00", 6, Mon), "2027-01-01", "none"},
    {"the last of all days", daily("2027-01-01 00:00"), "30827-12-31", "30827-12-31 00:00, none"},
    {"an event", starting("2027-01-01 00:00", TASK_EVENT_TRIGGER_AT_LOGON), "2027-01-01", "none"},
    {"unknown", starting("2027-01-01 00:00", static_cast<TASK_TRIGGER_TYPE>(77)), "2027-01-01", "none"},
};

} // namespace

TEST(TriggerTimes, workedDates)
{
    for (const auto &row : workedDates) {
        const std::string expected = row.Starts;
        const TTriggerTimes times(row.Trigger);
        std::string starts;
        for (auto from = at(row.From); starts.size() < expected.size();) {
            const auto next = times.Next(from);
            starts +=
                (starts.empty() ? "" : ", ") + (next == TTriggerTimes::NoStart ? "none" : written(next));
            if (next == TTriggerTimes::NoStart)
                break;
            from = next + 1;
        }
        EXPECT_EQ(starts, expected) << row.What;
    }
}

// No record, however broken, leads to a start before the question or to a search that a person would notice.
// That random ones start when they should is compared with another implementation (second_opinion.py).
TEST(TriggerTimes, anyRecordIsAnswered)
{
    std::mt19937 random(7);
    for (int round = 0; round < 20'000; ++round) {
        auto trigger = workedDates[random() % std::size(workedDates)].Trigger;
        auto *const bytes = reinterpret_cast<unsigned char *>(&trigger);
        for (auto changes = random() % 6; changes > 0; --changes)
            bytes[random() % sizeof trigger] = static_cast<unsigned char>(random());
        const TTriggerTimes times(trigger);
        auto from = at("1601-01-01") + static_cast<TSeconds>(random() % 1000) * 300 * SecondsADay;
        for (int i = 0; i < 5; ++i) {
            const auto next = times.Next(from);
            if (next == TTriggerTimes::NoStart)
                break;
            ASSERT_GE(next, from) << "round " << round;
            ASSERT_TRUE(times.CanStart());
            from = next + 1;
        }
    }
}
