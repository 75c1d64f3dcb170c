#pragma once

#include <Zelmar01/tasks/service/Calendar.h>
#include <Zelmar01/tasks/service/TaskResults.h>

#include <filesystem>
#include <optional>
#include <string>

namespace Zelmar01 {

/// What a runner is asked to do.
struct TRunRequest
{
    std::filesystem::path Folder;
    std::u16string File;
    TSeconds Now = 0;              ///< the instant that the run begins at
    std::optional<TSeconds> Start; ///< the instant at which the job was due; none for a start on request
};

/// What a runner reports as soon as the program was started.
struct TRunnerReport
{
    TTaskResult Request = TaskResult::Unexpected; ///< whether the start was recorded
    TTaskResult Start = TaskResult::Ok;           ///< what kept the program from starting
};

/// The file descriptor of a runner on which it reports.
inline constexpr int RunnerReportFile = 3;

/// Starts a runner: a process of its own session, which outlives this one and has nothing of it open. Waits
/// for its report.
TRunnerReport StartRunner(const std::filesystem::path &runner, const TRunRequest &request);

/// What the program zelmar01-job-runner does with its arguments, and its exit code.
int RunnerMain(int argc, char **argv);

} // namespace Zelmar01
