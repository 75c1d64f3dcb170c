// The system's own task service among those that the shared cases are run against, as Wine has it.
#include "WineTaskService.h"

#include <Zelmar01/tasks/service/WindowsTaskService.h>

#include <array>
#include <cstdlib>
#include <string>

#include <windows.h>

namespace {

using Zelmar01::TGuid;
using Zelmar01::TTaskResult;

// Wine refuses names that end in ".job", which Windows takes as well.
class NameWithoutEnding
{
public:
    explicit NameWithoutEnding(const char16_t *name) : m_isNull(!name), m_name(name ? name : u"")
    {
        const auto length = m_name.size();
        if (length > 4 &&
            _wcsicmp(reinterpret_cast<const wchar_t *>(m_name.c_str()) + length - 4, L".job") == 0)
            m_name.resize(length - 4);
    }

    operator const char16_t *() const { return m_isNull ? nullptr : m_name.c_str(); }

private:
    bool m_isNull;
    std::u16string m_name;
};

// The service reads a job that was changed on its own, and lets nobody else have the file meanwhile.
template<class TWork>
auto whenFree(TWork work)
{
    auto result = work();
    for (int i = 0; i < 500 && result == Zelmar01::TaskResult::SharingViolation; ++i) {
        Sleep(10);
        result = work();
    }
    return result;
}

class WineScheduler : public Zelmar01::ITaskScheduler
{
public:
    explicit WineScheduler(std::shared_ptr<ITaskScheduler> scheduler) : m_scheduler(std::move(scheduler)) {}

    TTaskResult QueryInterface(const TGuid &iid, std::shared_ptr<Zelmar01::ITaskObject> &object) override
    {
        return m_scheduler->QueryInterface(iid, object);
    }
    TTaskResult SetTargetComputer(const char16_t *computer) override
    {
        return m_scheduler->SetTargetComputer(computer);
    }
    TTaskResult GetTargetComputer(char16_t *&computer) override
    {
        return m_scheduler->GetTargetComputer(computer);
    }
    TTaskResult Enum(std::shared_ptr<Zelmar01::IEnumWorkItems> &names) override
    {
        return m_scheduler->Enum(names);
    }
    TTaskResult Activate(const char16_t *name, const TGuid &iid,
                         std::shared_ptr<Zelmar01::ITaskObject> &object) override
    {
        return whenFree([&] { return m_scheduler->Activate(NameWithoutEnding(name), iid, object); });
    }
    TTaskResult Delete(const char16_t *name) override
    {
        return whenFree([&] { return m_scheduler->Delete(NameWithoutEnding(name)); });
    }
    TTaskResult NewWorkItem(const char16_t *name, const TGuid &clsid, const TGuid &iid,
                            std::shared_ptr<Zelmar01::ITaskObject> &object) override
    {
        return m_scheduler->NewWorkItem(NameWithoutEnding(name), clsid, iid, object);
    }
    TTaskResult AddWorkItem(const char16_t *name,
                            const std::shared_ptr<Zelmar01::IScheduledWorkItem> &item) override
    {
        return m_scheduler->AddWorkItem(NameWithoutEnding(name), item);
    }
    TTaskResult IsOfType(const char16_t *name, const TGuid &iid) override
    {
        return m_scheduler->IsOfType(NameWithoutEnding(name), iid);
    }

private:
    std::shared_ptr<ITaskScheduler> m_scheduler;
};

class WineTaskService : public Zelmar01::WindowsTaskService
{
public:
    TTaskResult CreateScheduler(std::shared_ptr<Zelmar01::ITaskScheduler> &scheduler) override
    {
        std::shared_ptr<Zelmar01::ITaskScheduler> found;
        const auto result = WindowsTaskService::CreateScheduler(found);
        if (Zelmar01::Succeeded(result))
            scheduler = std::make_shared<WineScheduler>(std::move(found));
        return result;
    }
};

} // namespace

std::filesystem::path SystemJobFolder()
{
    std::array<wchar_t, MAX_PATH> windows{};
    GetWindowsDirectoryW(windows.data(), MAX_PATH);
    return std::filesystem::path(windows.data()) / "tasks";
}

bool IsPreparedMachine()
{
    return std::getenv("ZELMAR01_TEST_JOBS") != nullptr;
}

TServiceUnderTest MakeServiceUnderTest()
{
    TServiceUnderTest tested;
    if (!IsPreparedMachine())
        return tested;
    tested.Service = std::make_shared<WineTaskService>();
    tested.Folder = SystemJobFolder();
    tested.CanSetPriority = false;
    tested.MayMissARun = true;
    tested.Program = u"cmd.exe";
    tested.EndsWithSeven = u"/c exit 7";
    tested.StaysForAWhile = u"/c for /l %i in (1,1,100000000) do @rem";
    tested.TearDown = {nullptr, [folder = tested.Folder](std::nullptr_t) {
                           for (const auto &entry : std::filesystem::directory_iterator(folder))
                               if (entry.path().extension() == ".job")
                                   whenFree([&] {
                                       std::error_code error;
                                       std::filesystem::remove(entry.path(), error);
                                       return error ? Zelmar01::TaskResult::SharingViolation
                                                    : Zelmar01::TaskResult::Ok;
                                   });
                       }};
    return tested;
}
