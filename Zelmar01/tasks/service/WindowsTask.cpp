#include <Zelmar01/tasks/service/WindowsTask.h>

#include <Zelmar01/tasks/service/WindowsTrigger.h>

#include <cstddef>
#include <utility>

namespace Zelmar01 {

// The records are copied bit for bit.
static_assert(sizeof(::SYSTEMTIME) == sizeof(SYSTEMTIME));
static_assert(offsetof(::SYSTEMTIME, wDayOfWeek) == offsetof(SYSTEMTIME, wDayOfWeek));
static_assert(offsetof(::SYSTEMTIME, wDay) == offsetof(SYSTEMTIME, wDay));
static_assert(offsetof(::SYSTEMTIME, wMilliseconds) == offsetof(SYSTEMTIME, wMilliseconds));

WindowsTask::WindowsTask(std::shared_ptr<::ITask> task)
    : m_task(std::move(task)), m_file(ComInterface<::IPersistFile>(m_task, IPersistFile::Iid)),
      m_pages(ComInterface<::IProvideTaskPage>(m_task, IProvideTaskPage::Iid))
{
}

TTaskResult WindowsTask::QueryInterface(const TGuid &iid, std::shared_ptr<ITaskObject> &object)
{
    const bool isKnown = iid == ITask::Iid || iid == IScheduledWorkItem::Iid ||
                         (iid == IPersistFile::Iid && m_file) || (iid == IProvideTaskPage::Iid && m_pages);
    if (!isKnown)
        return TaskResult::NoInterface;
    object = std::static_pointer_cast<ITask>(shared_from_this());
    return TaskResult::Ok;
}

TTaskResult WindowsTask::CreateTrigger(std::uint16_t &index, std::shared_ptr<ITaskTrigger> &trigger)
{
    WORD made = 0;
    ::ITaskTrigger *found = nullptr;
    const TTaskResult result = m_task->CreateTrigger(&made, &found);
    if (Succeeded(result))
        index = made;
    return wrapTrigger(result, found, trigger);
}

TTaskResult WindowsTask::DeleteTrigger(std::uint16_t index)
{
    return m_task->DeleteTrigger(index);
}

TTaskResult WindowsTask::GetTriggerCount(std::uint16_t &count)
{
    return TakeValue(*m_task, &::ITask::GetTriggerCount, count);
}

TTaskResult WindowsTask::GetTrigger(std::uint16_t index, std::shared_ptr<ITaskTrigger> &trigger)
{
    ::ITaskTrigger *found = nullptr;
    const TTaskResult result = m_task->GetTrigger(index, &found);
    return wrapTrigger(result, found, trigger);
}

TTaskResult WindowsTask::GetTriggerString(std::uint16_t index, char16_t *&text)
{
    wchar_t *block = nullptr;
    const TTaskResult result = m_task->GetTriggerString(index, &block);
    if (Succeeded(result))
        text = reinterpret_cast<char16_t *>(block);
    return result;
}

TTaskResult WindowsTask::GetRunTimes(const SYSTEMTIME &begin, const SYSTEMTIME *end, std::uint16_t &count,
                                     SYSTEMTIME *&times)
{
    auto from = std::bit_cast<::SYSTEMTIME>(begin);
    auto until = end ? std::bit_cast<::SYSTEMTIME>(*end) : ::SYSTEMTIME{};
    WORD found = count;
    ::SYSTEMTIME *block = nullptr;
    const TTaskResult result = m_task->GetRunTimes(&from, end ? &until : nullptr, &found, &block);
    if (Succeeded(result)) {
        count = found;
        times = reinterpret_cast<SYSTEMTIME *>(block);
    }
    return result;
}

TTaskResult WindowsTask::GetNextRunTime(SYSTEMTIME &next)
{
    return TakeValue(*m_task, &::ITask::GetNextRunTime, next);
}

TTaskResult WindowsTask::SetIdleWait(std::uint16_t idleMinutes, std::uint16_t deadlineMinutes)
{
    return m_task->SetIdleWait(idleMinutes, deadlineMinutes);
}

TTaskResult WindowsTask::GetIdleWait(std::uint16_t &idleMinutes, std::uint16_t &deadlineMinutes)
{
    WORD idle = 0, deadline = 0;
    const TTaskResult result = m_task->GetIdleWait(&idle, &deadline);
    if (Succeeded(result)) {
        idleMinutes = idle;
        deadlineMinutes = deadline;
    }
    return result;
}

TTaskResult WindowsTask::Run()
{
    return m_task->Run();
}

TTaskResult WindowsTask::Terminate()
{
    return m_task->Terminate();
}

TTaskResult WindowsTask::EditWorkItem(std::uintptr_t parent, std::uint32_t reserved)
{
    return m_task->EditWorkItem(reinterpret_cast<HWND>(parent), reserved);
}

TTaskResult WindowsTask::GetMostRecentRunTime(SYSTEMTIME &lastRun)
{
    return TakeValue(*m_task, &::ITask::GetMostRecentRunTime, lastRun);
}

TTaskResult WindowsTask::GetStatus(TTaskResult &status)
{
    return TakeValue(*m_task, &::ITask::GetStatus, status);
}

TTaskResult WindowsTask::GetExitCode(std::uint32_t &exitCode)
{
    return TakeValue(*m_task, &::ITask::GetExitCode, exitCode);
}

TTaskResult WindowsTask::SetComment(const char16_t *comment)
{
    return PassText(*m_task, &::ITask::SetComment, comment);
}

TTaskResult WindowsTask::GetComment(char16_t *&comment)
{
    return TakeValue(*m_task, &::ITask::GetComment, comment);
}

TTaskResult WindowsTask::SetCreator(const char16_t *creator)
{
    return PassText(*m_task, &::ITask::SetCreator, creator);
}

TTaskResult WindowsTask::GetCreator(char16_t *&creator)
{
    return TakeValue(*m_task, &::ITask::GetCreator, creator);
}

TTaskResult WindowsTask::SetWorkItemData(std::uint16_t size, const std::uint8_t *data)
{
    // The service only reads them.
    return size > 0 && !data ? TaskResult::InvalidArgument
                             : m_task->SetWorkItemData(size, const_cast<BYTE *>(data));
}

TTaskResult WindowsTask::GetWorkItemData(std::uint16_t &size, std::uint8_t *&data)
{
    WORD found = 0;
    BYTE *block = nullptr;
    const TTaskResult result = m_task->GetWorkItemData(&found, &block);
    if (Succeeded(result)) {
        size = found;
        data = block;
    }
    return result;
}

TTaskResult WindowsTask::SetErrorRetryCount(std::uint16_t count)
{
    return m_task->SetErrorRetryCount(count);
}

TTaskResult WindowsTask::GetErrorRetryCount(std::uint16_t &count)
{
    return TakeValue(*m_task, &::ITask::GetErrorRetryCount, count);
}

TTaskResult WindowsTask::SetErrorRetryInterval(std::uint16_t minutes)
{
    return m_task->SetErrorRetryInterval(minutes);
}

TTaskResult WindowsTask::GetErrorRetryInterval(std::uint16_t &minutes)
{
    return TakeValue(*m_task, &::ITask::GetErrorRetryInterval, minutes);
}

TTaskResult WindowsTask::SetFlags(std::uint32_t flags)
{
    return m_task->SetFlags(flags);
}

TTaskResult WindowsTask::GetFlags(std::uint32_t &flags)
{
    return TakeValue(*m_task, &::ITask::GetFlags, flags);
}

TTaskResult WindowsTask::SetAccountInformation(const char16_t *account, const char16_t *password)
{
    return account ? m_task->SetAccountInformation(SystemText(account), SystemText(password))
                   : TaskResult::InvalidArgument;
}

TTaskResult WindowsTask::GetAccountInformation(char16_t *&account)
{
    return TakeValue(*m_task, &::ITask::GetAccountInformation, account);
}

TTaskResult WindowsTask::SetApplicationName(const char16_t *name)
{
    return PassText(*m_task, &::ITask::SetApplicationName, name);
}

TTaskResult WindowsTask::GetApplicationName(char16_t *&name)
{
    return TakeValue(*m_task, &::ITask::GetApplicationName, name);
}

TTaskResult WindowsTask::SetParameters(const char16_t *parameters)
{
    return PassText(*m_task, &::ITask::SetParameters, parameters);
}

TTaskResult WindowsTask::GetParameters(char16_t *&parameters)
{
    return TakeValue(*m_task, &::ITask::GetParameters, parameters);
}

TTaskResult WindowsTask::SetWorkingDirectory(const char16_t *directory)
{
    return PassText(*m_task, &::ITask::SetWorkingDirectory, directory);
}

TTaskResult WindowsTask::GetWorkingDirectory(char16_t *&directory)
{
    return TakeValue(*m_task, &::ITask::GetWorkingDirectory, directory);
}

TTaskResult WindowsTask::SetPriority(std::uint32_t priority)
{
    return m_task->SetPriority(priority);
}

TTaskResult WindowsTask::GetPriority(std::uint32_t &priority)
{
    return TakeValue(*m_task, &::ITask::GetPriority, priority);
}

TTaskResult WindowsTask::SetTaskFlags(std::uint32_t flags)
{
    return m_task->SetTaskFlags(flags);
}

TTaskResult WindowsTask::GetTaskFlags(std::uint32_t &flags)
{
    return TakeValue(*m_task, &::ITask::GetTaskFlags, flags);
}

TTaskResult WindowsTask::SetMaxRunTime(std::uint32_t milliseconds)
{
    return m_task->SetMaxRunTime(milliseconds);
}

TTaskResult WindowsTask::GetMaxRunTime(std::uint32_t &milliseconds)
{
    return TakeValue(*m_task, &::ITask::GetMaxRunTime, milliseconds);
}

TTaskResult WindowsTask::wrapTrigger(TTaskResult result, ::ITaskTrigger *found,
                                     std::shared_ptr<ITaskTrigger> &trigger) const
{
    if (Succeeded(result))
        trigger = std::make_shared<WindowsTrigger>(HoldComObject(m_task, found));
    return result;
}

} // namespace Zelmar01
