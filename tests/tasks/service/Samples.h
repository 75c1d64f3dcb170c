#pragma once

#include <Zelmar01/tasks/service/Calendar.h>
#include <Zelmar01/tasks/service/MSTask.h>
#include <Zelmar01/tasks/service/TimeZone.h>

#include <cstdint>
#include <cstdio>
#include <string>

/// Triggers, moments and zones as tests write them down.

/// "2027-01-31 02:30" or "2027-01-31", in seconds of that calendar.
inline Zelmar01::TSeconds at(const std::string &text)
{
    int year = 0;
    unsigned month = 0, day = 0, hour = 0, minute = 0;
    std::sscanf(text.c_str(), "%d-%u-%u %u:%u", &year, &month, &day, &hour, &minute);
    return Zelmar01::DayFromCivil({year, month, day}) * Zelmar01::SecondsADay +
           hour * Zelmar01::SecondsAnHour + minute * Zelmar01::SecondsAMinute;
}

inline std::string written(Zelmar01::TSeconds seconds)
{
    const auto time = Zelmar01::SystemTimeFromSeconds(seconds);
    char text[40];
    std::snprintf(text, sizeof text, "%04u-%02u-%02u %02u:%02u", time.wYear, time.wMonth, time.wDay,
                  time.wHour, time.wMinute);
    return text;
}

/// A trigger that begins at a moment.
inline Zelmar01::TASK_TRIGGER starting(const std::string &begin, Zelmar01::TASK_TRIGGER_TYPE kind)
{
    const auto time = Zelmar01::SystemTimeFromSeconds(at(begin));
    Zelmar01::TASK_TRIGGER trigger;
    trigger.wBeginYear = time.wYear;
    trigger.wBeginMonth = time.wMonth;
    trigger.wBeginDay = time.wDay;
    trigger.wStartHour = time.wHour;
    trigger.wStartMinute = time.wMinute;
    trigger.TriggerType = kind;
    return trigger;
}

inline Zelmar01::TASK_TRIGGER once(const std::string &begin)
{
    return starting(begin, Zelmar01::TASK_TIME_TRIGGER_ONCE);
}

inline Zelmar01::TASK_TRIGGER daily(const std::string &begin, std::uint16_t every = 1)
{
    auto trigger = starting(begin, Zelmar01::TASK_TIME_TRIGGER_DAILY);
    trigger.Type.Daily = {every};
    return trigger;
}

inline Zelmar01::TASK_TRIGGER weekly(const std::string &begin, std::uint16_t every, std::uint16_t days)
{
    auto trigger = starting(begin, Zelmar01::TASK_TIME_TRIGGER_WEEKLY);
    trigger.Type.Weekly = {every, days};
    return trigger;
}

inline Zelmar01::TASK_TRIGGER byDate(const std::string &begin, std::uint32_t days,
                                     std::uint16_t months = 0xFFF)
{
    auto trigger = starting(begin, Zelmar01::TASK_TIME_TRIGGER_MONTHLYDATE);
    trigger.Type.MonthlyDate = {days, months};
    return trigger;
}

inline Zelmar01::TASK_TRIGGER byWeekday(const std::string &begin, std::uint16_t week, std::uint16_t days,
                                        std::uint16_t months = 0xFFF)
{
    auto trigger = starting(begin, Zelmar01::TASK_TIME_TRIGGER_MONTHLYDOW);
    trigger.Type.MonthlyDOW = {week, days, months};
    return trigger;
}

inline Zelmar01::TASK_TRIGGER repeated(Zelmar01::TASK_TRIGGER trigger, std::uint32_t interval,
                                       std::uint32_t duration)
{
    trigger.MinutesInterval = interval;
    trigger.MinutesDuration = duration;
    return trigger;
}

inline Zelmar01::TASK_TRIGGER ending(Zelmar01::TASK_TRIGGER trigger, const std::string &end)
{
    const auto time = Zelmar01::SystemTimeFromSeconds(at(end));
    trigger.wEndYear = time.wYear;
    trigger.wEndMonth = time.wMonth;
    trigger.wEndDay = time.wDay;
    trigger.rgFlags |= Zelmar01::TriggerFlag::HasEndDate;
    return trigger;
}

/// Days of the week as their masks.
enum : std::uint16_t { Sun = 1, Mon = 2, Tue = 4, Wed = 8, Thu = 16, Fri = 32, Sat = 64 };

/// The mask of a day of the month, or of a month, from 1.
constexpr std::uint32_t bit(unsigned number)
{
    return 1U << (number - 1);
}

constexpr auto paris = "CET-1CEST,M3.5.0,M10.5.0/3";
constexpr auto newYork = "EST5EDT,M3.2.0,M11.1.0";
constexpr auto lordHowe = "<+1030>-10:30<+11>-11,M10.1.0,M4.1.0";
constexpr auto dublin = "IST-1GMT0,M10.5.0,M3.5.0/1"; // its winter is the exception
constexpr auto santiago = "<-04>4<-03>,M9.1.6/24,M4.1.6/24";

inline Zelmar01::TTimeZone ruled(const char *rule)
{
    return Zelmar01::TTimeZone(Zelmar01::ParseZoneRule(rule).value());
}
