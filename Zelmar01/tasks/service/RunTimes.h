#pragma once

#include <Zelmar01/tasks/service/MSTask.h>
#include <Zelmar01/tasks/service/TaskResults.h>
#include <Zelmar01/tasks/service/TimeZone.h>
#include <Zelmar01/tasks/service/TriggerTimes.h>

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace Zelmar01 {

/// The starts of a job: those of all its enabled triggers, each instant once.
///
/// Triggers are in local time. It is turned into an instant at the very end, by the rule of TTimeZone: a
/// start in the hour that clocks skip happens when they go on, one in the hour that they show twice the first
/// time only.
class TRunTimes
{
public:
    /// `flags` are the job's: with TaskFlag::Disabled it has no starts.
    TRunTimes(std::span<const TASK_TRIGGER> triggers, std::uint32_t flags);

    /// The first start at the instant `from` or later.
    std::optional<TSeconds> Next(TSeconds from, const TTimeZone &zone) const;

    /// What the service answers when there is no start ahead: TaskDisabled, EventTrigger when an enabled
    /// trigger waits for an event, TaskNoValidTriggers without an enabled trigger, else TaskNoMoreRuns.
    TTaskResult WhyNone() const { return m_whyNone; }

private:
    std::vector<TTriggerTimes> m_triggers;
    TTaskResult m_whyNone;
};

/// IScheduledWorkItem::GetNextRunTime at the instant `now`.
TTaskResult NextRunTime(const TRunTimes &times, TSeconds now, const TTimeZone &zone, SYSTEMTIME &next);

/// IScheduledWorkItem::GetRunTimes. The starts go into `times`, whose number is the count. A count of 0 is Ok
/// and gives none; InvalidArgument for one above TaskMaxRunTimes and for a bound that is no date and time.
TTaskResult RunTimesBetween(const TRunTimes &runTimes, const SYSTEMTIME &begin, const SYSTEMTIME *end,
                            std::uint16_t count, const TTimeZone &zone, std::vector<SYSTEMTIME> &times);

} // namespace Zelmar01
