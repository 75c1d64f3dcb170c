#include "Samples.h"

#include <Zelmar01/tasks/service/RunTimes.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

using namespace Zelmar01;

namespace {

using TTexts = std::vector<std::string>;

TTexts textsOf(const std::vector<SYSTEMTIME> &times)
{
    TTexts texts(times.size());
    std::transform(times.begin(), times.end(), texts.begin(),
                   [](const auto &time) { return written(SecondsFromSystemTime(time).value()); });
    return texts;
}

SYSTEMTIME local(const std::string &text)
{
    return SystemTimeFromSeconds(at(text));
}

TTimeZone ruled(const char *rule)
{
    return TTimeZone(ParseZoneRule(rule).value());
}

struct TDaylightDay
{
    const char *Rule;
    TASK_TRIGGER Trigger;
    const char *From, *To; // local
    TTexts Starts;
};

constexpr auto paris = "CET-1CEST,M3.5.0,M10.5.0/3";
constexpr auto newYork = "EST5EDT,M3.2.0,M11.1.0";
constexpr auto lordHowe = "<+1030>-10:30<+11>-11,M10.1.0,M4.1.0";
constexpr auto santiago = "<-04>4<-03>,M9.1.6/24,M4.1.6/24";

const TDaylightDay daylightDays[] = {
    {paris,
     daily("2027-01-01 02:30"),
     "2027-03-27",
     "2027-03-30",
     {"2027-03-27 02:30", "2027-03-28 03:00", "2027-03-29 02:30"}},
    {paris,
     daily("2027-01-01 02:30"),
     "2027-10-30",
     "2027-11-02",
     {"2027-10-30 02:30", "2027-10-31 02:30", "2027-11-01 02:30"}},
    {newYork,
     daily("2027-01-01 02:30"),
     "2027-03-13",
     "2027-03-16",
     {"2027-03-13 02:30", "2027-03-14 03:00", "2027-03-15 02:30"}},
    {lordHowe,
     daily("2027-01-01 02:15"),
     "2027-10-02",
     "2027-10-05",
     {"2027-10-02 02:15", "2027-10-03 02:30", "2027-10-04 02:15"}},
    {lordHowe,
     daily("2027-01-01 01:45"),
     "2027-04-03",
     "2027-04-06",
     {"2027-04-03 01:45", "2027-04-04 01:45", "2027-04-05 01:45"}},
    {santiago,
     daily("2027-01-01 00:00"),
     "2027-09-04",
     "2027-09-07",
     {"2027-09-04 00:00", "2027-09-05 01:00", "2027-09-06 00:00"}},
    // Skipped starts fall together, and with the one that is there.
    {paris,
     repeated(daily("2027-01-01 01:00"), 30, 180),
     "2027-03-28",
     "2027-03-29",
     {"2027-03-28 01:00", "2027-03-28 01:30", "2027-03-28 03:00", "2027-03-28 03:30"}},
    {paris,
     repeated(daily("2027-01-01 01:30"), 30, 120),
     "2027-10-31",
     "2027-11-01",
     {"2027-10-31 01:30", "2027-10-31 02:00", "2027-10-31 02:30", "2027-10-31 03:00"}},
    // A question within the skipped hour.
    {paris, daily("2027-01-01 02:30"), "2027-03-28 02:45", "2027-03-29", {"2027-03-28 03:00"}},
};

struct TAnswer
{
    const char *What;
    std::vector<TASK_TRIGGER> Triggers;
    TTaskResult Result;
    const char *Next; // empty for none
};

// What every service answers is among its cases; these are of this one.
const TAnswer answers[] = {
    {"right now", {daily("2027-01-01 12:00")}, TaskResult::Ok, "2027-06-15 12:00"},
    {"an event and a time gone by",
     {starting("2027-01-01", TASK_EVENT_TRIGGER_AT_SYSTEMSTART), once("2027-01-01 08:00")},
     TaskResult::EventTrigger,
     ""},
    {"a time gone by", {once("2027-06-15 11:59")}, TaskResult::TaskNoMoreRuns, ""},
    {"a day that never comes", {byDate("2027-01-01 08:00", bit(31), 2)}, TaskResult::TaskNoMoreRuns, ""},
};

} // namespace

TEST(RunTimes, daysOnWhichClocksAreChanged)
{
    for (const auto &row : daylightDays) {
        SCOPED_TRACE(std::string(row.Rule) + " " + row.From);
        const TRunTimes times(std::span(&row.Trigger, 1), 0);
        const auto end = local(row.To);
        std::vector<SYSTEMTIME> starts;
        RunTimesBetween(times, local(row.From), &end, 20, ruled(row.Rule), starts);
        EXPECT_EQ(textsOf(starts), row.Starts);
    }
}

// In the second of two equal hours nothing is repeated that ran in the first.
TEST(RunTimes, askedWhileAnHourIsShownAgain)
{
    const auto trigger = repeated(daily("2027-01-01 00:00"), 10, 1440);
    const TRunTimes times(std::span(&trigger, 1), 0);
    const auto zone = ruled(paris);
    EXPECT_EQ(written(times.Next(at("2027-10-31 00:55"), zone).value()), "2027-10-31 02:00");
    EXPECT_EQ(written(times.Next(at("2027-10-31 01:05"), zone).value()), "2027-10-31 02:00");
    EXPECT_EQ(written(times.Next(at("2027-10-31 00:50"), zone).value()), "2027-10-31 00:50");
}

TEST(RunTimes, theNextOneOrWhyThereIsNone)
{
    for (const auto &row : answers) {
        SCOPED_TRACE(row.What);
        SYSTEMTIME next{1, 2, 3, 4, 5, 6, 7, 8};
        EXPECT_EQ(NextRunTime({row.Triggers, 0}, at("2027-06-15 12:00"), TTimeZone(), next), row.Result);
        EXPECT_EQ(next, *row.Next ? local(row.Next) : SYSTEMTIME{});
    }
}

TEST(RunTimes, aSpanOfThem)
{
    const std::vector<TASK_TRIGGER> triggers{daily("2027-01-01 08:00"), weekly("2027-01-01 08:00", 1, Mon),
                                             once("2027-01-02 09:00")};
    const TRunTimes times(triggers, 0);
    const TTimeZone zone(3600);
    const auto ask = [&](const SYSTEMTIME &begin, const SYSTEMTIME *end, std::uint16_t count, TTexts &texts) {
        std::vector<SYSTEMTIME> starts;
        const auto result = RunTimesBetween(times, begin, end, count, zone, starts);
        texts = textsOf(starts);
        return result;
    };
    TTexts texts;
    const auto begin = local("2027-01-01 08:00"), end = local("2027-01-03 08:00");
    // The begin counts, the end does not; a start of two triggers is one.
    EXPECT_EQ(ask(begin, &end, 9, texts), TaskResult::False);
    EXPECT_EQ(texts, (TTexts{"2027-01-01 08:00", "2027-01-02 08:00", "2027-01-02 09:00"}));
    EXPECT_EQ(ask(begin, &end, 3, texts), TaskResult::Ok);
    auto justAfter = begin;
    justAfter.wMilliseconds = 1;
    EXPECT_EQ(ask(justAfter, nullptr, 1, texts), TaskResult::Ok);
    EXPECT_EQ(texts, TTexts{"2027-01-02 08:00"});
    EXPECT_EQ(ask(local("2027-01-04 08:00"), nullptr, 2, texts), TaskResult::Ok);
    EXPECT_EQ(texts, (TTexts{"2027-01-04 08:00", "2027-01-05 08:00"}));
    EXPECT_EQ(ask(begin, nullptr, TaskMaxRunTimes, texts), TaskResult::Ok);
    EXPECT_EQ(texts.size(), TaskMaxRunTimes);
    EXPECT_EQ(ask(begin, &begin, 1, texts), TaskResult::False);
    EXPECT_EQ(ask(begin, nullptr, 0, texts), TaskResult::Ok);
    EXPECT_EQ(texts, TTexts{});
    EXPECT_EQ(ask(begin, nullptr, TaskMaxRunTimes + 1, texts), TaskResult::InvalidArgument);
    EXPECT_EQ(ask(SYSTEMTIME{}, nullptr, 1, texts), TaskResult::InvalidArgument);
    const SYSTEMTIME noDay{2027, 2, 0, 30, 0, 0, 0, 0};
    EXPECT_EQ(ask(begin, &noDay, 1, texts), TaskResult::InvalidArgument);
}
