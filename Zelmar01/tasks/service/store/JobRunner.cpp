#include <Zelmar01/tasks/service/store/JobRunner.h>

#include <Zelmar01/tasks/service/RunTimes.h>
#include <Zelmar01/tasks/service/store/JobDue.h>
#include <Zelmar01/tasks/service/store/JobLog.h>
#include <Zelmar01/tasks/service/store/JobProgram.h>
#include <Zelmar01/tasks/service/store/JobStatus.h>
#include <Zelmar01/tasks/service/store/PowerSupply.h>
#include <Zelmar01/tasks/service/store/RunFiles.h>

#include <chrono>
#include <cstdlib>
#include <thread>

#include <unistd.h>

namespace Zelmar01 {

namespace {

using TClock = TJobProgram::TClock;

constexpr auto usualGrace = std::chrono::minutes(3);
constexpr int patienceAtEnd = 60; // times it is tried to write down the end

std::chrono::milliseconds graceToEnd()
{
    const char *const chosen = std::getenv("ZELMAR01_JOB_GRACE");
    char *end = nullptr;
    const double seconds = chosen ? std::strtod(chosen, &end) : 0;
    if (!chosen || end == chosen || *end != '\0' || !(seconds >= 0 && seconds <= 86400))
        return usualGrace;
    return std::chrono::milliseconds(static_cast<long>(seconds * 1000));
}

// One run of a job: its record in the job's file and in the log.
class TRun
{
public:
    explicit TRun(const TRunRequest &request)
        : m_request(request), m_folder(request.Folder), m_record(m_folder, request.File),
          m_zone(TTimeZone::System())
    {
    }

    const TJob &Job() const { return m_job; }
    std::filesystem::path OutputFile() const { return m_record.OutputFile(); }

    // Records the start before it is made.
    TTaskResult Begin()
    {
        const TFolderLock lock(m_folder);
        if (Failed(lock.Result()))
            return lock.Result();
        if (const auto result = m_folder.Load(m_request.File, m_job); Failed(result))
            return result;
        auto record = m_record.Read();
        // Another tick may have given this start up for lost.
        if (m_request.Start && (record.Phase != TRunRecord::Starting || record.Handled != *m_request.Start))
            return TaskResult::AlreadyRunning;
        if (const auto result = m_record.Claim(); Failed(result))
            return result;
        const auto before = m_job;
        m_job.LastRun = SystemTimeFromSeconds(m_zone.ToLocal(m_request.Now));
        m_job.Status = TaskResult::TaskRunning;
        m_job.RunningInstances = 1;
        m_job.ExitCode = 0;
        if (m_job.Reserved)
            m_job.Reserved->StartError = TaskResult::Ok;
        // The file comes first: a runner that is killed here leaves a run that is seen to be lost.
        if (const auto result = m_folder.Store(m_request.File, m_job); Failed(result))
            return result;
        record.Phase = TRunRecord::Running;
        const auto result = m_record.Write(record);
        if (Failed(result))
            m_folder.Store(m_request.File, before);
        return result;
    }

    void LogStart()
    {
        const TFolderLock lock(m_folder);
        if (Succeeded(lock.Result()))
            AppendToLog(m_folder, {event(TJobEvent::Started, 0)});
    }

    // The instant by the clock that the run began with.
    TSeconds Now() const
    {
        return m_request.Now +
               std::chrono::duration_cast<std::chrono::seconds>(TClock::now() - m_began).count();
    }

    std::optional<TClock::time_point> Deadline() const
    {
        std::optional<TClock::time_point> deadline;
        if (m_job.MaxRunTime != 0 && m_job.MaxRunTime != UnlimitedRunTime)
            deadline = m_began + std::chrono::milliseconds(m_job.MaxRunTime);
        const auto end = m_request.Start ? EndOfDuration(m_job, *m_request.Start, m_zone) : std::nullopt;
        if (!end)
            return deadline;
        const auto last = m_began + std::chrono::seconds(*end - m_request.Now);
        return deadline ? std::min(*deadline, last) : last;
    }

    // `value` is the exit code, or what kept the program from starting.
    void End(TJobEvent::TKind kind, std::int64_t value)
    {
        for (int i = 0; i < patienceAtEnd; ++i) {
            if (tryEnd(kind, value))
                return;
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
        }
    }

private:
    // What became of the job's file at the end of its run.
    enum TOutcome {
        Written,
        NotWritten,
        Unreadable,
        Gone, // the job was deleted meanwhile, even if there is another one of its name
    };

    bool tryEnd(TJobEvent::TKind kind, std::int64_t value)
    {
        const TFolderLock lock(m_folder);
        if (Failed(lock.Result()))
            return false;
        const auto outcome = leaveInFile(kind, value);
        if (outcome == NotWritten)
            return false;
        std::vector events{event(kind, value)};
        if (outcome == Gone)
            m_record.Forget();
        else if (outcome == Written && isDone())
            events.push_back(removeJob());
        else
            m_record.Rest();
        AppendToLog(m_folder, events);
        return true;
    }

    TJobEvent event(TJobEvent::TKind kind, std::int64_t value) const
    {
        return {kind, Now(), m_request.File, value, m_request.Start};
    }

    TOutcome leaveInFile(TJobEvent::TKind kind, std::int64_t value)
    {
        TJob job;
        const auto result = m_folder.Load(m_request.File, job);
        if (result == TaskResult::FileNotFound || (Succeeded(result) && job.Uuid != m_job.Uuid))
            return Gone;
        if (Failed(result))
            return Unreadable;
        job.RunningInstances = 0;
        job.Status = kind == TJobEvent::Ended || kind == TJobEvent::StartFailed ? TaskResult::TaskReady
                                                                                : TaskResult::TaskTerminated;
        if (kind != TJobEvent::StartFailed)
            job.ExitCode = static_cast<std::uint32_t>(value);
        else {
            if (!job.Reserved)
                job.Reserved.emplace();
            job.Reserved->StartError = static_cast<TTaskResult>(value);
        }
        SettleStatus(job);
        if (Failed(m_folder.Store(m_request.File, job)))
            return NotWritten;
        m_job = std::move(job);
        return Written;
    }

    bool isDone() const
    {
        const TRunTimes times(m_job.Triggers, m_job.Flags);
        return (m_job.Flags & TaskFlag::DeleteWhenDone) && times.WhyNone() == TaskResult::TaskNoMoreRuns &&
               !times.Next(Now() + 1, m_zone);
    }

    TJobEvent removeJob()
    {
        m_folder.Remove(m_request.File);
        m_record.Forget();
        return event(TJobEvent::Deleted, 0);
    }

    const TRunRequest m_request;
    const TJobFolder m_folder;
    const TRunFiles m_record;
    const TTimeZone m_zone;
    const TClock::time_point m_began = TClock::now();
    TJob m_job;
};

TJobEvent::TKind kindOf(TJobProgram::TReason reason)
{
    switch (reason) {
    case TJobProgram::Request:
        return TJobEvent::Terminated;
    case TJobProgram::Limit:
        return TJobEvent::LimitReached;
    case TJobProgram::Power:
        return TJobEvent::PowerFailed;
    default:
        return TJobEvent::Ended;
    }
}

void send(int file, const TRunnerReport &report)
{
    [[maybe_unused]] const auto written = write(file, &report, sizeof report);
    close(file);
}

} // namespace

void RunJob(const TRunRequest &request, int reportFile)
{
    TJobProgram::BlockSignals();
    TRun run(request);
    if (const auto result = run.Begin(); Failed(result)) {
        send(reportFile, {result});
        return;
    }
    TJobProgram process;
    if (const auto result = process.Start(run.Job(), run.OutputFile()); Failed(result)) {
        run.End(TJobEvent::StartFailed, result);
        send(reportFile, {TaskResult::Ok, result});
        return;
    }
    run.LogStart();
    send(reportFile, {TaskResult::Ok});
    // Going on battery is what ends it: whoever started it on battery wants it to run.
    bool endsOnBattery = false;
    const auto reason = process.Wait(run.Deadline(), graceToEnd(), [&] {
        if (!(run.Job().Flags & TaskFlag::KillIfGoingOnBatteries))
            return true;
        if (IsOnBattery())
            return !endsOnBattery;
        endsOnBattery = true;
        return true;
    });
    run.End(kindOf(reason), process.ExitCode());
}

} // namespace Zelmar01
