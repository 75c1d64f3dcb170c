#pragma once

#include <Zelmar01/tasks/service/Calendar.h>
#include <Zelmar01/tasks/service/MSTask.h>

#include <cstdint>

namespace Zelmar01 {

/// The starts of one trigger in local civil time (seconds since 1 January 1970, 00:00), whatever the clocks
/// do; its Disabled flag is not looked at.
///
/// A base start is on each day that the trigger's kind names, from the begin date to the end date, at the
/// start time. With a repetition each base start comes back every MinutesInterval minutes, while less than
/// MinutesDuration minutes have passed: 1 minute for 4 minutes is 4 starts. Repetitions go on past midnight,
/// but never past the end date, and those of a trigger with more than one base start for 366 days at most.
///
/// Events have no starts, nor has a trigger that names no day at all: an interval of 0, no day of the week,
/// the 31st of February, a date that does not exist.
class TTriggerTimes
{
public:
    explicit TTriggerTimes(const TASK_TRIGGER &trigger);

    /// What stands for no start; later than any.
    static constexpr TSeconds NoStart = INT64_MAX;

    /// How many seconds a trigger's repetitions go on for after each base start.
    static TSeconds Duration(const TASK_TRIGGER &trigger);

    /// The first start at `from` or later. The work does not depend on how far away it is.
    TSeconds Next(TSeconds from) const;

    /// Whether there is a day that the trigger names; it may have passed.
    bool CanStart() const { return m_kind != Never; }

private:
    enum TKind { Never, Once, Daily, Weekly, Monthly };

    void setKind(const TASK_TRIGGER &trigger);
    void setRepetition(const TASK_TRIGGER &trigger);
    // The nearest day of a base start, on `day` or on that side of it, the trigger's dates left aside;
    // without one the end of all days on that side.
    TDay dayFrom(TDay day) const;
    TDay dayUpTo(TDay day) const;
    TDay monthDayFrom(TDay day) const;
    TDay monthDayUpTo(TDay day) const;
    // The days of the month that begins on day `first`; bit 0 is the 1st.
    std::uint32_t daysOfMonth(TDay first, unsigned length) const;
    // The first start at `from` or later, the end date left aside; without one NoStart.
    TSeconds nextBase(TSeconds from) const;
    TSeconds nextRepetition(TSeconds from) const;

    TKind m_kind = Never;
    TDay m_first = 0, m_last = 0;
    TSeconds m_startTime = 0; // after midnight
    int m_every = 0;          // days or weeks
    unsigned m_week = 0;      // of the month, 5 for the last; 0 when m_days are days of the month
    std::uint32_t m_days = 0; // of the week, bit 0 is Sunday, or of the month, bit 0 is the 1st
    std::uint32_t m_months = 0;
    TSeconds m_repeatEvery = 0; // 0 for no repetition
    TSeconds m_repeatLast = 0;  // how long after its base the last repetition is
};

} // namespace Zelmar01
