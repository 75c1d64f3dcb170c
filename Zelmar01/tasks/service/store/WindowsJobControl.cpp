#include <Zelmar01/tasks/service/store/JobControl.h>

namespace Zelmar01 {

std::filesystem::path FindJobRunner(const std::filesystem::path &runner)
{
    return runner;
}

TTaskResult StartJob(const TJobFolder &, std::u16string_view, TSeconds, const std::filesystem::path &)
{
    return TaskResult::NotSupported;
}

TTaskResult TerminateJob(const TJobFolder &, std::u16string_view)
{
    return TaskResult::NotSupported;
}

bool JobIsRunning(const TJobFolder &, std::u16string_view, const TJob &job)
{
    return job.Status == TaskResult::TaskRunning;
}

void ForgetRuns(const TJobFolder &, std::u16string_view) {}

} // namespace Zelmar01
