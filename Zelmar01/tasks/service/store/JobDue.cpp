#include <Zelmar01/tasks/service/store/JobDue.h>

#include <Zelmar01/tasks/service/RunTimes.h>

#include <algorithm>

namespace Zelmar01 {

namespace {

std::optional<TSeconds> endOfDuration(TASK_TRIGGER trigger, TSeconds localStart)
{
    const auto duration = TTriggerTimes::Duration(trigger);
    trigger.MinutesInterval = 0;
    const TTriggerTimes bases(trigger);
    std::optional<TSeconds> end;
    auto base = bases.Next(localStart - duration + 1);
    while (base <= localStart) {
        end = base + duration;
        base = bases.Next(base + 1);
    }
    return end;
}

} // namespace

std::optional<TDueStarts> StartsDue(const TJob &job, TSeconds after, TSeconds now, const TTimeZone &zone)
{
    const TRunTimes times(job.Triggers, job.Flags);
    std::optional<TDueStarts> due;
    const auto next = [&](TSeconds from) {
        const auto start = times.Next(from, zone);
        return start && *start <= now ? start : std::nullopt;
    };
    auto start = next(after + 1);
    for (unsigned count = 1; start && count <= MaxDueCount; ++count) {
        due = {*start, count};
        start = next(*start + 1);
    }
    if (start)
        start = next(std::max(*start, now - MaxLateness));
    for (; start; start = next(*start + 1))
        due->Last = *start;
    return due;
}

bool IsStartDue(const TJob &job, TSeconds after, TSeconds now, const TTimeZone &zone)
{
    const auto start = TRunTimes(job.Triggers, job.Flags).Next(after + 1, zone);
    return start && *start <= now;
}

bool StartsWithSystem(const TJob &job, TSeconds localNow)
{
    const auto today = localNow / SecondsADay;
    return !(job.Flags & TaskFlag::Disabled) && std::ranges::any_of(job.Triggers, [&](const auto &trigger) {
        const auto first = ValidDay(trigger.wBeginYear, trigger.wBeginMonth, trigger.wBeginDay);
        const auto last = ValidDay(trigger.wEndYear, trigger.wEndMonth, trigger.wEndDay);
        const bool hasEnd = trigger.rgFlags & TriggerFlag::HasEndDate;
        return trigger.TriggerType == TASK_EVENT_TRIGGER_AT_SYSTEMSTART &&
               !(trigger.rgFlags & TriggerFlag::Disabled) && first && *first <= today &&
               (!hasEnd || (last && today <= *last));
    });
}

std::optional<TSeconds> EndOfDuration(const TJob &job, TSeconds start, const TTimeZone &zone)
{
    std::optional<TSeconds> end;
    for (const auto &trigger : job.Triggers) {
        if (trigger.rgFlags & TriggerFlag::Disabled || !(trigger.rgFlags & TriggerFlag::KillAtDurationEnd) ||
            trigger.MinutesDuration == 0)
            continue;
        if (const auto localEnd = endOfDuration(trigger, zone.ToLocal(start)))
            end = std::max(end.value_or(0), zone.ToUtc(*localEnd));
    }
    return end;
}

} // namespace Zelmar01
