#pragma once

#include <Zelmar01/tasks/service/TaskService.h>
#include <Zelmar01/tasks/service/TimeZone.h>

#include <filesystem>
#include <functional>
#include <memory>

namespace Zelmar01 {

struct TStoreContext;

/// What a job store goes by.
struct TJobStoreOptions
{
    std::filesystem::path Folder;    ///< of the job files; empty for DefaultJobFolder() (JobFolder.h)
    std::filesystem::path Runner;    ///< the program that runs a job; empty for that of FindJobRunner()
    std::function<TSeconds()> Now;   ///< the instant that is now; empty for the system's clock
    std::function<TTimeZone()> Zone; ///< the zone of local times; empty for the system's
};

/// The task service over a folder of ".job" files, one a job, in the format of the system's own service.
/// Several processes may work with a folder at a time.
///
/// What it answers is what the service answers; docs/tasks.md says what was decided where nobody knows. Jobs
/// start by themselves only where something calls RunTick() (Tick.h) every minute, which "zelmar01-jobs
/// install" sees to.
class TJobStore : public ITaskService
{
public:
    explicit TJobStore(TJobStoreOptions options = {});

    const std::filesystem::path &Folder() const;

    /// There is nothing to be started.
    TServiceStart StartScheduler() override;
    /// Makes the folder where it is missing.
    TTaskResult CreateScheduler(std::shared_ptr<ITaskScheduler> &scheduler) override;
    ITaskAllocator &Allocator() override;
    /// Leaves it to what SetJobSheet() (JobPage.h) has set; below 0 without it.
    std::intptr_t ShowSheet(const TPropertySheet &sheet) override;
    std::string DescribeResult(TTaskResult result) override;
    /// Of ServiceNotInstalled, which says here that a job has no runner: which one is missing.
    TSystemCause ExplainResult(TTaskResult result) override;

private:
    std::shared_ptr<TStoreContext> m_context;
};

} // namespace Zelmar01
