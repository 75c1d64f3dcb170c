#pragma once

#include <Zelmar01/tasks/service/Calendar.h>
#include <Zelmar01/tasks/service/store/JobFolder.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace Zelmar01 {

/// What happened to a job.
struct TJobEvent
{
    enum TKind {
        Started,      ///< the program was started
        Ended,        ///< it ended by itself; Value is its exit code
        Terminated,   ///< it was ended on request; Value as with Ended
        LimitReached, ///< it was ended because it had run for too long; Value as with Ended
        PowerFailed,  ///< it was ended because the computer went on battery; Value as with Ended
        StartFailed,  ///< the program could not be started; Value is the result code
        Deleted,      ///< the job was done and its file is removed
        Missed, ///< Value starts (MaxDueCount at most) were missed and are not made up for; Start is the last
                ///< one
        StillRunning,  ///< it was not started because it was still running
        HeldOnBattery, ///< it was not started because the computer is on battery
        StartLost,     ///< a start was recorded, but never made
        RunLost,       ///< a run ended without a trace: the computer went down, or its runner was killed
        Unreadable,    ///< the file cannot be used; Value is the result code
    };
    static constexpr std::size_t KindCount = Unreadable + 1;

    TKind Kind = Started;
    TSeconds At = 0;     ///< the instant
    std::u16string File; ///< of the job
    std::int64_t Value = 0;
    std::optional<TSeconds> Start; ///< the instant at which the job was due; none for a start on request

    /// Whether somebody should look at it.
    bool IsProblem() const;

    bool operator==(const TJobEvent &) const = default;
};

/// The name of a kind as it stands in the log, such as "started".
const char *EventName(TJobEvent::TKind kind);

/// Appends events to the log of a folder, which keeps the last ones. The caller holds the folder's lock.
TTaskResult AppendToLog(const TJobFolder &folder, const std::vector<TJobEvent> &events);

/// The last events of a folder, at most `count`, the latest one last. Lines that are not whole are passed
/// over.
std::vector<TJobEvent> ReadLog(const TJobFolder &folder, std::size_t count);

} // namespace Zelmar01
