#include <Zelmar01/tasks/service/store/StoredTask.h>

#include <Zelmar01/tasks/service/RunTimes.h>
#include <Zelmar01/tasks/service/TriggerText.h>
#include <Zelmar01/tasks/service/Triggers.h>
#include <Zelmar01/tasks/service/store/JobControl.h>
#include <Zelmar01/tasks/service/store/JobPage.h>
#include <Zelmar01/tasks/service/store/JobStatus.h>
#include <Zelmar01/tasks/service/store/StoredTrigger.h>

#include <algorithm>

namespace Zelmar01 {

namespace {

std::u16string_view textOf(const TJobText &text)
{
    return text ? std::u16string_view(*text) : std::u16string_view();
}

// An account may come with this computer's name in front.
std::u16string_view withoutComputer(std::u16string_view account)
{
    const auto at = account.find(u'\\');
    if (at == account.npos)
        return account;
    const auto computer = account.substr(0, at);
    return computer == u"." || FoldName(computer) == FoldName(ComputerName()) ? account.substr(at + 1)
                                                                              : account;
}

} // namespace

TStoredTask::TStoredTask(std::shared_ptr<TStoreContext> store, std::u16string_view file, TJob job)
    : m_store(std::move(store)), m_file(m_store->Folder.PathOf(file)), m_job(std::move(job))
{
}

TTaskResult TStoredTask::Open()
{
    return read(m_file);
}

TTaskResult TStoredTask::SaveAs(std::u16string_view file)
{
    return write(m_store->Folder.PathOf(file), true);
}

bool TStoredTask::HasInterface(const TGuid &iid)
{
    return iid == ITask::Iid || iid == IScheduledWorkItem::Iid || iid == IPersistFile::Iid ||
           iid == IProvideTaskPage::Iid;
}

TTaskResult TStoredTask::QueryInterface(const TGuid &iid, std::shared_ptr<ITaskObject> &object)
{
    if (!HasInterface(iid))
        return TaskResult::NoInterface;
    object = std::static_pointer_cast<ITask>(shared_from_this());
    return TaskResult::Ok;
}

TTaskResult TStoredTask::CreateTrigger(std::uint16_t &index, std::shared_ptr<ITaskTrigger> &trigger)
{
    auto &triggers = m_job.Triggers;
    if (triggers.size() >= TaskMaxTriggers)
        return TaskResult::Fail;
    triggers.push_back(NewTrigger(m_store->LocalNow()));
    index = static_cast<std::uint16_t>(triggers.size() - 1);
    trigger = std::make_shared<TStoredTrigger>(shared_from_this(), index);
    m_dirty = true;
    return TaskResult::Ok;
}

TTaskResult TStoredTask::DeleteTrigger(std::uint16_t index)
{
    if (index >= m_job.Triggers.size())
        return TaskResult::TriggerNotFound;
    m_job.Triggers.erase(m_job.Triggers.begin() + index);
    m_dirty = true;
    return TaskResult::Ok;
}

TTaskResult TStoredTask::GetTriggerCount(std::uint16_t &count)
{
    count = static_cast<std::uint16_t>(m_job.Triggers.size());
    return TaskResult::Ok;
}

TTaskResult TStoredTask::GetTrigger(std::uint16_t index, std::shared_ptr<ITaskTrigger> &trigger)
{
    if (index >= m_job.Triggers.size())
        return TaskResult::TriggerNotFound;
    trigger = std::make_shared<TStoredTrigger>(shared_from_this(), index);
    return TaskResult::Ok;
}

TTaskResult TStoredTask::GetTriggerString(std::uint16_t index, char16_t *&text)
{
    return index < m_job.Triggers.size() ? m_store->HandOut(TriggerText(m_job.Triggers[index]), text)
                                         : TaskResult::TriggerNotFound;
}

TTaskResult TStoredTask::GetRunTimes(const SYSTEMTIME &begin, const SYSTEMTIME *end, std::uint16_t &count,
                                     SYSTEMTIME *&times)
{
    std::vector<SYSTEMTIME> found;
    const auto result =
        RunTimesBetween(TRunTimes(m_job.Triggers, m_job.Flags), begin, end, count, m_store->Zone(), found);
    if (Failed(result))
        return result;
    SYSTEMTIME *block = nullptr;
    if (!found.empty()) {
        block = static_cast<SYSTEMTIME *>(m_store->Allocator.Alloc(found.size() * sizeof *block));
        if (!block)
            return TaskResult::OutOfMemory;
        std::ranges::copy(found, block);
    }
    count = static_cast<std::uint16_t>(found.size());
    times = block;
    return result;
}

TTaskResult TStoredTask::GetNextRunTime(SYSTEMTIME &next)
{
    return NextRunTime(TRunTimes(m_job.Triggers, m_job.Flags), m_store->Now(), m_store->Zone(), next);
}

TTaskResult TStoredTask::SetIdleWait(std::uint16_t idleMinutes, std::uint16_t deadlineMinutes)
{
    m_job.IdleWait = idleMinutes;
    m_job.IdleDeadline = deadlineMinutes;
    m_dirty = true;
    return TaskResult::Ok;
}

TTaskResult TStoredTask::GetIdleWait(std::uint16_t &idleMinutes, std::uint16_t &deadlineMinutes)
{
    idleMinutes = m_job.IdleWait;
    deadlineMinutes = m_job.IdleDeadline;
    return TaskResult::Ok;
}

TTaskResult TStoredTask::Run()
{
    if (!m_isSaved || m_job.Triggers.empty() || !isInStore(m_file))
        return TaskResult::TaskNotReady;
    return StartJob(m_store->Folder, TextFromPath(m_file.filename()), m_store->Now(), m_store->Runner);
}

TTaskResult TStoredTask::Terminate()
{
    return m_isSaved && isInStore(m_file) ? TerminateJob(m_store->Folder, TextFromPath(m_file.filename()))
                                          : TaskResult::TaskNotRunning;
}

TTaskResult TStoredTask::EditWorkItem(std::uintptr_t parent, std::uint32_t)
{
    if (!JobSheet())
        return TaskResult::NotSupported;
    TPropertySheet sheet;
    sheet.Flags = SheetFlag::PropTitle;
    sheet.Parent = parent;
    sheet.Caption = JobTitle(TextFromPath(m_file.filename()));
    for (const auto type : {TASKPAGE_TASK, TASKPAGE_SCHEDULE, TASKPAGE_SETTINGS}) {
        std::shared_ptr<ITaskPage> page;
        if (const auto result = GetPage(type, true, page); Failed(result))
            return result;
        sheet.Pages.push_back(page);
    }
    return JobSheet()(sheet) < 0 ? TaskResult::Fail : TaskResult::Ok;
}

TTaskResult TStoredTask::GetMostRecentRunTime(SYSTEMTIME &lastRun)
{
    lastRun = m_job.LastRun;
    return HasRun(m_job) ? TaskResult::Ok : TaskResult::TaskHasNotRun;
}

TTaskResult TStoredTask::GetStatus(TTaskResult &status)
{
    status = m_isSaved ? JobStatus(m_job, m_isRunning, m_store->Now(), m_store->Zone())
                       : TaskResult::TaskNotScheduled;
    return TaskResult::Ok;
}

TTaskResult TStoredTask::GetExitCode(std::uint32_t &exitCode)
{
    exitCode = m_job.ExitCode;
    return ExitResult(m_job);
}

TTaskResult TStoredTask::SetComment(const char16_t *comment)
{
    return setText(m_job.Comment, comment);
}

TTaskResult TStoredTask::GetComment(char16_t *&comment)
{
    return m_store->HandOut(textOf(m_job.Comment), comment);
}

TTaskResult TStoredTask::SetCreator(const char16_t *creator)
{
    return setText(m_job.Creator, creator);
}

TTaskResult TStoredTask::GetCreator(char16_t *&creator)
{
    return m_store->HandOut(textOf(m_job.Creator), creator);
}

TTaskResult TStoredTask::SetWorkItemData(std::uint16_t size, const std::uint8_t *data)
{
    if (size > 0 && !data)
        return TaskResult::InvalidArgument;
    m_job.UserData.assign(data, data + size);
    m_dirty = true;
    return TaskResult::Ok;
}

TTaskResult TStoredTask::GetWorkItemData(std::uint16_t &size, std::uint8_t *&data)
{
    std::uint8_t *block = nullptr;
    if (!m_job.UserData.empty()) {
        block = static_cast<std::uint8_t *>(m_store->Allocator.Alloc(m_job.UserData.size()));
        if (!block)
            return TaskResult::OutOfMemory;
        std::ranges::copy(m_job.UserData, block);
    }
    size = static_cast<std::uint16_t>(m_job.UserData.size());
    data = block;
    return TaskResult::Ok;
}

TTaskResult TStoredTask::SetErrorRetryCount(std::uint16_t)
{
    return TaskResult::NotImplemented;
}

TTaskResult TStoredTask::GetErrorRetryCount(std::uint16_t &)
{
    return TaskResult::NotImplemented;
}

TTaskResult TStoredTask::SetErrorRetryInterval(std::uint16_t)
{
    return TaskResult::NotImplemented;
}

TTaskResult TStoredTask::GetErrorRetryInterval(std::uint16_t &)
{
    return TaskResult::NotImplemented;
}

TTaskResult TStoredTask::SetFlags(std::uint32_t flags)
{
    m_job.Flags = (m_job.Flags & ~TaskFlag::PublicMask) | (flags & TaskFlag::PublicMask);
    m_dirty = true;
    return TaskResult::Ok;
}

TTaskResult TStoredTask::GetFlags(std::uint32_t &flags)
{
    flags = m_job.Flags & TaskFlag::PublicMask;
    return TaskResult::Ok;
}

TTaskResult TStoredTask::SetAccountInformation(const char16_t *account, const char16_t *)
{
    if (!account)
        return TaskResult::InvalidArgument;
    const auto name = withoutComputer(account);
    if (FoldName(name) == FoldName(UserAccount()))
        return TaskResult::Ok;
    return name.empty() || AccountExists(name) ? TaskResult::UnsupportedAccountOption
                                               : TaskResult::AccountNameNotFound;
}

TTaskResult TStoredTask::GetAccountInformation(char16_t *&account)
{
    return m_isSaved ? m_store->HandOut(UserAccount(), account) : TaskResult::AccountInformationNotSet;
}

TTaskResult TStoredTask::SetApplicationName(const char16_t *name)
{
    const auto program = name ? SearchProgram(name) : std::nullopt;
    return setText(m_job.ApplicationName, program ? TextFromPath(*program).c_str() : name);
}

TTaskResult TStoredTask::GetApplicationName(char16_t *&name)
{
    return m_store->HandOut(textOf(m_job.ApplicationName), name);
}

TTaskResult TStoredTask::SetParameters(const char16_t *parameters)
{
    return setText(m_job.Parameters, parameters);
}

TTaskResult TStoredTask::GetParameters(char16_t *&parameters)
{
    return m_store->HandOut(textOf(m_job.Parameters), parameters);
}

TTaskResult TStoredTask::SetWorkingDirectory(const char16_t *directory)
{
    return setText(m_job.WorkingDirectory, directory);
}

TTaskResult TStoredTask::GetWorkingDirectory(char16_t *&directory)
{
    return m_store->HandOut(textOf(m_job.WorkingDirectory), directory);
}

TTaskResult TStoredTask::SetPriority(std::uint32_t priority)
{
    switch (priority) {
    case PriorityClass::Normal:
    case PriorityClass::Idle:
    case PriorityClass::High:
    case PriorityClass::RealTime:
        m_job.Priority = priority;
        m_dirty = true;
        return TaskResult::Ok;
    default:
        return TaskResult::InvalidArgument;
    }
}

TTaskResult TStoredTask::GetPriority(std::uint32_t &priority)
{
    priority = m_job.Priority;
    return TaskResult::Ok;
}

TTaskResult TStoredTask::SetTaskFlags(std::uint32_t flags)
{
    if (!m_job.Reserved)
        m_job.Reserved.emplace();
    m_job.Reserved->TaskFlags = flags;
    m_dirty = true;
    return TaskResult::Ok;
}

TTaskResult TStoredTask::GetTaskFlags(std::uint32_t &flags)
{
    flags = m_job.Reserved ? m_job.Reserved->TaskFlags : 0;
    return TaskResult::Ok;
}

TTaskResult TStoredTask::SetMaxRunTime(std::uint32_t milliseconds)
{
    m_job.MaxRunTime = milliseconds;
    m_dirty = true;
    return TaskResult::Ok;
}

TTaskResult TStoredTask::GetMaxRunTime(std::uint32_t &milliseconds)
{
    milliseconds = m_job.MaxRunTime;
    return TaskResult::Ok;
}

TTaskResult TStoredTask::setText(TJobText &text, const char16_t *value)
{
    if (!value)
        return TaskResult::InvalidArgument;
    std::u16string copy = value;
    if (copy.size() > MaxJobText)
        return TaskResult::InvalidArgument;
    text = std::move(copy);
    m_dirty = true;
    return TaskResult::Ok;
}

} // namespace Zelmar01
