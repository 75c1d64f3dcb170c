#include <Zelmar01/tasks/service/TimeZone.h>

#include <windows.h>

namespace Zelmar01 {

namespace {

// The years whose rules are asked for one by one; the last one's hold for ever.
constexpr int firstYear = 1970;
constexpr int lastYear = 2100;

// The system writes the day of a change as the n-th weekday of a month, or as a date of that one year.
TZoneDay dayOf(const ::SYSTEMTIME &change)
{
    TZoneDay day;
    day.Month = change.wMonth;
    day.Week = change.wDay;
    day.Weekday = change.wDayOfWeek;
    if (change.wYear != 0) {
        const TCivilDate date{change.wYear, change.wMonth, change.wDay};
        day.Week = (date.Day - 1) / 7 + 1;
        day.Weekday = WeekdayOf(DayFromCivil(date));
    }
    day.Seconds =
        (change.wHour * 60 + change.wMinute) * 60 + change.wSecond + (change.wMilliseconds + 500) / 1000;
    return day;
}

TZoneRule ruleOf(const TIME_ZONE_INFORMATION &zone)
{
    TZoneRule rule;
    rule.StandardOffset = static_cast<std::int32_t>(-60 * (zone.Bias + zone.StandardBias));
    rule.SummerOffset = static_cast<std::int32_t>(-60 * (zone.Bias + zone.DaylightBias));
    rule.HasSummer = zone.StandardDate.wMonth != 0 && zone.DaylightDate.wMonth != 0;
    if (!rule.HasSummer)
        return rule;
    rule.SummerStart = dayOf(zone.DaylightDate);
    rule.SummerEnd = dayOf(zone.StandardDate);
    return rule;
}

std::int32_t offsetAtNewYear(const TZoneRule &rule)
{
    const bool south = rule.HasSummer && rule.SummerStart.Month > rule.SummerEnd.Month;
    return south ? rule.SummerOffset : rule.StandardOffset;
}

} // namespace

std::optional<TTimeZone> TTimeZone::Named(const std::string &)
{
    return std::nullopt;
}

TTimeZone TTimeZone::System()
{
    TIME_ZONE_INFORMATION current{};
    if (GetTimeZoneInformation(&current) == TIME_ZONE_ID_INVALID)
        return TTimeZone();
    TZoneRule rule;
    std::vector<TOffsetChange> changes;
    for (int year = firstYear; year <= lastYear; ++year) {
        // A zone that the system has no years for is as it is now in all of them.
        TIME_ZONE_INFORMATION zone{};
        rule =
            ruleOf(GetTimeZoneInformationForYear(static_cast<USHORT>(year), nullptr, &zone) ? zone : current);
        // What holds as the year begins may differ from what the year before ended with.
        const auto offset = offsetAtNewYear(rule);
        changes.push_back({DayFromCivil({year, 1, 1}) * SecondsADay - offset, offset});
        rule.AddChanges(year, changes);
    }
    const auto firstOffset = changes.front().Offset;
    return TTimeZone(firstOffset, std::move(changes), rule);
}

} // namespace Zelmar01
