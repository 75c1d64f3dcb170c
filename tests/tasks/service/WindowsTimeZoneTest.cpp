#include <Zelmar01/tasks/service/TimeZone.h>

#include <windows.h>

#include <gtest/gtest.h>

#include <random>

// Names of the system and of the library are the same here; the library's are written out.
using Zelmar01::TSeconds;

namespace {

TSeconds systemsLocal(TSeconds utc)
{
    constexpr TSeconds from1601 = 11'644'473'600;
    const auto ticks = static_cast<ULONGLONG>((utc + from1601) * 10'000'000);
    const ::FILETIME file{static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
    ::SYSTEMTIME time, local;
    EXPECT_TRUE(FileTimeToSystemTime(&file, &time));
    TIME_ZONE_INFORMATION zone;
    if (!GetTimeZoneInformationForYear(time.wYear, nullptr, &zone))
        GetTimeZoneInformation(&zone);
    EXPECT_TRUE(SystemTimeToTzSpecificLocalTime(&zone, &time, &local));
    return Zelmar01::SecondsFromSystemTime(
               {local.wYear, local.wMonth, 0, local.wDay, local.wHour, local.wMinute, local.wSecond, 0})
        .value();
}

} // namespace

TEST(WindowsTimeZone, agreesWithTheSystemsOwnConversion)
{
    const auto zone = Zelmar01::TTimeZone::System();
    std::mt19937_64 random(3);
    for (int i = 0; i < 5000; ++i) {
        // 1990 to 2037
        const auto utc = 631'152'000 + static_cast<TSeconds>(random() % 1'514'764'800);
        ASSERT_EQ(zone.ToLocal(utc), systemsLocal(utc)) << utc;
    }
}
