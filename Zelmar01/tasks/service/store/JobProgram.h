#pragma once

#include <Zelmar01/tasks/service/store/JobFile.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>

#include <sys/types.h>

namespace Zelmar01 {

/// The time that has passed, that of a suspended computer included where the system counts it (Linux).
struct TElapsedClock
{
    using duration = std::chrono::nanoseconds;
    using rep = duration::rep;
    using period = duration::period;
    using time_point = std::chrono::time_point<TElapsedClock>;
    static constexpr bool is_steady = true;

    static time_point now();
};

/// The program of a job, in a session of its own, as a child of this process.
class TJobProgram
{
public:
    using TClock = TElapsedClock;

    /// Why a program is ended; Nothing while it may go on.
    enum TReason { Nothing, Request, Limit, Power };

    /// Keeps the signals that Wait() waits for until then. Comes before this process is known as a runner: a
    /// request to end then ends the program and not this process.
    static void BlockSignals();

    /// Starts the program of a job, its output going to `output`. The parameters are split by the rules of
    /// CommandLine.h; without a working directory it is in the user's own.
    TTaskResult Start(const TJob &job, const std::filesystem::path &output);

    /// Waits until the program is over. After `deadline` (none for ever), when this process is asked to end
    /// and when `mayGoOn`, which is asked every two seconds, says no, the program is asked to end; what is
    /// left of it after `grace` is killed.
    TReason Wait(std::optional<TClock::time_point> deadline, std::chrono::milliseconds grace,
                 const std::function<bool()> &mayGoOn);

    /// The exit code; 128 and the signal's number for a program that a signal ended.
    std::uint32_t ExitCode() const { return m_exitCode; }

private:
    void reap();
    bool isOver() const;

    pid_t m_child = -1;
    bool m_childIsOver = false;
    std::uint32_t m_exitCode = 0;
};

} // namespace Zelmar01
