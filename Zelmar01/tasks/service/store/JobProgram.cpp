#include <Zelmar01/tasks/service/store/JobProgram.h>

#include <Zelmar01/tasks/service/Utf16.h>
#include <Zelmar01/tasks/service/store/CommandLine.h>
#include <Zelmar01/tasks/service/store/JobSystem.h>
#include <Zelmar01/tasks/service/store/PosixResult.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <string>
#include <vector>

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>
#ifdef __linux__
#include <sys/prctl.h>
#endif

namespace Zelmar01 {

namespace {

constexpr auto checkEvery = std::chrono::seconds(2);

std::string textOf(const TJobText &text)
{
    return text ? Utf8FromUtf16(*text) : std::string();
}

sigset_t awaitedSignals()
{
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGCHLD, SIGTERM, SIGINT, SIGHUP})
        sigaddset(&signals, signal);
    return signals;
}

int nicenessOf(std::uint32_t priority)
{
    switch (priority) {
    case PriorityClass::Idle:
        return 15;
    case PriorityClass::High:
        return -5;
    case PriorityClass::RealTime:
        return -10;
    default:
        return 0;
    }
}

std::string homeFolder()
{
    const char *const home = std::getenv("HOME");
    return home && *home ? home : "/";
}

// All that the new process needs, made ready before it exists.
struct TLaunch
{
    explicit TLaunch(const TJob &job, const std::filesystem::path &outputFile)
        : Output(outputFile), Folder(textOf(job.WorkingDirectory)), Niceness(nicenessOf(job.Priority))
    {
        if (Folder.empty())
            Folder = homeFolder();
        Arguments.push_back(textOf(job.ApplicationName));
        if (job.Parameters)
            for (const auto &argument : SplitParameters(*job.Parameters))
                Arguments.push_back(Utf8FromUtf16(argument));
        for (auto &argument : Arguments)
            Pointers.push_back(argument.data());
        Pointers.push_back(nullptr);
    }

    std::filesystem::path Output;
    std::string Folder;
    int Niceness;
    std::vector<std::string> Arguments;
    std::vector<char *> Pointers;
};

// In the new process; comes back when the program cannot be started.
TTaskResult become(const TLaunch &launch, pid_t runner)
{
    setsid();
#ifdef __linux__
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (getppid() != runner)
        _exit(1);
#else
    static_cast<void>(runner);
#endif
    const int output = open(launch.Output.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (output < 0)
        return ResultFromErrno(errno, TaskResult::WriteFault);
    dup2(output, STDOUT_FILENO);
    dup2(output, STDERR_FILENO);
    if (chdir(launch.Folder.c_str()) != 0)
        return errno == ENOENT ? TaskResult::PathNotFound : ResultFromErrno(errno);
    // A higher priority is for those who may.
    if (launch.Niceness != 0)
        static_cast<void>(nice(launch.Niceness));
    for (const int signal : {SIGCHLD, SIGTERM, SIGINT, SIGHUP, SIGPIPE, SIGXFSZ})
        ::signal(signal, SIG_DFL);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    execvp(launch.Pointers.front(), launch.Pointers.data());
    return ResultFromErrno(errno);
}

timespec specOf(std::chrono::nanoseconds time)
{
    const auto seconds = std::chrono::floor<std::chrono::seconds>(time);
    return {static_cast<time_t>(seconds.count()), static_cast<long>((time - seconds).count())};
}

} // namespace

TElapsedClock::time_point TElapsedClock::now()
{
#ifdef CLOCK_BOOTTIME
    timespec time = {};
    if (clock_gettime(CLOCK_BOOTTIME, &time) == 0)
        return time_point(std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec));
#endif
    return time_point(std::chrono::steady_clock::now().time_since_epoch());
}

void TJobProgram::BlockSignals()
{
    const auto signals = awaitedSignals();
    sigprocmask(SIG_BLOCK, &signals, nullptr);
}

TTaskResult TJobProgram::Start(const TJob &job, const std::filesystem::path &output)
{
    if (!job.ApplicationName || job.ApplicationName->empty())
        return TaskResult::InvalidTask;
#ifdef __linux__
    // What the program leaves behind comes to this process, so that it can be told when all is over.
    prctl(PR_SET_CHILD_SUBREAPER, 1);
#endif
    const TLaunch launch(job, output);
    std::array<int, 2> failure;
    if (pipe2(failure.data(), O_CLOEXEC) != 0)
        return ResultFromErrno(errno);
    const auto runner = getpid();
    m_child = fork();
    if (m_child == 0) {
        const auto result = become(launch, runner);
        [[maybe_unused]] const auto written = write(failure[1], &result, sizeof result);
        _exit(127);
    }
    const int error = m_child < 0 ? errno : 0;
    close(failure[1]);
    auto result = m_child < 0 ? ResultFromErrno(error) : TaskResult::Ok;
    // The pipe ends with the exec, unless there was a failure.
    while (m_child > 0 && read(failure[0], &result, sizeof result) < 0 && errno == EINTR) {
    }
    close(failure[0]);
    if (Failed(result) && m_child > 0)
        waitpid(m_child, nullptr, 0);
    return result;
}

TJobProgram::TReason TJobProgram::Wait(std::optional<TClock::time_point> deadline,
                                       std::chrono::milliseconds grace, const std::function<bool()> &mayGoOn)
{
    const auto signals = awaitedSignals();
    TReason reason = Nothing;
    std::optional<TClock::time_point> killAt;
    const auto end = [&](TReason why) {
        if (reason != Nothing)
            return;
        reason = why;
        killAt = TClock::now() + grace;
        kill(-m_child, SIGTERM);
    };
    auto nextCheck = TClock::now() + checkEvery;
    for (reap(); !m_childIsOver || (reason != Nothing && !isOver()); reap()) {
        const auto now = TClock::now();
        if (deadline && now >= *deadline)
            end(Limit);
        if (now >= nextCheck) {
            nextCheck = now + checkEvery;
            if (!mayGoOn())
                end(Power);
        }
        if (killAt && now >= *killAt) {
            kill(-m_child, SIGKILL);
            killAt = now + std::chrono::seconds(1);
        }
        // The timeout stands still while the computer is suspended, so it is never a long one.
        auto wakeAt = std::min(killAt.value_or(nextCheck), nextCheck);
        if (deadline && reason == Nothing)
            wakeAt = std::min(wakeAt, *deadline);
        const auto timeout = specOf(std::max(wakeAt - now, TClock::duration::zero()));
        const int signal = sigtimedwait(&signals, nullptr, &timeout);
        if (signal > 0 && signal != SIGCHLD)
            end(Request);
    }
    return reason;
}

void TJobProgram::reap()
{
    int status = 0;
    for (pid_t child = 0; (child = waitpid(-1, &status, WNOHANG)) > 0;) {
        if (child != m_child)
            continue;
        m_childIsOver = true;
        m_exitCode =
            static_cast<std::uint32_t>(WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status));
    }
}

bool TJobProgram::isOver() const
{
    return kill(-m_child, 0) != 0;
}

} // namespace Zelmar01
