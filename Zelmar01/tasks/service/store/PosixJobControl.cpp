#include <Zelmar01/tasks/service/store/JobControl.h>

#include <Zelmar01/tasks/service/store/PosixResult.h>
#include <Zelmar01/tasks/service/store/RunFiles.h>
#include <Zelmar01/tasks/service/store/RunnerProcess.h>

#include <cerrno>
#include <cstdlib>

#include <signal.h>
#include <unistd.h>

namespace Zelmar01 {

std::filesystem::path FindJobRunner(const std::filesystem::path &runner)
{
    static constexpr auto name = u"zelmar01-job-runner";
    if (!runner.empty())
        return runner;
    if (const char *const chosen = std::getenv("ZELMAR01_JOB_RUNNER"); chosen && *chosen)
        return chosen;
    std::error_code error;
    auto beside = std::filesystem::read_symlink("/proc/self/exe", error).replace_filename(name);
    if (!error && access(beside.c_str(), X_OK) == 0)
        return beside;
    return SearchProgram(name).value_or(std::filesystem::path());
}

TTaskResult StartJob(const TJobFolder &folder, std::u16string_view file, TSeconds now,
                     const std::filesystem::path &runner)
{
    const auto program = FindJobRunner(runner);
    if (program.empty())
        return TaskResult::ServiceNotInstalled;
    return StartRunner(program, {folder.Path(), std::u16string(file), now, std::nullopt}).Request;
}

TTaskResult TerminateJob(const TJobFolder &folder, std::u16string_view file)
{
    // A runner that is just writing down how its job ended has done so when the lock is free.
    const TFolderLock lock(folder);
    if (Failed(lock.Result()))
        return lock.Result();
    const TRunFiles run(folder, file);
    const auto runner = run.Runner();
    if (!runner || !run.IsRunning())
        return TaskResult::TaskNotRunning;
    if (*runner <= 0)
        return TaskResult::NotSupported; // it is on another computer that shares the folder
    if (kill(*runner, SIGTERM) == 0)
        return TaskResult::Ok;
    return errno == ESRCH ? TaskResult::TaskNotRunning : ResultFromErrno(errno);
}

bool JobIsRunning(const TJobFolder &folder, std::u16string_view file, const TJob &job)
{
    return job.Status == TaskResult::TaskRunning && TRunFiles(folder, file).Runner();
}

void ForgetRuns(const TJobFolder &folder, std::u16string_view file)
{
    TRunFiles(folder, file).Forget();
}

} // namespace Zelmar01
