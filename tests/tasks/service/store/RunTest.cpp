#include "RunFixture.h"

#include <csignal>

#include <sys/resource.h>

using namespace Zelmar01;

namespace {

const std::vector<TASK_TRIGGER> nightly{daily("2027-01-01 04:00")};

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
    EXPECT_EQ(value(activated(u"quoting"), &ITask::GetMostRecentRunTime), SystemTimeFromSeconds(m_now));
}

TEST_F(RunTest, RunsOnceAtATimeAndIsEndedOnRequest)
{
    const auto task = script(u"long", u"echo $$ > pid; sleep 100 & echo $! > child; wait", nightly);
    ASSERT_EQ(task->Run(), TaskResult::Ok);
    EXPECT_TRUE(waitUntil([&] { return !output("child").empty(); }));
    EXPECT_EQ(statusOf(activated(u"long")), TaskResult::TaskRunning);
    EXPECT_EQ(task->Run(), TaskResult::AlreadyRunning);
    EXPECT_EQ(activated(u"long")->SetComment(u"edited"), TaskResult::Ok);
    EXPECT_EQ(save(activated(u"long")), TaskResult::Ok);
    EXPECT_EQ(inChild([&] { EXPECT_EQ(task->Terminate(), TaskResult::Ok); }), 0);
    waitForEnd(u"long");
    for (const auto *file : {"pid", "child"})
        EXPECT_NE(kill(std::stoi(output(file)), 0), 0) << file;
    const auto after = activated(u"long");
    EXPECT_EQ(statusOf(after), TaskResult::TaskTerminated);
    EXPECT_EQ(value(after, &ITask::GetExitCode), 128U + SIGTERM);
    EXPECT_EQ(after->Terminate(), TaskResult::TaskNotRunning);
    EXPECT_EQ(ReadLog(m_jobFolder, 9).size(), 2U);
    EXPECT_EQ(ReadLog(m_jobFolder, 1).back().Kind, TJobEvent::Terminated);
}

TEST_F(RunTest, EndsInTheseWays)
{
    using namespace TaskResult;
    const struct
    {
        const char16_t *Name, *Program, *Script, *Directory;
        std::uint32_t MaxRunTime, ExitCode;
        TTaskResult Result, Status;
        TJobEvent::TKind Event;
    } cases[] = {
        {u"exit code", u"/bin/sh", u"exit 42", u"/", 60000, 42, Ok, TaskReady, TJobEvent::Ended},
        {u"signal", u"/bin/sh", u"kill -9 $$", u"/", 60000, 137, Ok, TaskReady, TJobEvent::Ended},
        {u"no limit", u"/bin/sh", u"sleep 0.1", u"/", 0, 0, Ok, TaskReady, TJobEvent::Ended},
        {u"limit", u"/bin/sh", u"exec sleep 100", u"/", 200, 143, Ok, TaskTerminated,
         TJobEvent::LimitReached},
        {u"deaf", u"/bin/sh", u"trap '' TERM; sleep 100; sleep 100", u"/", 200, 137, Ok, TaskTerminated,
         TJobEvent::LimitReached},
        {u"no program", u"/no/such/program", u"", u"/", 60000, 0, FileNotFound, TaskReady,
         TJobEvent::StartFailed},
        {u"not one", u"/etc/passwd", u"", u"/", 60000, 0, AccessDenied, TaskReady, TJobEvent::StartFailed},
        {u"no directory", u"/bin/sh", u"", u"/no", 60000, 0, PathNotFound, TaskReady, TJobEvent::StartFailed},
        {u"no name", u"", u"", u"/", 60000, 0, InvalidTask, TaskReady, TJobEvent::StartFailed},
    };
    for (const auto &row : cases) {
        SCOPED_TRACE(PathFromText(row.Name));
        const auto task = script(row.Name, row.Script, nightly);
        ASSERT_EQ(task->SetApplicationName(row.Program), TaskResult::Ok);
        ASSERT_EQ(task->SetWorkingDirectory(row.Directory), TaskResult::Ok);
        ASSERT_EQ(task->SetMaxRunTime(row.MaxRunTime), TaskResult::Ok);
        ASSERT_EQ(save(task), TaskResult::Ok);
        EXPECT_EQ(task->Run(), TaskResult::Ok);
        waitForEnd(row.Name);
        const auto after = activated(row.Name);
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
    EXPECT_TRUE(waitUntil([&] { return !output("pid").empty(); }));
    ASSERT_EQ(kill(*runOf(u"a").Runner(), SIGKILL), 0);
    waitForEnd(u"a");
    EXPECT_TRUE(waitUntil([&] { return kill(std::stoi(output("pid")), 0) != 0; }));
    EXPECT_EQ(statusOf(activated(u"a")), TaskResult::TaskTerminated);
    EXPECT_EQ(task->Terminate(), TaskResult::TaskNotRunning);
    EXPECT_EQ(ticked("2027-02-03 10:00"), "run-lost:a");
    EXPECT_NE(value(activated(u"a"), &ITask::GetExitCode), 0U);
    EXPECT_EQ(statusOf(activated(u"a")), TaskResult::TaskTerminated);
    EXPECT_EQ(ticked("2027-02-03 10:01"), "");
    EXPECT_EQ(task->Run(), TaskResult::Ok);
    EXPECT_TRUE(waitUntil([&] { return statusOf(activated(u"a")) == TaskResult::TaskRunning; }));
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

TEST_F(RunTest, ReadsAFolderThatItMayNotWrite)
{
    script(u"a", u"echo ran >> ran", nightly);
    const auto before = bytesOf(path("a.job"));
    using std::filesystem::perms;
    std::filesystem::permissions(m_jobs, perms::owner_read | perms::owner_exec);
    // No mode holds back the superuser, who becomes somebody else.
    constexpr uid_t somebody = 65534;
    if (geteuid() == 0) {
        for (const auto &entry : std::filesystem::recursive_directory_iterator(m_folder.Path()))
            ASSERT_EQ(lchown(entry.path().c_str(), somebody, somebody), 0);
        ASSERT_EQ(lchown(m_folder.Path().c_str(), somebody, somebody), 0);
    }
    const auto status = inChild([&] {
        ASSERT_TRUE(geteuid() != 0 || setuid(somebody) == 0);
        EXPECT_EQ(names(), std::vector<std::u16string>{u"a.job"});
        const auto task = activated(u"a");
        EXPECT_EQ(task->SetComment(u"edited"), TaskResult::Ok);
        EXPECT_EQ(save(task), TaskResult::AccessDenied);
        EXPECT_EQ(save(made(u"b")), TaskResult::AccessDenied);
        EXPECT_EQ(m_scheduler->Delete(u"a"), TaskResult::AccessDenied);
        EXPECT_EQ(task->Run(), TaskResult::AccessDenied);
        EXPECT_EQ(ticked("2027-02-03 03:59"), "");
        EXPECT_EQ(ticked("2027-02-03 04:00"), "start-failed:a");
    });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(bytesOf(path("a.job")), before);
    EXPECT_EQ(filesIn(m_jobs), (std::vector<std::string>{".zelmar01", "a.job"}));
    EXPECT_EQ(output("ran"), "");
    std::filesystem::permissions(m_jobs, perms::owner_all);
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
    EXPECT_TRUE(waitUntil([&] { return !run.Runner(); }));
    using std::filesystem::perms, std::filesystem::status;
    for (const auto &place : {m_folder / "deep", store.Folder(), folder.Side()})
        EXPECT_EQ(status(place).permissions(), perms::owner_all) << place;
    for (const auto &place : {store.Folder() / "a.job", run.OutputFile(), folder.Side() / "log"})
        EXPECT_EQ(status(place).permissions(), perms::owner_read | perms::owner_write) << place;
}

TEST_F(RunTest, SaysThatItHasNoRunner)
{
    const auto task = script(u"a", u"true", nightly);
    const EnvironmentSetting runner("ZELMAR01_JOB_RUNNER", (m_folder / "none").string());
    EXPECT_EQ(task->Run(), TaskResult::ServiceNotInstalled);
}

} // namespace
