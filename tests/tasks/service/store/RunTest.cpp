#include "RunFixture.h"

#include <csignal>

#include <sys/resource.h>
#include <sys/stat.h>

using namespace Zelmar01;

namespace {

const std::vector<TASK_TRIGGER> nightly{daily("2027-01-01 04:00")};

std::vector<TJobEvent::TKind> kindsOf(const std::vector<TJobEvent> &events)
{
    std::vector<TJobEvent::TKind> kinds;
    kinds.reserve(events.size());
    for (const auto &event : events)
        kinds.push_back(event.Kind);
    return kinds;
}

TEST_F(RunTest, GivesItsProgramJustTheseArguments)
{
    const auto task = made(u"quoting");
    ASSERT_EQ(task->SetApplicationName(u"sh"), TaskResult::Ok);
    EXPECT_EQ(text(task, &ITask::GetApplicationName), TextFromPath(*SearchProgram(u"sh")));
    ASSERT_EQ(task->SetParameters(uR"(-c "pwd; ls /proc/$$/fd; printf '<%s>' \"$@\"" sh )"
                                  uR"(one "two words" $HOME *.job 'x y' a\\b \"q\" "" "say ""hi""" ; | é€😀)"),
              TaskResult::Ok);
    ASSERT_EQ(task->SetWorkingDirectory(u"/usr"), TaskResult::Ok);
    add(task, nightly[0]);
    ASSERT_EQ(save(task), TaskResult::Ok);
    ASSERT_EQ(task->Run(), TaskResult::Ok);
    EXPECT_EQ(statusOf(task), TaskResult::TaskHasNotRun);
    waitForEnd(u"quoting");
    EXPECT_EQ(bytesOf(runOf(u"quoting").OutputFile()),
              "/usr\n0\n1\n2\n"
              R"(<one><two words><$HOME><*.job><'x><y'><a\\b><"q"><><say "hi"><;><|><é€😀>)");
    EXPECT_EQ(statusOf(activated(u"quoting")), TaskResult::TaskReady);
    SYSTEMTIME lastRun;
    EXPECT_EQ(activated(u"quoting")->GetMostRecentRunTime(lastRun), TaskResult::Ok);
    EXPECT_EQ(lastRun, SystemTimeFromSeconds(m_now));
}

TEST_F(RunTest, RunsOnceAtATimeAndIsEndedOnRequest)
{
    const auto task = script(u"long", u"echo $$ > pid; sleep 100 & echo $! > child; wait", nightly);
    ASSERT_EQ(task->Run(), TaskResult::Ok);
    waitUntil([&] { return !output("child").empty(); });
    EXPECT_EQ(statusOf(activated(u"long")), TaskResult::TaskRunning);
    EXPECT_EQ(task->Run(), TaskResult::AlreadyRunning);
    EXPECT_EQ(activated(u"long")->SetComment(u"edited"), TaskResult::Ok);
    EXPECT_EQ(save(activated(u"long")), TaskResult::Ok);
    EXPECT_EQ(inChild([&] { EXPECT_EQ(task->Terminate(), TaskResult::Ok); }), 0);
    waitForEnd(u"long");
    for (const auto *file : {"pid", "child"})
        EXPECT_NE(kill(std::stoi(output(file)), 0), 0) << file;
    const auto after = activated(u"long");
    std::uint32_t exitCode = 0;
    EXPECT_EQ(statusOf(after), TaskResult::TaskTerminated);
    EXPECT_EQ(after->GetExitCode(exitCode), TaskResult::Ok);
    EXPECT_EQ(exitCode, 128U + SIGTERM);
    EXPECT_EQ(after->Terminate(), TaskResult::TaskNotRunning);
    EXPECT_EQ(kindsOf(ReadLog(m_jobFolder, 9)), (std::vector{TJobEvent::Started, TJobEvent::Terminated}));
}

TEST_F(RunTest, EndsInTheseWays)
{
    const struct
    {
        const char *Label;
        const char16_t *Program, *Script, *Directory;
        std::uint32_t MaxRunTime, ExitCode;
        TTaskResult Result, Status;
        TJobEvent::TKind Event;
    } cases[] = {
        {"exit code", u"/bin/sh", u"exit 42", u"/", 60000, 42, TaskResult::Ok, TaskResult::TaskReady,
         TJobEvent::Ended},
        {"signal", u"/bin/sh", u"kill -9 $$", u"/", 60000, 137, TaskResult::Ok, TaskResult::TaskReady,
         TJobEvent::Ended},
        {"no limit", u"/bin/sh", u"sleep 0.1", u"/", 0, 0, TaskResult::Ok, TaskResult::TaskReady,
         TJobEvent::Ended},
        {"limit", u"/bin/sh", u"exec sleep 100", u"/", 200, 143, TaskResult::Ok, TaskResult::TaskTerminated,
         TJobEvent::LimitReached},
        {"deaf", u"/bin/sh", u"trap '' TERM; sleep 100; sleep 100", u"/", 200, 137, TaskResult::Ok,
         TaskResult::TaskTerminated, TJobEvent::LimitReached},
        {"no program", u"/no/such/program", u"", u"/", 60000, 0, TaskResult::FileNotFound,
         TaskResult::TaskReady, TJobEvent::StartFailed},
        {"not a program", u"/etc/passwd", u"", u"/", 60000, 0, TaskResult::AccessDenied,
         TaskResult::TaskReady, TJobEvent::StartFailed},
        {"no directory", u"/bin/sh", u"", u"/no/such", 60000, 0, TaskResult::PathNotFound,
         TaskResult::TaskReady, TJobEvent::StartFailed},
        {"no name", u"", u"", u"/", 60000, 0, TaskResult::InvalidTask, TaskResult::TaskReady,
         TJobEvent::StartFailed},
    };
    for (const auto &row : cases) {
        SCOPED_TRACE(row.Label);
        const auto name = std::filesystem::path(row.Label).u16string();
        const auto task = script(name.c_str(), row.Script, nightly);
        ASSERT_EQ(task->SetApplicationName(row.Program), TaskResult::Ok);
        ASSERT_EQ(task->SetWorkingDirectory(row.Directory), TaskResult::Ok);
        ASSERT_EQ(task->SetMaxRunTime(row.MaxRunTime), TaskResult::Ok);
        ASSERT_EQ(save(task), TaskResult::Ok);
        EXPECT_EQ(task->Run(), TaskResult::Ok);
        waitForEnd(name.c_str());
        const auto after = activated(name.c_str());
        std::uint32_t exitCode = 9999;
        EXPECT_EQ(after->GetExitCode(exitCode), row.Result);
        EXPECT_EQ(exitCode, row.ExitCode);
        EXPECT_EQ(statusOf(after), row.Status);
        EXPECT_EQ(ReadLog(m_jobFolder, 1).back().Kind, row.Event);
    }
}

TEST_F(RunTest, DeletesAJobThatIsDoneAndNoOther)
{
    const auto flags = TaskFlag::DeleteWhenDone;
    script(u"done", u"true", {once("2027-02-03 09:00")}, flags);
    script(u"more to come", u"true", {once("2027-02-03 09:00"), once("2027-02-03 11:00")}, flags);
    script(u"waits for an event", u"true", {starting("2027-01-01", TASK_EVENT_TRIGGER_ON_IDLE)}, flags);
    script(u"stays", u"true", {once("2027-02-03 09:00")});
    for (const auto *name : {u"done", u"more to come", u"waits for an event", u"stays"}) {
        EXPECT_EQ(activated(name)->Run(), TaskResult::Ok);
        waitForEnd(name);
    }
    EXPECT_EQ(names(),
              (std::vector<std::u16string>{u"more to come.job", u"stays.job", u"waits for an event.job"}));
    EXPECT_FALSE(std::filesystem::exists(runOf(u"done").OutputFile()));
}

TEST_F(RunTest, DoesNotDeleteAJobWhoseFileWasDamagedMeanwhile)
{
    const auto task = script(u"a", u"sleep 0.3", {once("2027-02-03 09:00")}, TaskFlag::DeleteWhenDone);
    ASSERT_EQ(task->Run(), TaskResult::Ok);
    writeBytes(path("a.job"), "damaged");
    waitForEnd(u"a");
    EXPECT_EQ(bytesOf(path("a.job")), "damaged");
    EXPECT_EQ(ReadLog(m_jobFolder, 1).back().Kind, TJobEvent::Ended);
}

TEST_F(RunTest, LeavesNothingInAJobThatCameInItsPlace)
{
    const auto task = script(u"a", u"sleep 0.3; exit 5", nightly);
    ASSERT_EQ(task->Run(), TaskResult::Ok);
    ASSERT_EQ(m_scheduler->Delete(u"a"), TaskResult::Ok);
    const auto other = script(u"a", u"true", nightly);
    waitForEnd(u"a");
    std::uint32_t exitCode = 0;
    EXPECT_EQ(activated(u"a")->GetExitCode(exitCode), TaskResult::TaskHasNotRun);
    EXPECT_EQ(other->Run(), TaskResult::Ok);
    waitForEnd(u"a");
    EXPECT_EQ(statusOf(activated(u"a")), TaskResult::TaskReady);
}

TEST_F(RunTest, DoesNotOutliveAKilledRunner)
{
    const auto task = script(u"a", u"echo $$ > pid; exec sleep 100", nightly);
    ASSERT_EQ(task->Run(), TaskResult::Ok);
    waitUntil([&] { return !output("pid").empty(); });
    ASSERT_EQ(kill(*runOf(u"a").Runner(), SIGKILL), 0);
    waitForEnd(u"a");
    waitUntil([&] { return kill(std::stoi(output("pid")), 0) != 0; });
    EXPECT_EQ(statusOf(activated(u"a")), TaskResult::TaskTerminated);
    EXPECT_EQ(task->Terminate(), TaskResult::TaskNotRunning);
    EXPECT_EQ(ticked("2027-02-03 10:00"), "run-lost:a");
    std::uint32_t exitCode = 0;
    EXPECT_EQ(activated(u"a")->GetExitCode(exitCode), TaskResult::Ok);
    EXPECT_NE(exitCode, 0U);
    EXPECT_EQ(statusOf(activated(u"a")), TaskResult::TaskTerminated);
    EXPECT_EQ(ticked("2027-02-03 10:01"), "");
    EXPECT_EQ(task->Run(), TaskResult::Ok);
    waitUntil([&] { return statusOf(activated(u"a")) == TaskResult::TaskRunning; });
    EXPECT_EQ(task->Terminate(), TaskResult::Ok);
    waitForEnd(u"a");
}

TEST_F(RunTest, KeepsTheOldFileWhenTheDiskIsFull)
{
    const auto task = script(u"a", u"echo ran >> ran", nightly);
    const auto before = bytesOf(path("a.job"));
    ASSERT_EQ(task->SetComment(std::u16string(5000, u'x').c_str()), TaskResult::Ok);
    const auto status = inChild([&] {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit small{100, 100};
        ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
        EXPECT_EQ(save(task), TaskResult::WriteFault);
        EXPECT_EQ(fileOf(task)->IsDirty(), TaskResult::Ok);
        EXPECT_EQ(save(made(u"b")), TaskResult::WriteFault);
        // A start that cannot be recorded is not made.
        EXPECT_TRUE(Failed(task->Run()));
    });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(bytesOf(path("a.job")), before);
    EXPECT_EQ(names(), std::vector<std::u16string>{u"a.job"});
    EXPECT_EQ(filesIn(m_jobs / ".zelmar01"), (std::vector<std::string>{"lock", "runs"}));
    EXPECT_EQ(output("ran"), "");
    EXPECT_EQ(save(task), TaskResult::Ok);
}

TEST_F(RunTest, ShowsItsFilesToNobodyElse)
{
    const EnvironmentSetting jobs("ZELMAR01_JOBS", (m_folder / "deep/er").string());
    TJobStore store;
    ASSERT_EQ(store.CreateScheduler(m_scheduler), TaskResult::Ok);
    EXPECT_EQ(store.Folder(), m_folder / "deep/er");
    const auto task = script(u"a", u"echo output", nightly);
    ASSERT_EQ(task->Run(), TaskResult::Ok);
    const TJobFolder folder(store.Folder());
    const TRunFiles run(folder, u"a.job");
    waitUntil([&] { return !run.Runner(); });
    struct stat status = {};
    for (const auto &place : {m_folder / "deep", store.Folder(), folder.Side()}) {
        ASSERT_EQ(stat(place.c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 0777, 0700U) << place;
    }
    for (const auto &place : {store.Folder() / "a.job", run.OutputFile(), folder.Side() / "log"}) {
        ASSERT_EQ(stat(place.c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 0777, 0600U) << place;
    }
}

TEST_F(RunTest, SaysThatItHasNoRunner)
{
    const auto task = script(u"a", u"true", nightly);
    const EnvironmentSetting runner("ZELMAR01_JOB_RUNNER", (m_folder / "none").string());
    EXPECT_EQ(task->Run(), TaskResult::ServiceNotInstalled);
}

} // namespace
