#pragma once

#include <Zelmar01/tasks/service/TaskInterfaces.h>
#include <Zelmar01/tasks/service/WindowsCom.h>

#include <memory>

namespace Zelmar01 {

/// A job of the system's service.
class WindowsTask : public ITask,
                    public IPersistFile,
                    public IProvideTaskPage,
                    public std::enable_shared_from_this<WindowsTask>
{
public:
    explicit WindowsTask(std::shared_ptr<::ITask> task);

    ::ITask &SystemTask() { return *m_task; }

    TTaskResult QueryInterface(const TGuid &iid, std::shared_ptr<ITaskObject> &object) override;

    TTaskResult CreateTrigger(std::uint16_t &index, std::shared_ptr<ITaskTrigger> &trigger) override;
    TTaskResult DeleteTrigger(std::uint16_t index) override;
    TTaskResult GetTriggerCount(std::uint16_t &count) override;
    TTaskResult GetTrigger(std::uint16_t index, std::shared_ptr<ITaskTrigger> &trigger) override;
    TTaskResult GetTriggerString(std::uint16_t index, char16_t *&text) override;
    TTaskResult GetRunTimes(const SYSTEMTIME &begin, const SYSTEMTIME *end, std::uint16_t &count,
                            SYSTEMTIME *&times) override;
    TTaskResult GetNextRunTime(SYSTEMTIME &next) override;
    TTaskResult SetIdleWait(std::uint16_t idleMinutes, std::uint16_t deadlineMinutes) override;
    TTaskResult GetIdleWait(std::uint16_t &idleMinutes, std::uint16_t &deadlineMinutes) override;
    TTaskResult Run() override;
    TTaskResult Terminate() override;
    TTaskResult EditWorkItem(std::uintptr_t parent, std::uint32_t reserved) override;
    TTaskResult GetMostRecentRunTime(SYSTEMTIME &lastRun) override;
    TTaskResult GetStatus(TTaskResult &status) override;
    TTaskResult GetExitCode(std::uint32_t &exitCode) override;
    TTaskResult SetComment(const char16_t *comment) override;
    TTaskResult GetComment(char16_t *&comment) override;
    TTaskResult SetCreator(const char16_t *creator) override;
    TTaskResult GetCreator(char16_t *&creator) override;
    TTaskResult SetWorkItemData(std::uint16_t size, const std::uint8_t *data) override;
    TTaskResult GetWorkItemData(std::uint16_t &size, std::uint8_t *&data) override;
    TTaskResult SetErrorRetryCount(std::uint16_t count) override;
    TTaskResult GetErrorRetryCount(std::uint16_t &count) override;
    TTaskResult SetErrorRetryInterval(std::uint16_t minutes) override;
    TTaskResult GetErrorRetryInterval(std::uint16_t &minutes) override;
    TTaskResult SetFlags(std::uint32_t flags) override;
    TTaskResult GetFlags(std::uint32_t &flags) override;
    TTaskResult SetAccountInformation(const char16_t *account, const char16_t *password) override;
    TTaskResult GetAccountInformation(char16_t *&account) override;

    TTaskResult SetApplicationName(const char16_t *name) override;
    TTaskResult GetApplicationName(char16_t *&name) override;
    TTaskResult SetParameters(const char16_t *parameters) override;
    TTaskResult GetParameters(char16_t *&parameters) override;
    TTaskResult SetWorkingDirectory(const char16_t *directory) override;
    TTaskResult GetWorkingDirectory(char16_t *&directory) override;
    TTaskResult SetPriority(std::uint32_t priority) override;
    TTaskResult GetPriority(std::uint32_t &priority) override;
    TTaskResult SetTaskFlags(std::uint32_t flags) override;
    TTaskResult GetTaskFlags(std::uint32_t &flags) override;
    TTaskResult SetMaxRunTime(std::uint32_t milliseconds) override;
    TTaskResult GetMaxRunTime(std::uint32_t &milliseconds) override;

    TTaskResult GetClassID(TGuid &classID) override;
    TTaskResult IsDirty() override;
    TTaskResult Load(const char16_t *file, std::uint32_t mode) override;
    TTaskResult Save(const char16_t *file, bool remember) override;
    TTaskResult SaveCompleted(const char16_t *file) override;
    TTaskResult GetCurFile(char16_t *&file) override;

    TTaskResult GetPage(TASKPAGE type, bool persistChanges, std::shared_ptr<ITaskPage> &page) override;

private:
    // The operations of a task that answer a trigger.
    TTaskResult wrapTrigger(TTaskResult result, ::ITaskTrigger *found,
                            std::shared_ptr<ITaskTrigger> &trigger) const;

    std::shared_ptr<::ITask> m_task;
    // Null where the service does not have them.
    std::shared_ptr<::IPersistFile> m_file;
    std::shared_ptr<::IProvideTaskPage> m_pages;
};

} // namespace Zelmar01
