#pragma once

#include <Zelmar01/tasks/service/MSTask.h>
#include <Zelmar01/tasks/service/TaskResults.h>

#include <cstddef>
#include <cstdint>
#include <memory>

namespace Zelmar01 {

/// The operations of the task service, under the names that they have there. ITaskService (TaskService.h) is
/// where they are had from; on Windows they are the system's own objects, elsewhere a folder of job files.
///
/// - An operation answers a result code and raises nothing.
/// - Texts are UTF-16. A text that is passed in ends in NUL, and may be null only where that is said; a null
///   one is otherwise refused with InvalidArgument.
/// - Texts, names, times and data that are handed out are blocks of the service's ITaskAllocator, which the
///   caller frees. After a failure an out-argument is as it was, but where said otherwise.
/// - Objects are shared pointers; the last one to go releases the object.

class ITaskTrigger;
class IScheduledWorkItem;
class IEnumWorkItems;

/// The memory of what the service hands out: CoTaskMemAlloc and CoTaskMemFree.
class ITaskAllocator
{
public:
    virtual ~ITaskAllocator() = default;

    /// A block of `size` bytes for any kind of record; null when there is no memory.
    virtual void *Alloc(std::size_t size) = 0;
    /// Takes a block of this allocator, or null.
    virtual void Free(void *block) = 0;
};

/// What all objects of the service can do.
class ITaskObject
{
public:
    virtual ~ITaskObject() = default;

    /// The same object under another of its interfaces, to be had with std::dynamic_pointer_cast or, in one
    /// step, with the function below. NoInterface when it has no such one.
    virtual TTaskResult QueryInterface(const TGuid &iid, std::shared_ptr<ITaskObject> &object) = 0;
};

/// Asks an object for an interface: QueryInterface(*task, file) with a std::shared_ptr<IPersistFile>.
template<class TInterface>
TTaskResult QueryInterface(ITaskObject &object, std::shared_ptr<TInterface> &answer)
{
    std::shared_ptr<ITaskObject> found;
    const auto result = object.QueryInterface(TInterface::Iid, found);
    if (Failed(result))
        return result;
    auto typed = std::dynamic_pointer_cast<TInterface>(found);
    if (!typed)
        return TaskResult::NoInterface;
    answer = std::move(typed);
    return result;
}

/// One trigger of a job, known by its index: after triggers were deleted it stands for the one that has this
/// index now. It keeps its job.
class ITaskTrigger : public virtual ITaskObject
{
public:
    static constexpr TGuid Iid{0x148BD52B, 0xA2AB, 0x11CE, {0xB1, 0x1F, 0x00, 0xAA, 0x00, 0x53, 0x05, 0x03}};

    /// InvalidArgument for null and for a record that breaks a rule of CheckTrigger (Triggers.h); Fail when
    /// the job has no trigger of this index any more.
    virtual TTaskResult SetTrigger(const TASK_TRIGGER *trigger) = 0;
    /// Does not look at the size in `trigger`; bytes of the union that the kind does not use stay as they
    /// are.
    virtual TTaskResult GetTrigger(TASK_TRIGGER &trigger) = 0;
    /// When the trigger starts its job, in words.
    virtual TTaskResult GetTriggerString(char16_t *&text) = 0;
};

/// What any scheduled work has.
class IScheduledWorkItem : public virtual ITaskObject
{
public:
    static constexpr TGuid Iid{0xA6B952F0, 0xA4B1, 0x11D0, {0x99, 0x7D, 0x00, 0xAA, 0x00, 0x68, 0x87, 0xEC}};

    virtual TTaskResult CreateTrigger(std::uint16_t &index, std::shared_ptr<ITaskTrigger> &trigger) = 0;
    virtual TTaskResult DeleteTrigger(std::uint16_t index) = 0;
    virtual TTaskResult GetTriggerCount(std::uint16_t &count) = 0;
    virtual TTaskResult GetTrigger(std::uint16_t index, std::shared_ptr<ITaskTrigger> &trigger) = 0;
    virtual TTaskResult GetTriggerString(std::uint16_t index, char16_t *&text) = 0;

    /// The starts from `begin` (included) to `end` (excluded; null for no end) over all enabled triggers.
    /// `count` is how many are wanted, at most TaskMaxRunTimes, and then how many there are; `times` receives
    /// an array of them, null when there is none. Ok for as many as wanted, False for fewer, else the reason.
    virtual TTaskResult GetRunTimes(const SYSTEMTIME &begin, const SYSTEMTIME *end, std::uint16_t &count,
                                    SYSTEMTIME *&times) = 0;
    /// The next start from now on. Where there is none the result says why and `next` is all zero.
    virtual TTaskResult GetNextRunTime(SYSTEMTIME &next) = 0;

    /// Minutes that the computer must be idle before a start, and minutes to wait for that.
    virtual TTaskResult SetIdleWait(std::uint16_t idleMinutes, std::uint16_t deadlineMinutes) = 0;
    virtual TTaskResult GetIdleWait(std::uint16_t &idleMinutes, std::uint16_t &deadlineMinutes) = 0;

    /// Asks for a start now; Ok says that the request is on its way. The status of this object does not
    /// follow it: activate the job again to see it.
    virtual TTaskResult Run() = 0;
    virtual TTaskResult Terminate() = 0;

    /// The service's own modal editor. `parent` is a window handle or 0, `reserved` is 0.
    virtual TTaskResult EditWorkItem(std::uintptr_t parent, std::uint32_t reserved) = 0;

    /// TaskHasNotRun and all zero for a job that never ran.
    virtual TTaskResult GetMostRecentRunTime(SYSTEMTIME &lastRun) = 0;
    virtual TTaskResult GetStatus(TTaskResult &status) = 0;
    /// The exit code of the last run; the result is TaskHasNotRun, or what kept the last start from
    /// happening.
    virtual TTaskResult GetExitCode(std::uint32_t &exitCode) = 0;

    virtual TTaskResult SetComment(const char16_t *comment) = 0;
    virtual TTaskResult GetComment(char16_t *&comment) = 0;
    virtual TTaskResult SetCreator(const char16_t *creator) = 0;
    virtual TTaskResult GetCreator(char16_t *&creator) = 0;

    /// The host's own data, of any content; 0 bytes (`data` may then be null) for none.
    virtual TTaskResult SetWorkItemData(std::uint16_t size, const std::uint8_t *data) = 0;
    virtual TTaskResult GetWorkItemData(std::uint16_t &size, std::uint8_t *&data) = 0;

    /// Not implemented by the service: all four answer NotImplemented.
    virtual TTaskResult SetErrorRetryCount(std::uint16_t count) = 0;
    virtual TTaskResult GetErrorRetryCount(std::uint16_t &count) = 0;
    virtual TTaskResult SetErrorRetryInterval(std::uint16_t minutes) = 0;
    virtual TTaskResult GetErrorRetryInterval(std::uint16_t &minutes) = 0;

    /// Bits of TaskFlag.
    virtual TTaskResult SetFlags(std::uint32_t flags) = 0;
    virtual TTaskResult GetFlags(std::uint32_t &flags) = 0;

    /// An empty name and a null password stand for the system's own account.
    virtual TTaskResult SetAccountInformation(const char16_t *account, const char16_t *password) = 0;
    virtual TTaskResult GetAccountInformation(char16_t *&account) = 0;
};

/// A job: a program that is started.
class ITask : public IScheduledWorkItem
{
public:
    static constexpr TGuid Iid{0x148BD524, 0xA2AB, 0x11CE, {0xB1, 0x1F, 0x00, 0xAA, 0x00, 0x53, 0x05, 0x03}};

    virtual TTaskResult SetApplicationName(const char16_t *name) = 0;
    virtual TTaskResult GetApplicationName(char16_t *&name) = 0;
    virtual TTaskResult SetParameters(const char16_t *parameters) = 0;
    virtual TTaskResult GetParameters(char16_t *&parameters) = 0;
    virtual TTaskResult SetWorkingDirectory(const char16_t *directory) = 0;
    virtual TTaskResult GetWorkingDirectory(char16_t *&directory) = 0;
    /// One of PriorityClass.
    virtual TTaskResult SetPriority(std::uint32_t priority) = 0;
    virtual TTaskResult GetPriority(std::uint32_t &priority) = 0;
    /// Without meaning; kept apart from SetFlags.
    virtual TTaskResult SetTaskFlags(std::uint32_t flags) = 0;
    virtual TTaskResult GetTaskFlags(std::uint32_t &flags) = 0;
    /// Milliseconds; any value is taken, UnlimitedRunTime never ends a run.
    virtual TTaskResult SetMaxRunTime(std::uint32_t milliseconds) = 0;
    virtual TTaskResult GetMaxRunTime(std::uint32_t &milliseconds) = 0;
};

/// A job's file.
class IPersistFile : public virtual ITaskObject
{
public:
    static constexpr TGuid Iid{0x0000010B, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

    virtual TTaskResult GetClassID(TGuid &classID) = 0;
    /// Ok when something was changed since the last save, False when not.
    virtual TTaskResult IsDirty() = 0;
    virtual TTaskResult Load(const char16_t *file, std::uint32_t mode) = 0;
    /// Writes the job. A null `file` is its own one; another that exists already is refused with FileExists.
    virtual TTaskResult Save(const char16_t *file, bool remember) = 0;
    virtual TTaskResult SaveCompleted(const char16_t *file) = 0;
    /// The full path, also before the first save.
    virtual TTaskResult GetCurFile(char16_t *&file) = 0;
};

/// A page of a job's property sheet, for ITaskService::ShowSheet alone: it is opaque to all but the
/// service that made it.
class ITaskPage
{
public:
    virtual ~ITaskPage() = default;
};

/// Where the pages of a job's property sheet are had from.
class IProvideTaskPage : public virtual ITaskObject
{
public:
    static constexpr TGuid Iid{0x4086658A, 0xCBBB, 0x11CF, {0xB6, 0x04, 0x00, 0xC0, 0x4F, 0xD8, 0xD5, 0x65}};

    /// With `persistChanges` the page saves the job when it is applied. NotFileBasedStorage for a job that
    /// was never saved.
    virtual TTaskResult GetPage(TASKPAGE type, bool persistChanges, std::shared_ptr<ITaskPage> &page) = 0;
};

/// The names of the jobs, each with its ".job", in the order in which the service gives them.
class IEnumWorkItems : public virtual ITaskObject
{
public:
    static constexpr TGuid Iid{0x148BD528, 0xA2AB, 0x11CE, {0xB1, 0x1F, 0x00, 0xAA, 0x00, 0x53, 0x05, 0x03}};

    /// Up to `count` names: `*names` receives an array of them; array and names are blocks of their own.
    /// Ok for as many as wanted, False for fewer (no array for none). InvalidArgument for a count of 0, for
    /// no `names`, and for no `fetched` with a count above 1.
    virtual TTaskResult Next(std::uint32_t count, char16_t ***names, std::uint32_t *fetched) = 0;
    /// False when the end was met.
    virtual TTaskResult Skip(std::uint32_t count) = 0;
    virtual TTaskResult Reset() = 0;
    virtual TTaskResult Clone(std::shared_ptr<IEnumWorkItems> &copy) = 0;
};

/// The scheduler: the jobs of one computer by their names, with or without ".job".
class ITaskScheduler : public virtual ITaskObject
{
public:
    static constexpr TGuid Iid{0x148BD527, 0xA2AB, 0x11CE, {0xB1, 0x1F, 0x00, 0xAA, 0x00, 0x53, 0x05, 0x03}};

    /// A name with or without two leading backslashes; null for this computer. An unknown one is BadNetPath,
    /// and the old one stays.
    virtual TTaskResult SetTargetComputer(const char16_t *computer) = 0;
    virtual TTaskResult GetTargetComputer(char16_t *&computer) = 0;
    virtual TTaskResult Enum(std::shared_ptr<IEnumWorkItems> &names) = 0;
    /// Opens a job; FileNotFound when there is none of that name.
    virtual TTaskResult Activate(const char16_t *name, const TGuid &iid,
                                 std::shared_ptr<ITaskObject> &object) = 0;
    virtual TTaskResult Delete(const char16_t *name) = 0;
    /// A new job, which is in no file before it is saved. `clsid` is ClsidTask, `iid` that of ITask.
    virtual TTaskResult NewWorkItem(const char16_t *name, const TGuid &clsid, const TGuid &iid,
                                    std::shared_ptr<ITaskObject> &object) = 0;
    /// Saves a job under a name of its own; FileExists when there is one already.
    virtual TTaskResult AddWorkItem(const char16_t *name,
                                    const std::shared_ptr<IScheduledWorkItem> &item) = 0;
    virtual TTaskResult IsOfType(const char16_t *name, const TGuid &iid) = 0;
};

} // namespace Zelmar01
