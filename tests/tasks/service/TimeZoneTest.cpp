#include "Samples.h"

#ifndef _WIN32
#include <support/Environment.h>
#include <support/TempFolder.h>
#endif

#include <gtest/gtest.h>

#include <ctime>
#include <fstream>
#include <random>
#include <vector>

using namespace Zelmar01;
using namespace std::string_literals;

namespace {

// A local time, the instant it stands for, and what clocks show then.
struct TLocalTime
{
    const char *Rule, *Local, *Utc, *Shown;
};

const TLocalTime localTimes[] = {
    {paris, "2027-01-10 12:00", "2027-01-10 11:00", "2027-01-10 12:00"},
    {paris, "2027-07-10 12:00", "2027-07-10 10:00", "2027-07-10 12:00"},
    {paris, "2027-03-28 01:59", "2027-03-28 00:59", "2027-03-28 01:59"},
    {paris, "2027-03-28 02:00", "2027-03-28 01:00", "2027-03-28 03:00"}, // skipped
    {paris, "2027-03-28 03:01", "2027-03-28 01:01", "2027-03-28 03:01"},
    {paris, "2027-10-31 02:00", "2027-10-31 00:00", "2027-10-31 02:00"}, // shown twice
    {paris, "2027-10-31 03:00", "2027-10-31 02:00", "2027-10-31 03:00"},
    {paris, "2799-03-31 02:30", "2799-03-31 00:30", "2799-03-31 02:30"},
    {paris, "2799-03-28 02:30", "2799-03-28 01:00", "2799-03-28 03:00"},
    {newYork, "2027-03-14 02:30", "2027-03-14 07:00", "2027-03-14 03:00"},
    {newYork, "2027-11-07 01:30", "2027-11-07 05:30", "2027-11-07 01:30"},
    {lordHowe, "2027-10-03 02:10", "2027-10-02 15:30", "2027-10-03 02:30"}, // half an hour
    {lordHowe, "2027-04-04 01:45", "2027-04-03 14:45", "2027-04-04 01:45"},
    {dublin, "2027-07-10 12:00", "2027-07-10 11:00", "2027-07-10 12:00"},
    {dublin, "2027-03-28 01:30", "2027-03-28 01:00", "2027-03-28 02:00"},
    {santiago, "2027-09-05 00:30", "2027-09-05 04:00", "2027-09-05 01:00"}, // midnight itself
    {"EST5EDT", "2027-07-10 12:00", "2027-07-10 16:00", "2027-07-10 12:00"},
    {"EST5EDT,0/0,J365/25", "2027-12-31 23:30", "2028-01-01 03:30", "2027-12-31 23:30"}, // summer all year
    {"AAA1BBB,J60,59/3", "2028-03-01 02:30", "2028-03-01 03:00", "2028-03-01 03:00"},
};

} // namespace

TEST(TimeZone, skippedAndRepeatedLocalTimes)
{
    for (const auto &row : localTimes) {
        SCOPED_TRACE(std::string(row.Rule) + " " + row.Local);
        const auto zone = ruled(row.Rule);
        EXPECT_EQ(written(zone.ToUtc(at(row.Local))), row.Utc);
        EXPECT_EQ(written(zone.ToLocal(at(row.Utc))), row.Shown);
    }
    for (const auto *rule : {"", "UTC+25", "CE-1", "CET", "5", "CET-1CEST,M3.5.0", "<CET-1", "CET-1x",
                             "CET-1CEST,", "CET-1:60", "CET-1CEST,M13.5.0,M10.5.0", "CET-1CEST,J0,1",
                             "CET-1CEST,M3.5.0,M10.5.0/3 ", "CET-1CEST,M3.5.0,M10.5.0/168"})
        EXPECT_FALSE(ParseZoneRule(rule)) << rule;
}

// What run times stand on: later local times never stand for earlier instants, and the first local time of an
// instant is just that.
TEST(TimeZone, localTimesNeverGoBack)
{
    for (const auto *rule : {paris, newYork, lordHowe, dublin, santiago, "UTC0", "EST5EDT,0/0,J365/25"}) {
        SCOPED_TRACE(rule);
        const auto zone = ruled(rule);
        for (const auto *year : {"1601-01-02", "2027-01-01", "2400-01-01", "9998-01-01"}) {
            constexpr TSeconds step = 900;
            auto before = zone.ToUtc(at(year) - step);
            for (auto local = at(year); local < at(year) + 800 * SecondsADay; local += step) {
                const auto utc = zone.ToUtc(local);
                ASSERT_LE(before, utc) << written(local);
                const auto first = zone.FirstLocal(utc);
                ASSERT_LE(first, local);
                ASSERT_EQ(zone.ToUtc(first), utc) << written(local);
                ASSERT_LT(zone.ToUtc(first - 1), utc) << written(local);
                before = utc;
            }
        }
    }
}

#ifndef _WIN32

TEST(TimeZone, agreesWithTheSystemsOwnConversion)
{
    std::mt19937_64 random(3);
    for (const auto *name :
         {"Europe/Paris", "America/New_York", "Australia/Lord_Howe", "Pacific/Apia", "Asia/Kolkata",
          "Africa/Casablanca", "America/Santiago", "Europe/Dublin", "Antarctica/Troll", "UTC"}) {
        SCOPED_TRACE(name);
        const EnvironmentSetting setting("TZ", name);
        tzset();
        const auto zone = TTimeZone::System();
        for (int i = 0; i < 20'000; ++i) {
            const auto spread = at(i % 2 ? "2200-01-01" : "2038-01-01") - at("1900-01-01");
            const std::time_t utc =
                at("1900-01-01") + static_cast<TSeconds>(random() % static_cast<std::uint64_t>(spread));
            std::tm local{};
            localtime_r(&utc, &local);
            ASSERT_EQ(zone.ToLocal(utc) - utc, local.tm_gmtoff) << written(utc);
        }
    }
    tzset();
}

// A whole day that the calendar of the place does not have.
TEST(TimeZone, aSkippedDay)
{
    const auto apia = TTimeZone::Named("Pacific/Apia").value();
    EXPECT_EQ(written(apia.ToLocal(apia.ToUtc(at("2011-12-29 23:59")))), "2011-12-29 23:59");
    EXPECT_EQ(written(apia.ToLocal(apia.ToUtc(at("2011-12-30 12:00")))), "2011-12-31 00:00");
}

TEST(TimeZone, theZoneOfThisMachine)
{
    const TempFolder folder;
    std::filesystem::create_directory(folder / "Shop");
    std::filesystem::copy_file("/usr/share/zoneinfo/Asia/Tokyo", folder / "Shop/Till");
    std::ofstream(folder / "broken") << "TZif2";
    const EnvironmentSetting database("TZDIR", folder.Path().string());
    const auto hours = [](const std::string &value) {
        const EnvironmentSetting setting("TZ", value);
        return TTimeZone::System().ToLocal(0) / 3600;
    };
    EXPECT_EQ(hours("XYZ-3"), 3);
    for (const auto &zone : {"Shop/Till"s, ":Shop/Till"s, (folder / "Shop/Till").string()})
        EXPECT_EQ(hours(zone), 9) << zone;
    for (const auto *none : {"", "broken", "../Shop/Till", "Nowhere/Land"})
        EXPECT_EQ(hours(none), 0) << none;
}

// A zone file that was cut or changed is refused or read; it is never read past its end.
TEST(TimeZone, damagedZoneFiles)
{
    std::ifstream stream("/usr/share/zoneinfo/Europe/Paris", std::ios::binary);
    const std::string good{std::istreambuf_iterator<char>(stream), {}};
    ASSERT_TRUE(TTimeZone::FromZoneFile(good));
    for (std::size_t size = 0; size < good.size(); ++size)
        EXPECT_FALSE(TTimeZone::FromZoneFile(good.substr(0, size))) << size;
    std::mt19937 random(5);
    for (int round = 0; round < 20'000; ++round) {
        auto bytes = good;
        for (auto changes = 1 + random() % 4; changes > 0; --changes)
            bytes[random() % (round % 2 ? 100 : bytes.size())] = static_cast<char>(random());
        if (const auto zone = TTimeZone::FromZoneFile(bytes))
            zone->ToLocal(zone->ToUtc(at("2027-03-28 02:30")));
    }
}

#endif
