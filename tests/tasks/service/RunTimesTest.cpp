#include "Samples.h"

#include <Zelmar01/tasks/service/RunTimes.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace Zelmar01;

namespace {

std::string textOf(const std::vector<SYSTEMTIME> &times)
{
    std::string text;
    for (const auto &time : times)
        text += (text.empty() ? "" : ", ") + written(SecondsFromSystemTime(time).value());
    return text;
}

SYSTEMTIME local(const std::string &text)
{
    return SystemTimeFromSeconds(at(text));
}

struct TDaylightDay
{
    const char *Rule;
    TASK_TRIGGER Trigger;
    const char *From, *To, *Starts; // local
};

const TDaylightDay daylightDays[] = {
    {paris, daily("2027-01-01 02:30"), "2027-03-27", "2027-03-30",
     "2027-03-27 02:30, 2027-03-28 03:00, 2027-03-29 02:30"},
    {paris, daily("2027-01-01 02:30"), "2027-10-30", "2027-11-02",
     "2027-10-30 02:30, 2027-10-31 02:30, 2027-11-01 02:30"},
    {newYork, daily("2027-01-01 02:30"), "2027-03-13", "2027-03-16",
     "2027-03-13 02:30, 2027-03-14 03:00, 2027-03-15 02:30"},
    {lordHowe, daily("2027-01-01 02:15"), "2027-10-02", "2027-10-05",
     "2027-10-02 02:15, 2027-10-03 02:30, 2027-10-04 02:15"},
    {lordHowe, daily("2027-01-01 01:45"), "2027-04-03", "2027-04-06",
     "2027-04-03 01:45, 2027-04-04 01:45, 2027-04-05 01:45"},
    {santiago, daily("2027-01-01 00:00"), "2027-09-04", "2027-09-07",
     "2027-09-04 00:00, 2027-09-05 01:00, 2027-09-06 00:00"},
    // Skipped starts fall together, and with the one that is there.
    {paris, repeated(daily("2027-01-01 01:00"), 30, 180), "2027-03-28", "2027-03-29",
     "2027-03-28 01:00, 2027-03-28 01:30, 2027-03-28 03:00, 2027-03-28 03:30"},
    {paris, repeated(daily("2027-01-01 01:30"), 30, 120), "2027-10-31", "2027-11-01",
     "2027-10-31 01:30, 2027-10-31 02:00, 2027-10-31 02:30, 2027-10-31 03:00"},
    // A question within the skipped hour.
    {paris, daily("2027-01-01 02:30"), "2027-03-28 02:45", "2027-03-29", "2027-03-28 03:00"},
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
        EXPECT_EQ(textOf(starts), row.Starts);
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

TEST(RunTimes, aSpanOfThem)
{
    const std::vector<TASK_TRIGGER> triggers{daily("2027-01-01 08:00"), weekly("2027-01-01 08:00", 1, Mon),
                                             once("2027-01-02 09:00")};
    const auto begin = local("2027-01-01 08:00"), end = local("2027-01-03 08:00");
    auto justAfter = begin;
    justAfter.wMilliseconds = 1;
    const SYSTEMTIME noDay{2027, 2, 0, 30, 0, 0, 0, 0};
    const struct
    {
        SYSTEMTIME Begin;
        const SYSTEMTIME *End;
        std::uint16_t Count;
        TTaskResult Result;
        const char *Starts;
    } cases[] = {
        // The begin counts, the end does not; a start of two triggers is one.
        {begin, &end, 9, TaskResult::False, "2027-01-01 08:00, 2027-01-02 08:00, 2027-01-02 09:00"},
        {begin, &end, 3, TaskResult::Ok, "2027-01-01 08:00, 2027-01-02 08:00, 2027-01-02 09:00"},
        {justAfter, nullptr, 1, TaskResult::Ok, "2027-01-02 08:00"},
        {local("2027-01-04 08:00"), nullptr, 2, TaskResult::Ok, "2027-01-04 08:00, 2027-01-05 08:00"},
        {begin, &begin, 1, TaskResult::False, ""},
        {begin, nullptr, 0, TaskResult::Ok, ""},
        {begin, nullptr, TaskMaxRunTimes + 1, TaskResult::InvalidArgument, ""},
        {{}, nullptr, 1, TaskResult::InvalidArgument, ""},
        {begin, &noDay, 1, TaskResult::InvalidArgument, ""},
    };
    const TRunTimes times(triggers, 0);
    std::vector<SYSTEMTIME> starts;
    for (const auto &row : cases) {
        starts.clear();
        EXPECT_EQ(RunTimesBetween(times, row.Begin, row.End, row.Count, TTimeZone(3600), starts), row.Result);
        EXPECT_EQ(textOf(starts), row.Starts);
    }
    EXPECT_EQ(RunTimesBetween(times, begin, nullptr, TaskMaxRunTimes, TTimeZone(3600), starts),
              TaskResult::Ok);
    EXPECT_EQ(starts.size(), TaskMaxRunTimes);
}
