#include <Zelmar01/tasks/service/store/RunnerProcess.h>

#include <Zelmar01/tasks/service/store/JobRunner.h>
#include <Zelmar01/tasks/service/store/JobSystem.h>
#include <Zelmar01/tasks/service/store/PosixResult.h>
#include <Zelmar01/tasks/service/store/TextNumbers.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <string_view>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Zelmar01 {

namespace {

// For a runner that hangs before it has recorded anything, on a network file system for one.
constexpr int reportPatience = 20'000; // milliseconds

constexpr std::string_view noStart = "-";

class TSpawnSettings
{
public:
    explicit TSpawnSettings(int reportFile)
    {
        posix_spawn_file_actions_init(&Files);
        posix_spawn_file_actions_adddup2(&Files, reportFile, RunnerReportFile);
        for (const int file : {0, 1, 2})
            posix_spawn_file_actions_addopen(&Files, file, "/dev/null", O_RDWR, 0);
        sigset_t all, none;
        sigfillset(&all);
        sigemptyset(&none);
        posix_spawnattr_init(&Attributes);
        posix_spawnattr_setsigdefault(&Attributes, &all);
        posix_spawnattr_setsigmask(&Attributes, &none);
        posix_spawnattr_setflags(&Attributes, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
    }
    ~TSpawnSettings()
    {
        posix_spawn_file_actions_destroy(&Files);
        posix_spawnattr_destroy(&Attributes);
    }
    TSpawnSettings(const TSpawnSettings &) = delete;
    TSpawnSettings &operator=(const TSpawnSettings &) = delete;

    posix_spawn_file_actions_t Files;
    posix_spawnattr_t Attributes;
};

std::optional<TRunnerReport> readReport(int file)
{
    TRunnerReport report;
    pollfd ready = {file, POLLIN, 0};
    int found = 0;
    do
        found = poll(&ready, 1, reportPatience);
    while (found < 0 && errno == EINTR);
    // A report is shorter than what a pipe writes in one piece.
    if (found > 0 && read(file, &report, sizeof report) == static_cast<ssize_t>(sizeof report))
        return report;
    return std::nullopt;
}

// Whatever the process that started this one has left open.
void closeInheritedFiles()
{
    const auto limit = std::min(sysconf(_SC_OPEN_MAX), 65536L);
    for (int file = RunnerReportFile + 1; file < limit; ++file)
        close(file);
}

} // namespace

TRunnerReport StartRunner(const std::filesystem::path &runner, const TRunRequest &request)
{
    std::array<int, 2> report;
    if (pipe2(report.data(), O_CLOEXEC) != 0)
        return {ResultFromErrno(errno)};
    std::vector<std::string> arguments{runner.native(), request.Folder.native(),
                                       PathFromText(request.File).native(), std::to_string(request.Now),
                                       request.Start ? std::to_string(*request.Start) : std::string(noStart)};
    std::vector<char *> pointers;
    pointers.reserve(arguments.size() + 1);
    for (auto &argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);

    const TSpawnSettings settings(report[1]);
    pid_t child = 0;
    const int error =
        posix_spawn(&child, runner.c_str(), &settings.Files, &settings.Attributes, pointers.data(), environ);
    close(report[1]);
    TRunnerReport answer{error == ENOENT ? TaskResult::ServiceNotInstalled : ResultFromErrno(error)};
    if (error == 0) {
        const auto read = readReport(report[0]);
        // With a report it has made a process of its own and is over; without one it may hang.
        if (!read)
            kill(child, SIGKILL);
        answer = read.value_or(TRunnerReport());
        while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
        }
    }
    close(report[0]);
    return answer;
}

int RunnerMain(int argc, char **argv)
{
    const auto now = argc == 5 ? NumberFromText<TSeconds>(argv[3]) : std::nullopt;
    if (!now) {
        static constexpr std::string_view text = "zelmar01-job-runner is started by zelmar01-jobs.\n";
        [[maybe_unused]] const auto written = write(STDERR_FILENO, text.data(), text.size());
        return 2;
    }
    closeInheritedFiles();
    fcntl(RunnerReportFile, F_SETFD, FD_CLOEXEC);
    // A report that nobody reads any more, or a file that may not grow, must not end the runner.
    signal(SIGPIPE, SIG_IGN);
    signal(SIGXFSZ, SIG_IGN);
    const auto child = fork();
    if (child != 0)
        return child < 0 ? 1 : 0;
    setsid();
    RunJob({argv[1], TextFromPath(argv[2]), *now, NumberFromText<TSeconds>(argv[4])}, RunnerReportFile);
    return 0;
}

} // namespace Zelmar01
