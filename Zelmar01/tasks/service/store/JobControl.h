#pragma once

#include <Zelmar01/tasks/service/Calendar.h>
#include <Zelmar01/tasks/service/store/JobFolder.h>

#include <filesystem>
#include <string_view>

namespace Zelmar01 {

/// Running the jobs of a folder. It is there on POSIX; on Windows, where the system's own service does it, a
/// start and an end are refused with NotSupported.

/// The program that runs one job: `runner` when it is not empty, else that of the variable
/// ZELMAR01_JOB_RUNNER, else zelmar01-job-runner beside this program or on the path. Empty when there is
/// none.
std::filesystem::path FindJobRunner(const std::filesystem::path &runner);

/// Has a job started at the instant `now`, by a runner of its own. Ok when the start was recorded in its
/// file; why the program did not start then, if it did not, is there. AlreadyRunning when it runs,
/// ServiceNotInstalled without a runner.
TTaskResult StartJob(const TJobFolder &folder, std::u16string_view file, TSeconds now,
                     const std::filesystem::path &runner);

/// Asks the runner of a job to end it. TaskNotRunning when it does not run.
TTaskResult TerminateJob(const TJobFolder &folder, std::u16string_view file);

/// Whether a job runs. What its file says is believed only where nobody can tell.
bool JobIsRunning(const TJobFolder &folder, std::u16string_view file, const TJob &job);

/// Removes what is known of the runs of a job that was deleted. The caller holds the folder's lock.
void ForgetRuns(const TJobFolder &folder, std::u16string_view file);

} // namespace Zelmar01
