#include <Zelmar01/tasks/service/store/StoredTrigger.h>

#include <Zelmar01/tasks/service/TriggerText.h>
#include <Zelmar01/tasks/service/Triggers.h>

namespace Zelmar01 {

TStoredTrigger::TStoredTrigger(std::shared_ptr<TStoredTask> task, std::size_t index)
    : m_task(std::move(task)), m_index(index)
{
}

TTaskResult TStoredTrigger::QueryInterface(const TGuid &iid, std::shared_ptr<ITaskObject> &object)
{
    if (iid != ITaskTrigger::Iid)
        return TaskResult::NoInterface;
    object = shared_from_this();
    return TaskResult::Ok;
}

TTaskResult TStoredTrigger::SetTrigger(const TASK_TRIGGER *trigger)
{
    if (const auto result = CheckTrigger(trigger); Failed(result))
        return result;
    auto *const target = stored();
    if (!target)
        return TaskResult::Fail;
    *target = StoredTrigger(*trigger);
    m_task->SetDirty();
    return TaskResult::Ok;
}

TTaskResult TStoredTrigger::GetTrigger(TASK_TRIGGER &trigger)
{
    const auto *const source = stored();
    if (!source)
        return TaskResult::Fail;
    HandOutTrigger(*source, trigger);
    return TaskResult::Ok;
}

TTaskResult TStoredTrigger::GetTriggerString(char16_t *&text)
{
    const auto *const source = stored();
    return source ? m_task->Store()->HandOut(TriggerText(*source), text) : TaskResult::Fail;
}

TASK_TRIGGER *TStoredTrigger::stored() const
{
    auto &triggers = m_task->Triggers();
    return m_index < triggers.size() ? &triggers[m_index] : nullptr;
}

} // namespace Zelmar01
