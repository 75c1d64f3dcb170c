#include "Samples.h"

#include <Zelmar01/tasks/service/TriggerTimes.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <sstream>
#include <vector>

using namespace Zelmar01;

namespace {

struct TWorkedDates
{
    const char *What;
    TASK_TRIGGER Trigger;
    const char *From;
    std::vector<const char *> Starts; // all that there are when the last is ""
};

constexpr std::uint16_t january = 1, february = 2, april = 8;

const TWorkedDates workedDates[] = {
    {"once", once("2027-01-31 08:15"), "2020-01-01", {"2027-01-31 08:15", ""}},
    {"asked at the very minute",
     daily("2027-01-01 08:00"),
     "2027-03-05 08:00",
     {"2027-03-05 08:00", "2027-03-06 08:00"}},
    {"days are counted from the first",
     daily("2027-12-30 06:00", 3),
     "2028-01-01",
     {"2028-01-02 06:00", "2028-01-05 06:00"}},
    {"the end date is the last day",
     ending(daily("2027-05-01 23:59"), "2027-05-02"),
     "2027-01-01",
     {"2027-05-01 23:59", "2027-05-02 23:59", ""}},
    {"an end before the begin", ending(daily("2027-05-01 23:59"), "2027-04-30"), "2027-01-01", {""}},
    {"every 2nd week, counted from Sunday",
     weekly("2027-02-03 09:00", 2, Mon | Fri),
     "2027-01-01",
     {"2027-02-05 09:00", "2027-02-15 09:00", "2027-02-19 09:00", "2027-03-01 09:00"}},
    {"begins after its day of the week",
     weekly("2027-02-06 09:00", 3, Mon),
     "2027-01-01",
     {"2027-02-22 09:00", "2027-03-15 09:00"}},
    {"every 5th week into the next year",
     weekly("2026-11-29 00:00", 5, Sun | Sat),
     "2026-12-06",
     {"2027-01-03 00:00", "2027-01-09 00:00", "2027-02-07 00:00"}},
    {"day 31",
     byDate("2027-01-31 12:00", bit(31)),
     "2027-01-01",
     {"2027-01-31 12:00", "2027-03-31 12:00", "2027-05-31 12:00"}},
    {"29 February, also past 2100",
     byDate("2027-01-01 12:00", bit(29), february),
     "2092-03-01",
     {"2096-02-29 12:00", "2104-02-29 12:00"}},
    {"30 and 31 of February, and of no other month",
     byDate("2027-01-01 12:00", bit(30) | bit(31), february),
     "2027-01-01",
     {""}},
    {"31 of the short months", byDate("2027-01-01 12:00", bit(31), 0b10100101010), "2027-01-01", {""}},
    {"3rd Monday and Friday",
     byWeekday("2027-01-01 07:00", 3, Mon | Fri, january | april),
     "2027-01-01",
     {"2027-01-15 07:00", "2027-01-18 07:00", "2027-04-16 07:00", "2027-04-19 07:00"}},
    {"last Tuesday of February",
     byWeekday("2027-01-01 07:00", 5, Tue, february),
     "2027-01-01",
     {"2027-02-23 07:00", "2028-02-29 07:00"}},
    {"the repetition stops before its duration",
     repeated(once("2027-01-31 08:00"), 1, 4),
     "2027-01-01",
     {"2027-01-31 08:00", "2027-01-31 08:01", "2027-01-31 08:02", "2027-01-31 08:03", ""}},
    {"a repetition past midnight",
     repeated(daily("2027-01-01 15:42"), 60, 1440),
     "2027-01-05 12:43",
     {"2027-01-05 13:42", "2027-01-05 14:42", "2027-01-05 15:42"}},
    {"no repetition before the first day",
     repeated(daily("2027-01-02 15:42"), 60, 1440),
     "2027-01-01",
     {"2027-01-02 15:42", "2027-01-02 16:42"}},
    {"no repetition past the end date",
     ending(repeated(daily("2027-01-01 22:30"), 60, 300), "2027-01-01"),
     "2027-01-01",
     {"2027-01-01 22:30", "2027-01-01 23:30", ""}},
    {"repetitions that overlap",
     repeated(daily("2027-01-01 00:00"), 1000, 4000),
     "2027-01-10",
     {"2027-01-10 00:00", "2027-01-10 02:00", "2027-01-10 09:20", "2027-01-10 16:40", "2027-01-11 00:00"}},
    {"one start repeated for years",
     repeated(once("2027-01-01 00:00"), 1440, 1440 * 3000),
     "2035-03-18",
     {"2035-03-18 00:00", "2035-03-19 00:00", ""}},
    {"no days", weekly("2027-01-01 00:00", 1, 0x80), "2027-01-01", {""}},
    {"every 0 days", daily("2027-01-01 00:00", 0), "2027-01-01", {""}},
    {"every 0 weeks", weekly("2027-01-01 00:00", 0, Mon), "2027-01-01", {""}},
    {"no months", byDate("2027-01-01 00:00", bit(1), 0xF000), "2027-01-01", {""}},
    {"the 6th week", byWeekday("2027-01-01 00:00", 6, Mon), "2027-01-01", {""}},
    {"the last of all days", daily("2027-01-01 00:00"), "30827-12-31", {"30827-12-31 00:00", ""}},
    {"an event", starting("2027-01-01 00:00", TASK_EVENT_TRIGGER_AT_LOGON), "2027-01-01", {""}},
    {"an unknown kind", starting("2027-01-01 00:00", static_cast<TASK_TRIGGER_TYPE>(77)), "2027-01-01", {""}},
};

// The days of a trigger told one by one and from its begin on, in the plainest way.
bool isBaseDay(const TASK_TRIGGER &trigger, TDay first, TDay day)
{
    const auto date = CivilFromDay(day);
    const auto &type = trigger.Type;
    switch (trigger.TriggerType) {
    case TASK_TIME_TRIGGER_ONCE:
        return day == first;
    case TASK_TIME_TRIGGER_DAILY:
        return (day - first) % type.Daily.DaysInterval == 0;
    case TASK_TIME_TRIGGER_WEEKLY: {
        int weeks = 0;
        for (auto passed = first + 1; passed <= day; ++passed)
            weeks += WeekdayOf(passed) == 0;
        return type.Weekly.rgfDaysOfTheWeek >> WeekdayOf(day) & 1 && weeks % type.Weekly.WeeksInterval == 0;
    }
    case TASK_TIME_TRIGGER_MONTHLYDATE:
        return type.MonthlyDate.rgfDays & bit(date.Day) && type.MonthlyDate.rgfMonths & bit(date.Month);
    case TASK_TIME_TRIGGER_MONTHLYDOW: {
        const auto week = type.MonthlyDOW.wWhichWeek;
        const bool inWeek =
            week == 5 ? CivilFromDay(day + 7).Month != date.Month : (date.Day + 6) / 7 == week;
        return inWeek && type.MonthlyDOW.rgfDaysOfTheWeek >> WeekdayOf(day) & 1 &&
               type.MonthlyDOW.rgfMonths & bit(date.Month);
    }
    default:
        return false;
    }
}

std::vector<TSeconds> startsDayByDay(const TASK_TRIGGER &trigger, int days)
{
    const auto first = *ValidDay(trigger.wBeginYear, trigger.wBeginMonth, trigger.wBeginDay);
    auto last = first + days;
    if (trigger.rgFlags & TriggerFlag::HasEndDate)
        last = std::min(last, *ValidDay(trigger.wEndYear, trigger.wEndMonth, trigger.wEndDay) + 1);
    std::vector<TSeconds> starts;
    for (auto day = first; day < last; ++day) {
        if (!isBaseDay(trigger, first, day))
            continue;
        const auto base =
            day * SecondsADay + trigger.wStartHour * SecondsAnHour + trigger.wStartMinute * SecondsAMinute;
        starts.push_back(base);
        for (auto after = trigger.MinutesInterval; after > 0 && after < trigger.MinutesDuration;
             after += trigger.MinutesInterval)
            if (const auto start = base + after * SecondsAMinute; start < last * SecondsADay)
                starts.push_back(start);
    }
    std::sort(starts.begin(), starts.end());
    starts.erase(std::unique(starts.begin(), starts.end()), starts.end());
    return starts;
}

TASK_TRIGGER randomTrigger(std::mt19937 &random)
{
    const auto below = [&](unsigned limit) { return static_cast<std::uint16_t>(random() % limit); };
    const auto begin =
        written(at("1890-01-01") + TSeconds(random() % 80'000) * SecondsADay + below(1440) * SecondsAMinute);
    TASK_TRIGGER trigger;
    switch (below(5)) {
    case 0:
        trigger = once(begin);
        break;
    case 1:
        trigger = daily(begin, static_cast<std::uint16_t>(1 + below(40)));
        break;
    case 2:
        trigger = weekly(begin, static_cast<std::uint16_t>(1 + below(6)),
                         static_cast<std::uint16_t>(1 + below(127)));
        break;
    case 3:
        trigger = byDate(begin, static_cast<std::uint32_t>(random() & random()),
                         static_cast<std::uint16_t>(random() & random()));
        break;
    default:
        trigger = byWeekday(begin, static_cast<std::uint16_t>(1 + below(5)),
                            static_cast<std::uint16_t>(1 + below(127)),
                            static_cast<std::uint16_t>(random() & random()));
        break;
    }
    if (below(2) == 0)
        trigger = ending(trigger, written(at(begin.substr(0, 10)) + below(500) * SecondsADay));
    if (below(2) == 0) {
        const auto interval = 1U + below(below(2) == 0 ? 200 : 3000);
        trigger = repeated(trigger, interval, interval + 1 + below(6000));
    }
    return trigger;
}

} // namespace

TEST(TriggerTimes, workedDates)
{
    for (const auto &row : workedDates) {
        SCOPED_TRACE(row.What);
        const TTriggerTimes times(row.Trigger);
        auto from = at(row.From);
        for (const std::string start : row.Starts) {
            const auto next = times.Next(from);
            EXPECT_EQ(next == TTriggerTimes::NoStart ? "" : written(next), start);
            from = next + (next != TTriggerTimes::NoStart);
        }
    }
}

TEST(TriggerTimes, randomTriggersStartOnTheirDaysAndOnNoOther)
{
    std::mt19937 random(20270131);
    for (int round = 0; round < 400; ++round) {
        const auto trigger = randomTrigger(random);
        constexpr int days = 800;
        const auto expected = startsDayByDay(trigger, days);
        const TTriggerTimes times(trigger);
        const auto first = *ValidDay(trigger.wBeginYear, trigger.wBeginMonth, trigger.wBeginDay);
        const auto seen = (first + days) * SecondsADay;
        // One after the other, and from moments in no order.
        auto from = first * SecondsADay;
        for (const auto start : expected) {
            ASSERT_EQ(times.Next(from), start) << "round " << round << ", from " << written(from);
            from = start + 1;
        }
        ASSERT_GE(times.Next(from), seen) << "round " << round;
        for (int i = 0; i < 200; ++i) {
            from = first * SecondsADay + static_cast<TSeconds>(random() % (days * SecondsADay));
            const auto start = std::lower_bound(expected.begin(), expected.end(), from);
            if (start != expected.end())
                ASSERT_EQ(times.Next(from), *start) << "round " << round << ", from " << written(from);
            else
                ASSERT_GE(times.Next(from), seen) << "round " << round << ", from " << written(from);
        }
    }
}

// No record, however broken, leads to a start before the question or to a search that a person would notice.
TEST(TriggerTimes, anyRecordIsAnswered)
{
    std::mt19937 random(7);
    for (int round = 0; round < 20'000; ++round) {
        TASK_TRIGGER trigger = randomTrigger(random);
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
