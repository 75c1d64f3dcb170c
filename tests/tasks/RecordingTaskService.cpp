#include "RecordingTaskService.h"

#include <Zelmar01/tasks/service/Utf16.h>

#include <algorithm>
#include <cstring>

using namespace Zelmar01;

namespace {

using TService = std::shared_ptr<RecordingTaskService>;

std::string said(const char16_t *text)
{
    return text ? Utf8FromUtf16(text) : "null";
}

class RecordingTrigger : public ITaskTrigger
{
public:
    RecordingTrigger(TService service, std::size_t index) : m_service(std::move(service)), m_index(index) {}

    TTaskResult QueryInterface(const TGuid &, std::shared_ptr<ITaskObject> &) override
    {
        return TaskResult::NoInterface;
    }
    TTaskResult SetTrigger(const TASK_TRIGGER *trigger) override
    {
        m_service->Triggers[m_index] = *trigger;
        return m_service->call("SetTrigger", std::to_string(m_index));
    }
    TTaskResult GetTrigger(TASK_TRIGGER &trigger) override
    {
        trigger = m_service->Triggers[m_index];
        return m_service->call("GetTrigger");
    }
    TTaskResult GetTriggerString(char16_t *&text) override
    {
        return m_service->handOut("GetTriggerString", u"trigger " + Utf16FromUtf8(std::to_string(m_index)),
                                  text);
    }

private:
    TService m_service;
    std::size_t m_index;
};

class RecordingTask : public ITask,
                      public IPersistFile,
                      public IProvideTaskPage,
                      public std::enable_shared_from_this<RecordingTask>
{
public:
    explicit RecordingTask(TService service) : m_service(std::move(service)) {}

    TTaskResult QueryInterface(const TGuid &iid, std::shared_ptr<ITaskObject> &object) override
    {
        object = std::static_pointer_cast<ITask>(shared_from_this());
        const bool isPages = iid == IProvideTaskPage::Iid;
        return m_service->call("QueryInterface", isPages ? "IProvideTaskPage" : "IPersistFile");
    }

    TTaskResult CreateTrigger(std::uint16_t &index, std::shared_ptr<ITaskTrigger> &trigger) override
    {
        index = static_cast<std::uint16_t>(m_service->Triggers.size());
        m_service->Triggers.emplace_back();
        trigger = std::make_shared<RecordingTrigger>(m_service, index);
        return m_service->call("CreateTrigger");
    }
    TTaskResult DeleteTrigger(std::uint16_t index) override
    {
        const auto result = m_service->call("DeleteTrigger", std::to_string(index));
        if (Succeeded(result))
            m_service->Triggers.erase(m_service->Triggers.begin() + index);
        return result;
    }
    TTaskResult GetTriggerCount(std::uint16_t &count) override
    {
        count = static_cast<std::uint16_t>(m_service->Triggers.size());
        return m_service->call("GetTriggerCount");
    }
    TTaskResult GetTrigger(std::uint16_t index, std::shared_ptr<ITaskTrigger> &trigger) override
    {
        trigger = std::make_shared<RecordingTrigger>(m_service, index);
        return m_service->call("GetTrigger", std::to_string(index));
    }
    TTaskResult GetTriggerString(std::uint16_t, char16_t *&) override { return TaskResult::Unexpected; }

    TTaskResult GetRunTimes(const SYSTEMTIME &begin, const SYSTEMTIME *end, std::uint16_t &count,
                            SYSTEMTIME *&times) override
    {
        const auto result = m_service->call("GetRunTimes", "from " + std::to_string(begin.wYear) + " to " +
                                                               (end ? std::to_string(end->wYear) : "null") +
                                                               " " + std::to_string(count));
        const auto &found = m_service->RunTimes;
        count = static_cast<std::uint16_t>(found.size());
        if (Failed(result) || found.empty())
            return result;
        times = static_cast<SYSTEMTIME *>(m_service->Blocks.Alloc(found.size() * sizeof(SYSTEMTIME)));
        std::copy(found.begin(), found.end(), times);
        return result;
    }
    TTaskResult GetNextRunTime(SYSTEMTIME &) override { return m_service->call("GetNextRunTime"); }
    TTaskResult SetIdleWait(std::uint16_t idle, std::uint16_t deadline) override
    {
        return m_service->call("SetIdleWait", std::to_string(idle) + " " + std::to_string(deadline));
    }
    TTaskResult GetIdleWait(std::uint16_t &, std::uint16_t &) override { return call("GetIdleWait"); }
    TTaskResult Run() override { return m_service->call("Run"); }
    TTaskResult Terminate() override { return m_service->call("Terminate"); }
    TTaskResult EditWorkItem(std::uintptr_t parent, std::uint32_t reserved) override
    {
        return m_service->call("EditWorkItem", std::to_string(parent) + " " + std::to_string(reserved));
    }
    TTaskResult GetMostRecentRunTime(SYSTEMTIME &) override { return call("GetMostRecentRunTime"); }
    TTaskResult GetStatus(TTaskResult &status) override
    {
        return get("GetStatus", status, m_service->Status);
    }
    TTaskResult GetExitCode(std::uint32_t &) override { return m_service->call("GetExitCode"); }
    TTaskResult SetComment(const char16_t *text) override { return set("SetComment", text); }
    TTaskResult GetComment(char16_t *&text) override { return get("GetComment", text); }
    TTaskResult SetCreator(const char16_t *text) override { return set("SetCreator", text); }
    TTaskResult GetCreator(char16_t *&text) override { return get("GetCreator", text); }
    TTaskResult SetWorkItemData(std::uint16_t size, const std::uint8_t *data) override
    {
        m_service->Data.assign(reinterpret_cast<const char *>(data), size);
        return m_service->call("SetWorkItemData", std::to_string(size));
    }
    TTaskResult GetWorkItemData(std::uint16_t &size, std::uint8_t *&data) override
    {
        size = static_cast<std::uint16_t>(m_service->Data.size());
        if (size > 0) {
            data = static_cast<std::uint8_t *>(m_service->Blocks.Alloc(size));
            std::memcpy(data, m_service->Data.data(), size);
        }
        return m_service->call("GetWorkItemData");
    }
    TTaskResult SetErrorRetryCount(std::uint16_t) override { return TaskResult::NotImplemented; }
    TTaskResult GetErrorRetryCount(std::uint16_t &) override { return TaskResult::NotImplemented; }
    TTaskResult SetErrorRetryInterval(std::uint16_t) override { return TaskResult::NotImplemented; }
    TTaskResult GetErrorRetryInterval(std::uint16_t &) override { return TaskResult::NotImplemented; }
    TTaskResult SetFlags(std::uint32_t flags) override { return set("SetFlags", flags); }
    TTaskResult GetFlags(std::uint32_t &flags) override { return get("GetFlags", flags, m_service->Flags); }
    TTaskResult SetAccountInformation(const char16_t *account, const char16_t *password) override
    {
        return m_service->call("SetAccountInformation", said(account) + " " + said(password));
    }
    TTaskResult GetAccountInformation(char16_t *&text) override { return get("GetAccountInformation", text); }

    TTaskResult SetApplicationName(const char16_t *text) override { return set("SetApplicationName", text); }
    TTaskResult GetApplicationName(char16_t *&text) override { return get("GetApplicationName", text); }
    TTaskResult SetParameters(const char16_t *text) override { return set("SetParameters", text); }
    TTaskResult GetParameters(char16_t *&text) override { return get("GetParameters", text); }
    TTaskResult SetWorkingDirectory(const char16_t *text) override
    {
        return set("SetWorkingDirectory", text);
    }
    TTaskResult GetWorkingDirectory(char16_t *&text) override { return get("GetWorkingDirectory", text); }
    TTaskResult SetPriority(std::uint32_t priority) override { return set("SetPriority", priority); }
    TTaskResult GetPriority(std::uint32_t &priority) override
    {
        return get("GetPriority", priority, m_service->Priority);
    }
    TTaskResult SetTaskFlags(std::uint32_t) override { return TaskResult::Unexpected; }
    TTaskResult GetTaskFlags(std::uint32_t &) override { return TaskResult::Unexpected; }
    TTaskResult SetMaxRunTime(std::uint32_t limit) override { return set("SetMaxRunTime", limit); }
    TTaskResult GetMaxRunTime(std::uint32_t &) override { return m_service->call("GetMaxRunTime"); }

    TTaskResult GetClassID(TGuid &) override { return TaskResult::Unexpected; }
    TTaskResult IsDirty() override { return m_service->call("IsDirty"); }
    TTaskResult Load(const char16_t *, std::uint32_t) override { return TaskResult::Unexpected; }
    TTaskResult Save(const char16_t *file, bool remember) override
    {
        return m_service->call("Save", said(file) + (remember ? " remember" : ""));
    }
    TTaskResult SaveCompleted(const char16_t *) override { return TaskResult::Unexpected; }
    TTaskResult GetCurFile(char16_t *&text) override { return get("GetCurFile", text); }

    TTaskResult GetPage(TASKPAGE type, bool persistChanges, std::shared_ptr<ITaskPage> &page) override
    {
        const auto result =
            m_service->call("GetPage", std::to_string(type) + (persistChanges ? " persist" : ""));
        if (Succeeded(result))
            page = std::make_shared<ITaskPage>();
        return result;
    }

private:
    TTaskResult call(const char *name) { return m_service->call(name); }
    TTaskResult set(const char *name, const char16_t *text) { return m_service->call(name, said(text)); }
    TTaskResult set(const char *name, std::uint32_t value)
    {
        return m_service->call(name, std::to_string(value));
    }
    // A text is the name of the call.
    TTaskResult get(const char *name, char16_t *&text)
    {
        return m_service->handOut(name, Utf16FromUtf8(name), text);
    }
    template<class T>
    TTaskResult get(const char *name, T &value, T known)
    {
        value = known;
        return m_service->call(name);
    }

    TService m_service;
};

class RecordingNames : public IEnumWorkItems
{
public:
    explicit RecordingNames(TService service) : m_service(std::move(service)) {}

    TTaskResult QueryInterface(const TGuid &, std::shared_ptr<ITaskObject> &) override
    {
        return TaskResult::NoInterface;
    }
    TTaskResult Next(std::uint32_t count, char16_t ***names, std::uint32_t *fetched) override
    {
        const auto result = m_service->call("Next", std::to_string(count));
        *fetched = 0;
        if (result != TaskResult::Ok || m_next >= m_service->Names.size())
            return result == TaskResult::Ok ? TaskResult::False : result;
        *names = static_cast<char16_t **>(m_service->Blocks.Alloc(sizeof(char16_t *)));
        **names = AllocText(m_service->Blocks, m_service->Names[m_next++]);
        *fetched = 1;
        return result;
    }
    TTaskResult Skip(std::uint32_t) override { return TaskResult::Unexpected; }
    TTaskResult Reset() override { return TaskResult::Unexpected; }
    TTaskResult Clone(std::shared_ptr<IEnumWorkItems> &) override { return TaskResult::Unexpected; }

private:
    TService m_service;
    std::size_t m_next = 0;
};

class RecordingScheduler : public ITaskScheduler
{
public:
    explicit RecordingScheduler(TService service) : m_service(std::move(service)) {}

    TTaskResult QueryInterface(const TGuid &, std::shared_ptr<ITaskObject> &) override
    {
        return TaskResult::NoInterface;
    }
    TTaskResult SetTargetComputer(const char16_t *computer) override
    {
        return m_service->call("SetTargetComputer", said(computer));
    }
    TTaskResult GetTargetComputer(char16_t *&computer) override
    {
        return m_service->handOut("GetTargetComputer", u"\\\\CAISSE", computer);
    }
    TTaskResult Enum(std::shared_ptr<IEnumWorkItems> &names) override
    {
        names = std::make_shared<RecordingNames>(m_service);
        return m_service->call("Enum");
    }
    TTaskResult Activate(const char16_t *name, const TGuid &, std::shared_ptr<ITaskObject> &object) override
    {
        const auto result = m_service->call("Activate", said(name));
        if (Failed(result))
            return result;
        if (std::find(m_service->Names.begin(), m_service->Names.end(), name) == m_service->Names.end())
            return TaskResult::FileNotFound;
        object = std::static_pointer_cast<ITask>(std::make_shared<RecordingTask>(m_service));
        return result;
    }
    TTaskResult Delete(const char16_t *name) override { return m_service->call("Delete", said(name)); }
    TTaskResult NewWorkItem(const char16_t *name, const TGuid &clsid, const TGuid &iid,
                            std::shared_ptr<ITaskObject> &object) override
    {
        if (clsid != ClsidTask || iid != ITask::Iid)
            return TaskResult::NoInterface;
        object = std::static_pointer_cast<ITask>(std::make_shared<RecordingTask>(m_service));
        return m_service->call("NewWorkItem", said(name));
    }
    TTaskResult AddWorkItem(const char16_t *, const std::shared_ptr<IScheduledWorkItem> &) override
    {
        return TaskResult::Unexpected;
    }
    TTaskResult IsOfType(const char16_t *, const TGuid &) override { return TaskResult::Unexpected; }

private:
    TService m_service;
};

} // namespace

TTaskResult RecordingTaskService::call(const std::string &name, const std::string &arguments)
{
    m_calls += (m_calls.empty() ? "" : ", ") + name + (arguments.empty() ? "" : " ") + arguments;
    const auto failure = Fails.find(name);
    return failure == Fails.end() ? TaskResult::Ok : failure->second;
}

TTaskResult RecordingTaskService::handOut(const std::string &name, std::u16string_view text, char16_t *&block)
{
    const auto result = call(name);
    if (Succeeded(result))
        block = AllocText(Blocks, text);
    return result;
}

TServiceStart RecordingTaskService::StartScheduler()
{
    call("StartScheduler");
    return Start;
}

TTaskResult RecordingTaskService::CreateScheduler(std::shared_ptr<ITaskScheduler> &scheduler)
{
    const auto result = call("CreateScheduler");
    if (Succeeded(result))
        scheduler = std::make_shared<RecordingScheduler>(shared_from_this());
    return result;
}

std::intptr_t RecordingTaskService::ShowSheet(const TPropertySheet &sheet)
{
    call("ShowSheet");
    Sheet = sheet;
    return WhileSheetIsOpen();
}

std::string RecordingTaskService::DescribeResult(TTaskResult result)
{
    return "mots du service : " + ResultName(result);
}
