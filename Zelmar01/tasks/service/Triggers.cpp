#include <Zelmar01/tasks/service/Triggers.h>

#include <Zelmar01/tasks/service/Calendar.h>

#include <algorithm>

namespace Zelmar01 {

namespace {

// How many words of the union the kind of a trigger uses.
std::size_t wordsUsed(TASK_TRIGGER_TYPE kind)
{
    switch (kind) {
    case TASK_TIME_TRIGGER_DAILY:
        return 1;
    case TASK_TIME_TRIGGER_WEEKLY:
        return 2;
    case TASK_TIME_TRIGGER_MONTHLYDATE:
    case TASK_TIME_TRIGGER_MONTHLYDOW:
        return 3;
    default:
        return 0;
    }
}

bool accepted(const TASK_TRIGGER &trigger)
{
    if (trigger.cbTriggerSize != sizeof(TASK_TRIGGER) || trigger.TriggerType > TASK_EVENT_TRIGGER_AT_LOGON)
        return false;
    if (!ValidDay(trigger.wBeginYear, trigger.wBeginMonth, trigger.wBeginDay) || trigger.wStartHour > 23 ||
        trigger.wStartMinute > 59)
        return false;
    if (trigger.rgFlags & TriggerFlag::HasEndDate &&
        !ValidDay(trigger.wEndYear, trigger.wEndMonth, trigger.wEndDay))
        return false;
    return trigger.MinutesInterval == 0 || trigger.MinutesDuration > trigger.MinutesInterval;
}

} // namespace

TTaskResult CheckTrigger(const TASK_TRIGGER *trigger)
{
    return trigger && accepted(*trigger) ? TaskResult::Ok : TaskResult::InvalidArgument;
}

TASK_TRIGGER StoredTrigger(const TASK_TRIGGER &trigger)
{
    auto stored = trigger;
    stored.Reserved1 = 0;
    stored.Reserved2 = 0;
    stored.wRandomMinutesInterval = 0;
    const auto used = wordsUsed(trigger.TriggerType);
    std::fill(stored.Type.Words.begin() + static_cast<std::ptrdiff_t>(used), stored.Type.Words.end(),
              std::uint16_t{0});
    return stored;
}

void HandOutTrigger(const TASK_TRIGGER &stored, TASK_TRIGGER &target)
{
    const auto words = target.Type.Words;
    target = stored;
    target.cbTriggerSize = sizeof(TASK_TRIGGER);
    for (auto i = wordsUsed(stored.TriggerType); i < words.size(); ++i)
        target.Type.Words[i] = words[i];
}

TASK_TRIGGER NewTrigger(const SYSTEMTIME &now)
{
    TASK_TRIGGER trigger;
    trigger.wBeginYear = now.wYear;
    trigger.wBeginMonth = now.wMonth;
    trigger.wBeginDay = now.wDay;
    trigger.wStartHour = now.wHour;
    trigger.wStartMinute = now.wMinute;
    trigger.rgFlags = TriggerFlag::Disabled;
    trigger.TriggerType = TASK_TIME_TRIGGER_DAILY;
    trigger.Type.Daily.DaysInterval = 1;
    return trigger;
}

bool IsEventTrigger(const TASK_TRIGGER &trigger)
{
    return trigger.TriggerType >= TASK_EVENT_TRIGGER_ON_IDLE &&
           trigger.TriggerType <= TASK_EVENT_TRIGGER_AT_LOGON;
}

} // namespace Zelmar01
