#pragma once

#include <Zelmar01/tasks/service/Calendar.h>

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace Zelmar01 {

/// A day of any year, and a time of that day, at which clocks are changed.
struct TZoneDay
{
    enum TKind {
        MonthWeekDay,   ///< Weekday (0 is Sunday) in Week 1 to 4 of Month, or the last one with Week 5
        DayWithoutLeap, ///< the Day-th day from 1, 29 February never being counted
        DayFromZero,    ///< the Day-th day from 0, 29 February being counted
    };
    TKind Kind = MonthWeekDay;
    unsigned Month = 1, Week = 1, Weekday = 0, Day = 0;
    std::int32_t Seconds = 7200; ///< after midnight, by the clocks before the change; may be below 0

    TSeconds Of(int year) const;
};

/// From when on clocks show which offset.
struct TOffsetChange
{
    TSeconds Utc = 0;        ///< seconds since 1 January 1970 in UTC
    std::int32_t Offset = 0; ///< seconds that clocks are ahead of UTC from then on
};

/// How clocks are set in every year.
struct TZoneRule
{
    std::int32_t StandardOffset = 0; ///< seconds ahead of UTC
    std::int32_t SummerOffset = 0;
    bool HasSummer = false;
    TZoneDay SummerStart, SummerEnd;

    /// Appends the changes of a year, in their order.
    void AddChanges(int year, std::vector<TOffsetChange> &changes) const;
};

/// Reads a rule in the notation of the variable TZ, such as "CET-1CEST,M3.5.0,M10.5.0/3"; none when it is not
/// well-formed.
std::optional<TZoneRule> ParseZoneRule(std::string_view text);

} // namespace Zelmar01
