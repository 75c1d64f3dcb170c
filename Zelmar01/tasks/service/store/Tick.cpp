#include <Zelmar01/tasks/service/store/Tick.h>

#include <Zelmar01/tasks/service/store/JobControl.h>
#include <Zelmar01/tasks/service/store/JobDue.h>
#include <Zelmar01/tasks/service/store/JobStatus.h>
#include <Zelmar01/tasks/service/store/PosixResult.h>
#include <Zelmar01/tasks/service/store/PowerSupply.h>
#include <Zelmar01/tasks/service/store/RunFiles.h>
#include <Zelmar01/tasks/service/store/RunnerProcess.h>
#include <Zelmar01/tasks/service/store/TickState.h>

#include <algorithm>
#include <cerrno>
#include <iterator>

#include <sys/stat.h>
#include <unistd.h>

namespace Zelmar01 {

namespace {

// A clock that was set back by less does not make starts happen again that were made before.
constexpr TSeconds longestStepBack = TSeconds{3} * 3600;

// Whoever can write a job can have anything run; that must be this user alone.
TTaskResult checkOwner(const std::filesystem::path &path)
{
    struct stat status = {};
    if (stat(path.c_str(), &status) != 0)
        return ResultFromErrno(errno);
    const bool isOwn = status.st_uid == geteuid() && !(status.st_mode & (S_IWGRP | S_IWOTH));
    return isOwn ? TaskResult::Ok : TaskResult::AccessDenied;
}

class TTick
{
public:
    explicit TTick(const TTickOptions &options)
        : m_options(options), m_folder(options.Folder), m_onBattery(IsOnBattery())
    {
    }

    TTickReport Run()
    {
        TTickReport report;
        std::vector<std::u16string> names;
        report.Result = checkOwner(m_folder.Path());
        // Taken for the first one of the folder, a tick would pass over all that came due.
        if (Succeeded(report.Result))
            report.Result = LoadTickState(m_folder, m_before);
        if (Succeeded(report.Result))
            report.Result = m_folder.Names(names);
        if (Failed(report.Result))
            return report;
        std::ranges::sort(names);
        for (const auto &name : names)
            look(name);
        report.Result = conclude();
        report.Events = std::move(m_events);
        std::ranges::move(m_runnerEvents, std::back_inserter(report.Events));
        return report;
    }

private:
    void tell(TJobEvent::TKind kind, const std::u16string &file, std::int64_t value = 0,
              std::optional<TSeconds> start = {})
    {
        m_events.push_back({kind, m_options.Now, file, value, start});
    }

    void look(const std::u16string &file)
    {
        TJob job;
        auto result = m_folder.Load(file, job);
        if (Succeeded(result))
            result = checkOwner(m_folder.PathOf(file));
        if (result == TaskResult::FileNotFound) // deleted since it was listed
            return;
        if (Failed(result)) {
            m_after.Unusable.push_back({file, result});
            if (std::ranges::find(m_before.Unusable, m_after.Unusable.back()) == m_before.Unusable.end())
                tell(TJobEvent::Unreadable, file, result);
            return;
        }
        if (job.Status == TaskResult::TaskRunning)
            repair(file);
        if (!m_before.Last)
            return;
        if (IsStartDue(job, *m_before.Last, m_options.Now, m_options.Zone) || startsWithSystem(job))
            start(file);
    }

    bool startsWithSystem(const TJob &job) const
    {
        return !m_before.BootId.empty() && !m_options.BootId.empty() && m_before.BootId != m_options.BootId &&
               StartsWithSystem(job, m_options.Zone.ToLocal(m_options.Now));
    }

    // A job that nobody runs, whatever its file says.
    void repair(const std::u16string &file)
    {
        const TFolderLock lock(m_folder);
        const TRunFiles run(m_folder, file);
        TJob job;
        if (Failed(lock.Result()) || run.Runner() || Failed(m_folder.Load(file, job)) ||
            job.Status != TaskResult::TaskRunning)
            return;
        SetRunLost(job);
        if (Failed(m_folder.Store(file, job)))
            return;
        run.Rest();
        tell(TJobEvent::RunLost, file);
    }

    void start(const std::u16string &file)
    {
        const auto due = decide(file);
        if (!due)
            return;
        const auto runner = FindJobRunner(m_options.Runner);
        const auto report = runner.empty() ? TRunnerReport{TaskResult::ServiceNotInstalled}
                                           : StartRunner(runner, {m_folder.Path(), file, m_options.Now, due});
        if (Succeeded(report.Request) && Succeeded(report.Start)) {
            ++m_after.Started;
            m_runnerEvents.push_back({TJobEvent::Started, m_options.Now, file, 0, due});
        } else if (Succeeded(report.Request)) {
            m_runnerEvents.push_back({TJobEvent::StartFailed, m_options.Now, file, report.Start, due});
        } else {
            tell(TJobEvent::StartFailed, file, report.Request, due);
            giveUp(file);
        }
    }

    // The start to be made now, which is then recorded; none when there is a reason against it.
    std::optional<TSeconds> decide(const std::u16string &file)
    {
        const TFolderLock lock(m_folder);
        if (Failed(lock.Result())) {
            tell(TJobEvent::StartFailed, file, lock.Result());
            return std::nullopt;
        }
        TJob job;
        if (const auto result = m_folder.Load(file, job); Failed(result)) {
            if (result != TaskResult::FileNotFound) // deleted since it was looked at
                tell(TJobEvent::StartFailed, file, result);
            return std::nullopt;
        }
        const TRunFiles run(m_folder, file);
        auto record = run.Read();
        const bool isRunning = run.IsRunning();
        if (record.Phase == TRunRecord::Starting && !isRunning) {
            tell(TJobEvent::StartLost, file, 0, record.Handled);
            record.Phase = TRunRecord::AtRest;
            run.Write(record);
        }
        auto after = *m_before.Last;
        if (record.Handled <= m_options.Now + longestStepBack)
            after = std::max(after, record.Handled);
        auto due = StartsDue(job, after, m_options.Now, m_options.Zone);
        if (due && !isLate(*due) && due->Count > 1)
            tell(TJobEvent::Missed, file, due->Count - 1, due->Last);
        if (due && isLate(*due)) {
            tell(TJobEvent::Missed, file, due->Count, due->Last);
            due.reset();
        }
        const bool withSystem = startsWithSystem(job) && record.BootId != m_options.BootId;
        if (!due && withSystem && after < m_options.Now)
            due = {m_options.Now, 1};
        if (!due)
            return std::nullopt;
        if (isRunning) {
            tell(TJobEvent::StillRunning, file, 0, due->Last);
            return std::nullopt;
        }
        if ((job.Flags & TaskFlag::DontStartIfOnBatteries) && m_onBattery) {
            tell(TJobEvent::HeldOnBattery, file, 0, due->Last);
            return std::nullopt;
        }
        record.Phase = TRunRecord::Starting;
        record.Handled = due->Last;
        if (withSystem)
            record.BootId = m_options.BootId;
        if (const auto result = run.Write(record); Failed(result)) {
            tell(TJobEvent::StartFailed, file, result, due->Last);
            return std::nullopt;
        }
        return due->Last;
    }

    bool isLate(const TDueStarts &due) const { return m_options.Now - due.Last > MaxLateness; }

    void giveUp(const std::u16string &file)
    {
        const TFolderLock lock(m_folder);
        if (Failed(lock.Result()))
            return;
        const TRunFiles run(m_folder, file);
        TJob job;
        if (m_folder.Load(file, job) == TaskResult::FileNotFound)
            run.Forget();
        else if (run.Read().Phase == TRunRecord::Starting)
            run.Rest();
    }

    TTaskResult conclude()
    {
        const TFolderLock lock(m_folder);
        if (Failed(lock.Result()))
            return lock.Result();
        m_after.Last = m_options.Now;
        m_after.BootId = m_options.BootId;
        const auto logged = AppendToLog(m_folder, m_events);
        const auto written = WriteTickState(m_folder, m_after);
        return Failed(written) ? written : logged;
    }

    const TTickOptions &m_options;
    const TJobFolder m_folder;
    TTickState m_before;
    const bool m_onBattery;
    TTickState m_after;
    std::vector<TJobEvent> m_events;       // what this tick puts into the log
    std::vector<TJobEvent> m_runnerEvents; // what the runners put there
};

} // namespace

TTickReport RunTick(const TTickOptions &options)
{
    const TJobFolder folder(options.Folder);
    if (const auto result = MakePrivateFolder(folder.Side()); Failed(result))
        return {result, {}};
    const TFileLock lock(folder.Side() / "tick.lock", std::chrono::milliseconds(0));
    if (lock.Result() == TaskResult::SharingViolation)
        return {TaskResult::AlreadyRunning, {}};
    if (Failed(lock.Result()))
        return {lock.Result(), {}};
    return TTick(options).Run();
}

} // namespace Zelmar01
