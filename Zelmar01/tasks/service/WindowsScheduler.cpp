#include <Zelmar01/tasks/service/WindowsScheduler.h>

#include <Zelmar01/tasks/service/WindowsNames.h>
#include <Zelmar01/tasks/service/WindowsTask.h>

#include <utility>

namespace Zelmar01 {

WindowsScheduler::WindowsScheduler(std::shared_ptr<::ITaskScheduler> scheduler)
    : m_scheduler(std::move(scheduler))
{
}

TTaskResult WindowsScheduler::QueryInterface(const TGuid &iid, std::shared_ptr<ITaskObject> &object)
{
    if (iid != ITaskScheduler::Iid)
        return TaskResult::NoInterface;
    object = shared_from_this();
    return TaskResult::Ok;
}

TTaskResult WindowsScheduler::SetTargetComputer(const char16_t *computer)
{
    return m_scheduler->SetTargetComputer(SystemText(computer));
}

TTaskResult WindowsScheduler::GetTargetComputer(char16_t *&computer)
{
    return TakeValue(*m_scheduler, &::ITaskScheduler::GetTargetComputer, computer);
}

TTaskResult WindowsScheduler::Enum(std::shared_ptr<IEnumWorkItems> &names)
{
    ::IEnumWorkItems *found = nullptr;
    const TTaskResult result = m_scheduler->Enum(&found);
    if (Succeeded(result))
        names = std::make_shared<WindowsNames>(HoldComObject(m_scheduler, found));
    return result;
}

TTaskResult WindowsScheduler::Activate(const char16_t *name, const TGuid &iid,
                                       std::shared_ptr<ITaskObject> &object)
{
    if (!name)
        return TaskResult::InvalidArgument;
    IUnknown *found = nullptr;
    const TTaskResult result = m_scheduler->Activate(SystemText(name), SystemGuid(iid), &found);
    return Succeeded(result) ? wrapTask(found, iid, object) : result;
}

TTaskResult WindowsScheduler::Delete(const char16_t *name)
{
    return PassText(*m_scheduler, &::ITaskScheduler::Delete, name);
}

TTaskResult WindowsScheduler::NewWorkItem(const char16_t *name, const TGuid &clsid, const TGuid &iid,
                                          std::shared_ptr<ITaskObject> &object)
{
    if (!name)
        return TaskResult::InvalidArgument;
    IUnknown *found = nullptr;
    const TTaskResult result =
        m_scheduler->NewWorkItem(SystemText(name), SystemGuid(clsid), SystemGuid(iid), &found);
    return Succeeded(result) ? wrapTask(found, iid, object) : result;
}

TTaskResult WindowsScheduler::AddWorkItem(const char16_t *name,
                                          const std::shared_ptr<IScheduledWorkItem> &item)
{
    const auto task = std::dynamic_pointer_cast<WindowsTask>(item);
    if (!name || !task)
        return TaskResult::InvalidArgument;
    return m_scheduler->AddWorkItem(SystemText(name), &task->SystemTask());
}

TTaskResult WindowsScheduler::IsOfType(const char16_t *name, const TGuid &iid)
{
    return name ? m_scheduler->IsOfType(SystemText(name), SystemGuid(iid)) : TaskResult::InvalidArgument;
}

TTaskResult WindowsScheduler::wrapTask(IUnknown *found, const TGuid &iid,
                                       std::shared_ptr<ITaskObject> &object) const
{
    const auto unknown = HoldComObject(m_scheduler, found);
    auto task = unknown ? ComInterface<::ITask>(unknown, ITask::Iid) : nullptr;
    if (!task)
        return TaskResult::NoInterface;
    return std::make_shared<WindowsTask>(std::move(task))->QueryInterface(iid, object);
}

} // namespace Zelmar01
