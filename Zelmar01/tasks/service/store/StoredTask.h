#pragma once

#include <Zelmar01/tasks/service/TaskInterfaces.h>
#include <Zelmar01/tasks/service/store/JobFile.h>
#include <Zelmar01/tasks/service/store/StoreContext.h>

#include <filesystem>
#include <memory>
#include <string>

namespace Zelmar01 {

/// A job of the job store, in memory: what is set is in its file after Save() alone, and what a run changes
/// in the file is not seen here before the job is activated again.
class TStoredTask : public ITask,
                    public IPersistFile,
                    public IProvideTaskPage,
                    public std::enable_shared_from_this<TStoredTask>
{
public:
    /// A job that was not saved yet, and will be as `file` of the store's folder.
    TStoredTask(std::shared_ptr<TStoreContext> store, std::u16string_view file, TJob job = {});

    /// Reads the job from its file.
    TTaskResult Open();

    /// Gives a new job or a copy of a saved one a file of its own in the store's folder.
    TTaskResult SaveAs(std::u16string_view file);

    static bool HasInterface(const TGuid &iid);

    const std::shared_ptr<TStoreContext> &Store() const { return m_store; }
    std::vector<TASK_TRIGGER> &Triggers() { return m_job.Triggers; }
    void SetDirty() { m_dirty = true; }

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
    /// The own account is accepted, with or without a password, which is not kept. Any other one that exists
    /// is refused with UnsupportedAccountOption.
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
    /// The first save of a job is refused with FileExists, too, when there is a file of its name by now. What
    /// a run left in the file stays there; a file that was damaged meanwhile is not written over.
    TTaskResult Save(const char16_t *file, bool remember) override;
    TTaskResult SaveCompleted(const char16_t *file) override;
    TTaskResult GetCurFile(char16_t *&file) override;

    TTaskResult GetPage(TASKPAGE type, bool persistChanges, std::shared_ptr<ITaskPage> &page) override;

private:
    bool isInStore(const std::filesystem::path &file) const;
    TTaskResult read(const std::filesystem::path &file);
    TTaskResult write(const std::filesystem::path &file, bool asNew);
    TTaskResult writeToStore(std::u16string_view file, bool asNew, TJob &job) const;
    TTaskResult setText(TJobText &text, const char16_t *value);

    std::shared_ptr<TStoreContext> m_store;
    std::filesystem::path m_file;
    TJob m_job;
    bool m_isSaved = false, m_isRunning = false, m_dirty = false;
};

} // namespace Zelmar01
