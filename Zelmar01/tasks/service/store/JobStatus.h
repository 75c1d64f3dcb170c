#pragma once

#include <Zelmar01/tasks/service/TimeZone.h>
#include <Zelmar01/tasks/service/store/JobFile.h>

namespace Zelmar01 {

/// How things are with a saved job, which runs now or not: TaskRunning, TaskDisabled, TaskNoValidTriggers
/// without an enabled trigger, TaskNoMoreRuns, TaskHasNotRun, TaskTerminated when the last run was ended by
/// force, else TaskReady, the first that holds.
TTaskResult JobStatus(const TJob &job, bool isRunning, TSeconds now, const TTimeZone &zone);

bool HasRun(const TJob &job);

/// What ITask::GetExitCode answers: TaskHasNotRun, what kept the last start from happening, or Ok.
TTaskResult ExitResult(const TJob &job);

/// Takes over what the runs of a job left in its file, which a host that saves the job does not know.
void TakeRunRecord(TJob &job, const TJob &fromFile);

/// Makes a job one that does not run, as the copy of a running one.
void SetNotRunning(TJob &job);

/// The same for a run that nobody saw the end of.
void SetRunLost(TJob &job);

/// The exit code of such a run.
inline constexpr std::uint32_t LostRunExitCode = 0xFFFFFFFF;

/// Makes the status in a job that is about to be saved fit its triggers: TaskNotScheduled stands in the file
/// of a job without any, and in no other.
void SettleStatus(TJob &job);

} // namespace Zelmar01
