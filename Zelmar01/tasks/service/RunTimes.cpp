#include <Zelmar01/tasks/service/RunTimes.h>

#include <Zelmar01/tasks/service/Triggers.h>

#include <algorithm>

namespace Zelmar01 {

namespace {

// The first whole second at or after a moment; starts are on whole seconds.
std::optional<TSeconds> secondFrom(const SYSTEMTIME &time)
{
    const auto seconds = SecondsFromSystemTime(time);
    return seconds ? std::optional(*seconds + (time.wMilliseconds > 0 ? 1 : 0)) : std::nullopt;
}

} // namespace

TRunTimes::TRunTimes(std::span<const TASK_TRIGGER> triggers, std::uint32_t flags)
    : m_whyNone(TaskResult::TaskNoValidTriggers)
{
    if (flags & TaskFlag::Disabled) {
        m_whyNone = TaskResult::TaskDisabled;
        return;
    }
    bool onEvent = false;
    for (const auto &trigger : triggers) {
        if (trigger.rgFlags & TriggerFlag::Disabled)
            continue;
        m_whyNone = TaskResult::TaskNoMoreRuns;
        onEvent = onEvent || IsEventTrigger(trigger);
        if (TTriggerTimes times(trigger); times.CanStart())
            m_triggers.push_back(times);
    }
    if (onEvent)
        m_whyNone = TaskResult::EventTrigger;
}

std::optional<TSeconds> TRunTimes::Next(TSeconds from, const TTimeZone &zone) const
{
    const auto local = zone.FirstLocal(from);
    auto first = TTriggerTimes::NoStart;
    for (const auto &trigger : m_triggers)
        first = std::min(first, trigger.Next(local));
    if (first == TTriggerTimes::NoStart)
        return std::nullopt;
    return zone.ToUtc(first);
}

TTaskResult NextRunTime(const TRunTimes &times, TSeconds now, const TTimeZone &zone, SYSTEMTIME &next)
{
    const auto start = times.Next(now, zone);
    next = start ? SystemTimeFromSeconds(zone.ToLocal(*start)) : SYSTEMTIME{};
    return start ? TaskResult::Ok : times.WhyNone();
}

TTaskResult RunTimesBetween(const TRunTimes &runTimes, const SYSTEMTIME &begin, const SYSTEMTIME *end,
                            std::uint16_t count, const TTimeZone &zone, std::vector<SYSTEMTIME> &times)
{
    const auto first = secondFrom(begin);
    const auto last = end ? secondFrom(*end) : INT64_MAX;
    if (!first || !last || count > TaskMaxRunTimes)
        return TaskResult::InvalidArgument;
    times.clear();
    const auto afterEnd = end ? zone.ToUtc(*last) : *last;
    auto start = runTimes.Next(zone.ToUtc(*first), zone);
    if (!start && runTimes.WhyNone() != TaskResult::TaskNoMoreRuns)
        return runTimes.WhyNone();
    while (times.size() < count && start && *start < afterEnd) {
        times.push_back(SystemTimeFromSeconds(zone.ToLocal(*start)));
        start = runTimes.Next(*start + 1, zone);
    }
    return times.size() == count ? TaskResult::Ok : TaskResult::False;
}

} // namespace Zelmar01
