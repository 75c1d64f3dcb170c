#pragma once

#include <Zelmar01/tasks/service/TimeZone.h>
#include <Zelmar01/tasks/service/store/JobDue.h>
#include <Zelmar01/tasks/service/store/JobFolder.h>
#include <Zelmar01/tasks/service/store/JobLog.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace Zelmar01 {

/// What a tick goes by.
struct TTickOptions
{
    std::filesystem::path Folder;
    std::filesystem::path Runner; ///< see FindJobRunner()
    TSeconds Now = 0;             ///< the instant that is now
    TTimeZone Zone;               ///< of local times
    std::string BootId;           ///< changes when the computer is started; see SystemBootId()
};

/// What a tick found.
struct TTickReport
{
    /// Why there was no tick, or not a whole one. AlreadyRunning while another one is at work; the state of
    /// the folder is then untouched.
    TTaskResult Result = TaskResult::Ok;
    std::vector<TJobEvent> Events;
};

/// A job file that cannot be used.
struct TUnusableJob
{
    std::u16string File;
    TTaskResult Result = TaskResult::Ok;

    bool operator==(const TUnusableJob &) const = default;
};

/// What is known of the ticks of a folder.
struct TTickState
{
    std::optional<TSeconds> Last; ///< the instant of the last tick; none when there was none yet
    unsigned Started = 0;         ///< how many jobs it started
    std::string BootId;
    std::vector<TUnusableJob> Unusable;
};

/// How long after a tick none has to come until something is wrong with what calls it every minute.
inline constexpr TSeconds MaxSilence = 180;

/// Has all jobs of a folder started that came due since the last tick, each once however many of its starts
/// did. The first tick of a folder starts none.
///
/// A start that was decided on is recorded before it is made and is never made again, whether this process
/// lives or not. Does not wait for the jobs.
TTickReport RunTick(const TTickOptions &options);

TTickState ReadTickState(const TJobFolder &folder);

/// Whether something calls for ticks: the last one is not longer ago than MaxSilence.
bool TicksArrive(const TTickState &state, TSeconds now);

/// What this system says about its last start; empty when it does not.
std::string SystemBootId();

} // namespace Zelmar01
