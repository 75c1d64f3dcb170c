#include <Zelmar01/tasks/service/TriggerTimes.h>

#include <algorithm>
#include <bit>
#include <numeric>

namespace Zelmar01 {

namespace {

constexpr unsigned lastWeek = 5;
constexpr TSeconds longestRepetition = 366 * SecondsADay;

// What stands for no day before or after.
constexpr TDay noDayBefore = INT32_MIN;
constexpr TDay noDayAfter = INT32_MAX;

// 29 February comes back after this many years at the latest.
constexpr int longestWait = 8;

// The lowest set bit from `bit` on, the highest up to it; -1 when there is none.
int bitFrom(std::uint32_t bits, unsigned bit)
{
    const auto left = bit < 32 ? bits >> bit << bit : 0;
    return left == 0 ? -1 : std::countr_zero(left);
}

int bitUpTo(std::uint32_t bits, unsigned bit)
{
    const auto left = bits & (~std::uint32_t{0} >> (31 - bit));
    return left == 0 ? -1 : 31 - std::countl_zero(left);
}

template<class T>
T floorDiv(T value, T divisor)
{
    return value / divisor - (value % divisor < 0 ? 1 : 0);
}

template<class T>
T floorMod(T value, T divisor)
{
    const auto rest = value % divisor;
    return rest < 0 ? rest + divisor : rest;
}

TDay sundayOf(TDay day)
{
    return day - static_cast<TDay>(WeekdayOf(day));
}

} // namespace

TTriggerTimes::TTriggerTimes(const TASK_TRIGGER &trigger)
{
    const auto first = ValidDay(trigger.wBeginYear, trigger.wBeginMonth, trigger.wBeginDay);
    std::optional<TDay> last = DayFromCivil({LastYear, 12, 31});
    if (trigger.rgFlags & TriggerFlag::HasEndDate)
        last = ValidDay(trigger.wEndYear, trigger.wEndMonth, trigger.wEndDay);
    if (!first || !last || trigger.wStartHour > 23 || trigger.wStartMinute > 59)
        return;
    m_first = *first;
    m_last = *last;
    m_startTime = trigger.wStartHour * SecondsAnHour + trigger.wStartMinute * SecondsAMinute;
    setKind(trigger);
    setRepetition(trigger);
}

void TTriggerTimes::setKind(const TASK_TRIGGER &trigger)
{
    const auto &type = trigger.Type;
    switch (trigger.TriggerType) {
    case TASK_TIME_TRIGGER_ONCE:
        m_kind = Once;
        break;
    case TASK_TIME_TRIGGER_DAILY:
        m_every = type.Daily.DaysInterval;
        m_kind = m_every > 0 ? Daily : Never;
        break;
    case TASK_TIME_TRIGGER_WEEKLY:
        m_every = type.Weekly.WeeksInterval;
        m_days = type.Weekly.rgfDaysOfTheWeek & TriggerMask::AllWeekdays;
        m_kind = m_every > 0 && m_days != 0 ? Weekly : Never;
        break;
    case TASK_TIME_TRIGGER_MONTHLYDATE:
        m_days = type.MonthlyDate.rgfDays & TriggerMask::AllMonthDays;
        m_months = type.MonthlyDate.rgfMonths & TriggerMask::AllMonths;
        // Some chosen month must have a chosen day in a leap year, such as 2000.
        for (auto months = m_months; months != 0; months &= months - 1) {
            const auto length = DaysInMonth(2000, static_cast<unsigned>(std::countr_zero(months)) + 1);
            if (m_days & ((1U << length) - 1))
                m_kind = Monthly;
        }
        break;
    case TASK_TIME_TRIGGER_MONTHLYDOW:
        m_week = type.MonthlyDOW.wWhichWeek;
        m_days = type.MonthlyDOW.rgfDaysOfTheWeek & TriggerMask::AllWeekdays;
        m_months = type.MonthlyDOW.rgfMonths & TriggerMask::AllMonths;
        m_kind = m_week >= 1 && m_week <= lastWeek && m_days != 0 && m_months != 0 ? Monthly : Never;
        break;
    default:
        break;
    }
}

void TTriggerTimes::setRepetition(const TASK_TRIGGER &trigger)
{
    if (trigger.MinutesInterval == 0 || trigger.MinutesDuration <= trigger.MinutesInterval)
        return;
    m_repeatEvery = trigger.MinutesInterval * SecondsAMinute;
    m_repeatLast = (Duration(trigger) - 1) / m_repeatEvery * m_repeatEvery;
}

TSeconds TTriggerTimes::Duration(const TASK_TRIGGER &trigger)
{
    const auto duration = trigger.MinutesDuration * SecondsAMinute;
    return trigger.TriggerType == TASK_TIME_TRIGGER_ONCE ? duration : std::min(duration, longestRepetition);
}

std::uint32_t TTriggerTimes::daysOfMonth(TDay first, unsigned length) const
{
    if (m_week == 0)
        return m_days & ((1U << length) - 1);
    const auto firstDay = m_week == lastWeek ? length - 7 : (m_week - 1) * 7;
    const auto weekday = WeekdayOf(first + static_cast<TDay>(firstDay));
    return (((m_days | m_days << 7) >> weekday) & TriggerMask::AllWeekdays) << firstDay;
}

TDay TTriggerTimes::monthDayFrom(TDay day) const
{
    auto date = CivilFromDay(day);
    auto first = day - static_cast<TDay>(date.Day) + 1;
    const auto lastYear = date.Year + longestWait;
    while (date.Year <= lastYear) {
        if (m_months >> (date.Month - 1) & 1) {
            const auto found = bitFrom(daysOfMonth(first, DaysInMonth(date.Year, date.Month)), date.Day - 1);
            if (found >= 0)
                return first + found;
        }
        auto month = bitFrom(m_months, date.Month);
        if (month < 0) {
            month = std::countr_zero(m_months);
            ++date.Year;
        }
        date = {date.Year, static_cast<unsigned>(month) + 1, 1};
        first = DayFromCivil(date);
    }
    return noDayAfter;
}

TDay TTriggerTimes::monthDayUpTo(TDay day) const
{
    auto date = CivilFromDay(day);
    auto first = day - static_cast<TDay>(date.Day) + 1;
    const auto firstYear = date.Year - longestWait;
    while (date.Year >= firstYear) {
        if (m_months >> (date.Month - 1) & 1) {
            const auto found = bitUpTo(daysOfMonth(first, DaysInMonth(date.Year, date.Month)), date.Day - 1);
            if (found >= 0)
                return first + found;
        }
        auto month = date.Month > 1 ? bitUpTo(m_months, date.Month - 2) : -1;
        if (month < 0) {
            month = bitUpTo(m_months, 11);
            --date.Year;
        }
        date = {date.Year, static_cast<unsigned>(month) + 1, 31};
        first = DayFromCivil({date.Year, date.Month, 1});
    }
    return noDayBefore;
}

TDay TTriggerTimes::dayFrom(TDay day) const
{
    switch (m_kind) {
    case Once:
        return day <= m_first ? m_first : noDayAfter;
    case Daily:
        return day + floorMod(m_first - day, m_every);
    case Weekly: {
        const auto firstWeek = sundayOf(m_first), week = sundayOf(day), period = 7 * m_every;
        const auto pastWeeks = floorMod(week - firstWeek, period);
        if (pastWeeks == 0) {
            const auto found = bitFrom(m_days, WeekdayOf(day));
            if (found >= 0)
                return week + found;
        }
        return week - pastWeeks + period + std::countr_zero(m_days);
    }
    case Monthly:
        return monthDayFrom(day);
    case Never:
        break;
    }
    return noDayAfter;
}

TDay TTriggerTimes::dayUpTo(TDay day) const
{
    switch (m_kind) {
    case Once:
        return day >= m_first ? m_first : noDayBefore;
    case Daily:
        return day - floorMod(day - m_first, m_every);
    case Weekly: {
        const auto firstWeek = sundayOf(m_first), week = sundayOf(day), period = 7 * m_every;
        const auto pastWeeks = floorMod(week - firstWeek, period);
        if (pastWeeks == 0) {
            const auto found = bitUpTo(m_days, WeekdayOf(day));
            if (found >= 0)
                return week + found;
        }
        return week - (pastWeeks == 0 ? period : pastWeeks) + bitUpTo(m_days, 6);
    }
    case Monthly:
        return monthDayUpTo(day);
    case Never:
        break;
    }
    return noDayBefore;
}

TSeconds TTriggerTimes::nextBase(TSeconds from) const
{
    const auto day = static_cast<TDay>(floorDiv<TSeconds>(from - m_startTime + SecondsADay - 1, SecondsADay));
    const auto found = dayFrom(std::max(day, m_first));
    return found == noDayAfter ? NoStart : TSeconds{found} * SecondsADay + m_startTime;
}

TSeconds TTriggerTimes::nextRepetition(TSeconds from) const
{
    // Base starts are at one time of the day. So no repetition can be nearer than `nearest`, and once one is
    // found there, no base further back needs to be looked at.
    const auto pattern = std::gcd<TSeconds>(SecondsADay, m_repeatEvery);
    const auto nearest = from + floorMod<TSeconds>(m_startTime - from, pattern);
    auto best = NoStart;
    auto day = static_cast<TDay>(floorDiv<TSeconds>(from - m_startTime, SecondsADay));
    while (best != nearest) {
        day = dayUpTo(std::min(day, m_last));
        const auto base = TSeconds{day} * SecondsADay + m_startTime;
        if (day < m_first || base + m_repeatLast < from)
            break;
        const auto repetition = from + floorMod(base - from, m_repeatEvery);
        if (repetition <= base + m_repeatLast)
            best = std::min(best, repetition);
        --day;
    }
    return best;
}

TSeconds TTriggerTimes::Next(TSeconds from) const
{
    const auto end = (TSeconds{m_last} + 1) * SecondsADay;
    if (m_kind == Never || from >= end)
        return NoStart;
    from = std::max(from, TSeconds{m_first} * SecondsADay);
    auto next = nextBase(from);
    if (m_repeatEvery > 0)
        next = std::min(next, nextRepetition(from));
    return next < end ? next : NoStart;
}

} // namespace Zelmar01
