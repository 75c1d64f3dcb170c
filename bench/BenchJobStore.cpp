#include "Bench.h"

#include <Zelmar01/tasks/TaskScheduler.h>
#include <Zelmar01/tasks/service/store/JobFile.h>
#include <Zelmar01/tasks/service/store/JobFolder.h>
#include <Zelmar01/tasks/service/store/JobStore.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

using namespace Zelmar01;

namespace {

constexpr std::size_t largest = 10'000;

// Keeps the compiler from leaving out work whose result nobody looks at.
volatile std::size_t sink;

// A folder of jobs as an office might have them: a program with parameters, and one trigger or two.
class Jobs
{
public:
    explicit Jobs(std::size_t count)
    {
        std::string folder = (std::filesystem::temp_directory_path() / "zelmar01-bench-XXXXXX").string();
        Folder = mkdtemp(folder.data());
        for (int i = 0; i < static_cast<int>(count); ++i) {
            auto job = NewJob();
            job.ApplicationName = u"/opt/boutique/bin/export";
            job.Parameters = u"--boutique 12 --vers \"Siège social\"";
            job.Comment = u"Export des ventes du jour";
            job.Status = TaskResult::TaskHasNotRun;
            job.Triggers.assign(i % 5 == 0 ? 2 : 1, trigger(i));
            std::string bytes;
            WriteJobFile(job, bytes);
            std::ofstream(Folder / ("Export " + std::to_string(i) + ".job"), std::ios::binary) << bytes;
        }
    }
    ~Jobs() { std::filesystem::remove_all(Folder); }
    Jobs(const Jobs &) = delete;
    Jobs &operator=(const Jobs &) = delete;

    std::filesystem::path Folder;

private:
    static TASK_TRIGGER trigger(int i)
    {
        TASK_TRIGGER trigger;
        trigger.wBeginYear = 2027;
        trigger.wBeginMonth = static_cast<std::uint16_t>(1 + i % 12);
        trigger.wBeginDay = static_cast<std::uint16_t>(1 + i % 28);
        trigger.wStartHour = static_cast<std::uint16_t>(i % 24);
        trigger.TriggerType = static_cast<TASK_TRIGGER_TYPE>(1 + i % 4);
        switch (trigger.TriggerType) {
        case TASK_TIME_TRIGGER_DAILY:
            trigger.Type.Daily = {1};
            break;
        case TASK_TIME_TRIGGER_WEEKLY:
            trigger.Type.Weekly = {1, 0x3E};
            break;
        case TASK_TIME_TRIGGER_MONTHLYDATE:
            trigger.Type.MonthlyDate = {1U << (i % 31), 0xFFF};
            break;
        default:
            trigger.Type.MonthlyDOW = {5, 0x20, 0xFFF};
        }
        return trigger;
    }
};

std::vector<std::string> readNames(const std::filesystem::path &folder)
{
    std::vector<std::string> names;
    const std::unique_ptr<DIR, int (*)(DIR *)> listing(opendir(folder.c_str()), closedir);
    while (const auto *const entry = readdir(listing.get()))
        names.emplace_back(entry->d_name);
    return names;
}

void readFiles(const std::filesystem::path &folder)
{
    std::size_t total = 0;
    char buffer[4096];
    for (const auto &name : readNames(folder)) {
        const int file = open((folder / name).c_str(), O_RDONLY | O_CLOEXEC);
        for (ssize_t length; (length = read(file, buffer, sizeof buffer)) > 0;)
            total += static_cast<std::size_t>(length);
        close(file);
    }
    sink = total;
}

class Listing
{
public:
    explicit Listing(const std::filesystem::path &folder) : m_store({folder, {}, {}, {}})
    {
        m_store.CreateScheduler(m_scheduler);
    }

    // One name at a time, as a list of jobs does.
    template<class Visit>
    void EachName(Visit visit)
    {
        std::shared_ptr<IEnumWorkItems> names;
        m_scheduler->Enum(names);
        char16_t **name = nullptr;
        while (names->Next(1, &name, nullptr) == TaskResult::Ok) {
            visit(name[0]);
            m_store.Allocator().Free(name[0]);
            m_store.Allocator().Free(name);
        }
    }

    void Names()
    {
        std::size_t total = 0;
        EachName([&](const char16_t *name) { total += std::u16string_view(name).size(); });
        sink = total;
    }

    void StatusOfEach()
    {
        std::size_t total = 0;
        EachName([&](const char16_t *name) {
            std::shared_ptr<ITaskObject> object;
            m_scheduler->Activate(name, ITask::Iid, object);
            auto &task = dynamic_cast<ITask &>(*object);
            TTaskResult status = 0;
            SYSTEMTIME next;
            task.GetStatus(status);
            task.GetNextRunTime(next);
            total += next.wDay + static_cast<std::size_t>(status);
        });
        sink = total;
    }

private:
    TJobStore m_store;
    std::shared_ptr<ITaskScheduler> m_scheduler;
};

} // namespace

int main()
{
    for (const std::size_t count : {std::size_t{100}, std::size_t{1'000}, largest}) {
        const Jobs jobs(count);
        Listing listing(jobs.Folder);
        TTaskScheduler scheduler(nullptr,
                                 std::make_shared<TJobStore>(TJobStoreOptions{jobs.Folder, {}, {}, {}}));
        const double target = count == largest ? 3 : 0;
        const auto names = [&] { sink = readNames(jobs.Folder).size(); };
        Row("Refresh, jobs", count)
            .Ours([&] { scheduler.Refresh(); })
            .Limit("the folder's names", names)
            .LimitTarget(target)
            .Print();
        Row("list without objects, jobs", count)
            .Ours([&] { listing.Names(); })
            .Limit("the folder's names", names)
            .Print();
        Row("status and next run of each, jobs", count)
            .Rounds(count == largest ? 7 : 31)
            .Ours([&] { listing.StatusOfEach(); })
            .Limit("read the files", [&] { readFiles(jobs.Folder); })
            .LimitTarget(target)
            .Print();
    }
}
