#include <Zelmar01/tasks/service/store/JobStatus.h>

#include <Zelmar01/tasks/service/RunTimes.h>

namespace Zelmar01 {

namespace {

TTaskResult statusAtRest(const TJob &job)
{
    return HasRun(job) ? TaskResult::TaskReady : TaskResult::TaskHasNotRun;
}

} // namespace

TTaskResult JobStatus(const TJob &job, bool isRunning, TSeconds now, const TTimeZone &zone)
{
    if (isRunning)
        return TaskResult::TaskRunning;
    const TRunTimes times(job.Triggers, job.Flags);
    SYSTEMTIME next;
    const auto result = NextRunTime(times, now, zone, next);
    if (result != TaskResult::Ok && result != TaskResult::EventTrigger)
        return result;
    if (!HasRun(job))
        return TaskResult::TaskHasNotRun;
    return job.Status == TaskResult::TaskTerminated ? TaskResult::TaskTerminated : TaskResult::TaskReady;
}

bool HasRun(const TJob &job)
{
    return job.LastRun != SYSTEMTIME{};
}

TTaskResult ExitResult(const TJob &job)
{
    if (!HasRun(job))
        return TaskResult::TaskHasNotRun;
    return job.Reserved && Failed(job.Reserved->StartError) ? job.Reserved->StartError : TaskResult::Ok;
}

void TakeRunRecord(TJob &job, const TJob &fromFile)
{
    job.ExitCode = fromFile.ExitCode;
    job.Status = fromFile.Status;
    job.LastRun = fromFile.LastRun;
    job.RunningInstances = fromFile.RunningInstances;
    if (fromFile.Reserved) {
        if (!job.Reserved)
            job.Reserved.emplace();
        job.Reserved->StartError = fromFile.Reserved->StartError;
    }
}

void SetNotRunning(TJob &job)
{
    job.RunningInstances = 0;
    if (job.Status == TaskResult::TaskRunning)
        job.Status = statusAtRest(job);
}

void SetRunLost(TJob &job)
{
    job.RunningInstances = 0;
    job.Status = TaskResult::TaskTerminated;
    job.ExitCode = LostRunExitCode;
}

void SettleStatus(TJob &job)
{
    if (job.Status == TaskResult::TaskRunning)
        return;
    if (job.Triggers.empty())
        job.Status = TaskResult::TaskNotScheduled;
    else if (job.Status == TaskResult::TaskNotScheduled)
        job.Status = statusAtRest(job);
}

} // namespace Zelmar01
