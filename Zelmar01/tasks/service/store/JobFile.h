#pragma once

#include <Zelmar01/tasks/service/MSTask.h>
#include <Zelmar01/tasks/service/TaskResults.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Zelmar01 {

/// A text of a job file. The format tells an absent text from an empty one; both mean the same.
using TJobText = std::optional<std::u16string>;

/// The second block of data in a job file, where the service keeps notes of its own.
struct TJobReserved
{
    TTaskResult StartError = 0;  ///< what the last attempt to start the job answered
    std::uint32_t TaskFlags = 0; ///< ITask::GetTaskFlags

    bool operator==(const TJobReserved &) const = default;
};

/// All that a job file holds. A value that was read and not changed is written back byte for byte; what this
/// library has no use for is kept, too. The initial values are those of a new job, but for its identifier:
/// see NewJob().
struct TJob
{
    std::uint16_t ProductVersion = 0x0601;
    TGuid Uuid;
    /// How far the file's offset of the triggers, which no reader goes by, is from their true place.
    std::uint16_t TriggerOffsetBias = 0;
    std::uint16_t ErrorRetryCount = 0;
    std::uint16_t ErrorRetryInterval = 0; ///< minutes
    std::uint16_t IdleDeadline = 60;      ///< minutes
    std::uint16_t IdleWait = 10;          ///< minutes
    std::uint32_t Priority = PriorityClass::Normal;
    std::uint32_t MaxRunTime = 259'200'000; ///< milliseconds
    std::uint32_t ExitCode = 0;
    TTaskResult Status = TaskResult::TaskNotScheduled;
    std::uint32_t Flags = 0; ///< of TaskFlag, and bits of the service's own above them
    SYSTEMTIME LastRun;      ///< local time; all zero for never
    std::uint16_t RunningInstances = 0;
    // Texts that are written by this library are present also when empty: a widespread reader takes what
    // stands behind an absent one for a part of it.
    TJobText ApplicationName{u""};
    TJobText Parameters{u""};
    TJobText WorkingDirectory{u""};
    TJobText Creator{u""};
    TJobText Comment{u""};
    std::vector<std::uint8_t> UserData; ///< at most 65535 bytes
    std::optional<TJobReserved> Reserved{TJobReserved{}};
    std::vector<TASK_TRIGGER> Triggers;
    /// The signature at the file's end, as it was found: usually none, 68 bytes when complete. An incomplete
    /// one counts as none and is kept all the same.
    std::vector<std::uint8_t> Signature;
};

/// A new job: the defaults of the service and a random identifier.
TJob NewJob();

/// Reads a job file. On failure `job` is left alone, and the result says what is wrong with the file:
/// HandleEndOfFile for one that ends too early, UnknownObjectVersion for a version of the format other than
/// 1, InvalidData for anything else, bytes left over at the end among them. The content of triggers is not
/// judged: see CheckTrigger().
TTaskResult ReadJobFile(std::string_view bytes, TJob &job);

/// The file of a job, into `bytes`. InvalidArgument when a text, the data or the triggers are more than the
/// format can count; `bytes` is then left alone.
TTaskResult WriteJobFile(const TJob &job, std::string &bytes);

/// The longest text of a job file, in UTF-16 units.
inline constexpr std::size_t MaxJobText = 65534;

} // namespace Zelmar01
