#pragma once

#include <Zelmar01/tasks/service/Calendar.h>
#include <Zelmar01/tasks/service/store/JobFolder.h>

#include <filesystem>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

#include <sys/types.h>

namespace Zelmar01 {

/// How far a job has come with its starts.
struct TRunRecord
{
    enum TPhase {
        AtRest,
        Starting, ///< a tick has decided on the start at Handled, and no runner has taken it up
        Running,
    };
    TPhase Phase = AtRest;
    /// The last start that was decided on; it is never made again.
    TSeconds Handled = std::numeric_limits<TSeconds>::min();
    /// The last start of the computer that the job was started for; see SystemBootId().
    std::string BootId;
};

/// What is known of the runs of one job, beside its file, in the "runs" folder. Everything but Runner() and
/// OutputFile() is for who holds the folder's lock.
///
/// Whoever runs the job has a claim, a lock that the system takes from it when it ends in any way. So nobody
/// is taken for the runner because a process has come by the same number.
class TRunFiles
{
public:
    TRunFiles(const TJobFolder &folder, std::u16string_view file);

    TRunRecord Read() const;
    TTaskResult Write(const TRunRecord &record) const;
    /// Writes the record at rest; the starts that were decided on stay in it.
    TTaskResult Rest() const;

    /// Makes this process the runner until it ends. AlreadyRunning when another one is.
    TTaskResult Claim() const;
    /// The process that runs the job, or has just done so; none when it does not run.
    std::optional<pid_t> Runner() const;
    bool IsRunning() const { return Read().Phase == TRunRecord::Running && Runner(); }

    /// Where the program's output goes: that of its last run.
    std::filesystem::path OutputFile() const;

    /// Removes what is known, but for the claim of a runner.
    void Forget() const;

private:
    std::filesystem::path fileOf(const char *ending) const;

    const TJobFolder &m_folder;
    std::filesystem::path m_base;
};

} // namespace Zelmar01
