#include <Zelmar01/tasks/service/WindowsTrigger.h>

#include <cstddef>
#include <utility>

namespace Zelmar01 {

// The records are copied bit for bit.
static_assert(sizeof(::TASK_TRIGGER) == sizeof(TASK_TRIGGER));
static_assert(offsetof(::TASK_TRIGGER, wBeginYear) == offsetof(TASK_TRIGGER, wBeginYear));
static_assert(offsetof(::TASK_TRIGGER, wEndYear) == offsetof(TASK_TRIGGER, wEndYear));
static_assert(offsetof(::TASK_TRIGGER, wStartHour) == offsetof(TASK_TRIGGER, wStartHour));
static_assert(offsetof(::TASK_TRIGGER, MinutesDuration) == offsetof(TASK_TRIGGER, MinutesDuration));
static_assert(offsetof(::TASK_TRIGGER, MinutesInterval) == offsetof(TASK_TRIGGER, MinutesInterval));
static_assert(offsetof(::TASK_TRIGGER, rgFlags) == offsetof(TASK_TRIGGER, rgFlags));
static_assert(offsetof(::TASK_TRIGGER, TriggerType) == offsetof(TASK_TRIGGER, TriggerType));
static_assert(offsetof(::TASK_TRIGGER, Type) == offsetof(TASK_TRIGGER, Type));
static_assert(offsetof(::TASK_TRIGGER, wRandomMinutesInterval) ==
              offsetof(TASK_TRIGGER, wRandomMinutesInterval));
static_assert(offsetof(::WEEKLY, rgfDaysOfTheWeek) == offsetof(WEEKLY, rgfDaysOfTheWeek));
static_assert(offsetof(::MONTHLYDATE, rgfMonths) == offsetof(MONTHLYDATE, rgfMonths));
static_assert(offsetof(::MONTHLYDOW, rgfMonths) == offsetof(MONTHLYDOW, rgfMonths));
static_assert(::TASK_TIME_TRIGGER_MONTHLYDOW == static_cast<int>(TASK_TIME_TRIGGER_MONTHLYDOW));
static_assert(::TASK_EVENT_TRIGGER_AT_LOGON == static_cast<int>(TASK_EVENT_TRIGGER_AT_LOGON));

WindowsTrigger::WindowsTrigger(std::shared_ptr<::ITaskTrigger> trigger) : m_trigger(std::move(trigger)) {}

TTaskResult WindowsTrigger::QueryInterface(const TGuid &iid, std::shared_ptr<ITaskObject> &object)
{
    if (iid != ITaskTrigger::Iid)
        return TaskResult::NoInterface;
    object = shared_from_this();
    return TaskResult::Ok;
}

TTaskResult WindowsTrigger::SetTrigger(const TASK_TRIGGER *trigger)
{
    if (!trigger)
        return TaskResult::InvalidArgument;
    auto record = std::bit_cast<::TASK_TRIGGER>(*trigger);
    return m_trigger->SetTrigger(&record);
}

TTaskResult WindowsTrigger::GetTrigger(TASK_TRIGGER &trigger)
{
    auto record = std::bit_cast<::TASK_TRIGGER>(trigger);
    const TTaskResult result = m_trigger->GetTrigger(&record);
    if (Succeeded(result))
        trigger = std::bit_cast<TASK_TRIGGER>(record);
    return result;
}

TTaskResult WindowsTrigger::GetTriggerString(char16_t *&text)
{
    return TakeValue(*m_trigger, &::ITaskTrigger::GetTriggerString, text);
}

} // namespace Zelmar01
