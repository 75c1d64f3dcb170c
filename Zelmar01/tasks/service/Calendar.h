#pragma once

#include <Zelmar01/tasks/service/MSTask.h>

#include <chrono>
#include <cstdint>
#include <optional>

namespace Zelmar01 {

/// Arithmetic of the proleptic Gregorian calendar on plain numbers, as run times need it: a day is the number
/// of days since 1 January 1970, a moment of civil time the number of seconds since its midnight.
using TDay = std::int32_t;
using TSeconds = std::int64_t;

inline constexpr TSeconds SecondsADay = 86400;
inline constexpr TSeconds SecondsAnHour = 3600;
inline constexpr TSeconds SecondsAMinute = 60;

/// The years that a date of the service may have.
inline constexpr int FirstYear = 1601;
inline constexpr int LastYear = 30827;

/// A date in its parts; months and days from 1.
struct TCivilDate
{
    int Year = 1970;
    unsigned Month = 1, Day = 1;

    bool operator==(const TCivilDate &) const = default;
};

constexpr TDay DayFromCivil(TCivilDate date)
{
    using namespace std::chrono;
    return static_cast<TDay>(
        sys_days{year{date.Year} / month{date.Month} / day{date.Day}}.time_since_epoch().count());
}

constexpr TCivilDate CivilFromDay(TDay day)
{
    using namespace std::chrono;
    const year_month_day date{sys_days{days{day}}};
    return {static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
            static_cast<unsigned>(date.day())};
}

constexpr unsigned DaysInMonth(int year, unsigned month)
{
    if (month == 2)
        return std::chrono::year{year}.is_leap() ? 29 : 28;
    return 30 + ((month + (month >> 3)) & 1);
}

/// 0 is Sunday.
constexpr unsigned WeekdayOf(TDay day)
{
    return std::chrono::weekday{std::chrono::sys_days{std::chrono::days{day}}}.c_encoding();
}

/// The day with these parts; none when the calendar lacks it or the service does not know its year.
std::optional<TDay> ValidDay(unsigned year, unsigned month, unsigned day);

/// The seconds of a civil moment, milliseconds left out; none when a field is out of its range. The day of
/// the week is not looked at.
std::optional<TSeconds> SecondsFromSystemTime(const SYSTEMTIME &time);

/// The parts of a civil moment of the years FirstYear to LastYear, with its day of the week.
SYSTEMTIME SystemTimeFromSeconds(TSeconds seconds);

} // namespace Zelmar01
