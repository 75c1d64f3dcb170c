#include "RunFixture.h"

#include <Zelmar01/tasks/service/store/JobDue.h>
#include <Zelmar01/tasks/service/store/JobLog.h>
#include <Zelmar01/tasks/service/store/JobSystem.h>
#include <Zelmar01/tasks/service/store/RunnerProcess.h>

#include <csignal>
#include <thread>

using namespace Zelmar01;

namespace {

class TickTest : public RunTest
{
protected:
    // A program in the place of the runner.
    void useRunner(const std::string &text)
    {
        m_tick.Runner = m_folder / "runner";
        writeBytes(m_tick.Runner, "#!/bin/sh\n" + text + '\n');
        std::filesystem::permissions(m_tick.Runner, std::filesystem::perms::owner_all);
    }

    void plugIn() { supply("AC/online", "1"); }
    void unplug()
    {
        supply("AC/type", "Mains");
        supply("BAT0/type", "Battery");
        supply("BAT0/status", "Discharging");
        supply("AC/online", "0");
    }
    void supply(const char *name, const std::string &value)
    {
        const auto place = m_folder / "power" / name;
        std::filesystem::create_directories(place.parent_path());
        writeBytes(place, value + '\n');
    }

    int killedTick(const char *now)
    {
        const auto status = inChild([&] { tick(now); });
        m_tick.Runner.clear();
        return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    }
};

const auto everyMinute = repeated(daily("2027-02-03 00:00"), 1, 24 * 60);

std::string minute(int number)
{
    return written(at("2027-02-03 10:00") + TSeconds{60} * number);
}

TEST_F(TickTest, StartsAJobOnceAMinute)
{
    script(u"each", u"echo x >> ran", {everyMinute});
    EXPECT_EQ(ticked(minute(0)), "");
    for (int i = 1; i <= 10; ++i) {
        EXPECT_EQ(ticked(minute(i)), "started:each");
        waitForEnd(u"each");
        EXPECT_EQ(ticked(minute(i)), "") << "the same minute again";
        m_tick.Now = at(minute(i)) + 59;
        EXPECT_TRUE(RunTick(m_tick).Events.empty());
    }
    EXPECT_EQ(output("ran"), "x\nx\nx\nx\nx\nx\nx\nx\nx\nx\n");
    EXPECT_EQ(value(activated(u"each"), &ITask::GetMostRecentRunTime), SystemTimeFromSeconds(at(minute(10))));
    EXPECT_EQ(ReadTickState(m_jobFolder).Last, at(minute(10)) + 59);
    EXPECT_TRUE(TicksArrive(ReadTickState(m_jobFolder), at(minute(13))));
    EXPECT_FALSE(TicksArrive(ReadTickState(m_jobFolder), at(minute(15))));
}

TEST_F(TickTest, StartsOnlyWhatIsDueAndMayStart)
{
    const auto due = once(minute(1));
    script(u"due", u"true", {due, daily(minute(1))});
    script(u"later", u"true", {once(minute(2))});
    script(u"disabled", u"true", {due}, TaskFlag::Disabled);
    script(u"on battery", u"true", {due}, TaskFlag::DontStartIfOnBatteries);
    script(u"needs mains", u"true", {due}, TaskFlag::KillIfGoingOnBatteries);
    script(u"hidden", u"true", {due}, TaskFlag::Hidden);
    auto off = due;
    off.rgFlags = TriggerFlag::Disabled;
    script(u"off", u"true", {off});
    unplug();
    ASSERT_EQ(ticked(minute(0)), "");
    EXPECT_EQ(ticked(minute(1)), "held-on-battery:on battery started:due started:hidden started:needs mains");
    EXPECT_EQ(ticked(minute(2)), "started:later");
    plugIn();
    EXPECT_EQ(ticked(minute(3)), "");
    for (const auto *name : {u"due", u"hidden", u"later", u"needs mains"})
        waitForEnd(name);
}

TEST_F(TickTest, EndsAJobThatNeedsTheMainsWhenTheyFail)
{
    const auto isSlow = std::chrono::milliseconds(2500); // more than what the runner takes to notice
    script(u"a", u"exec sleep 100", {once(minute(1))}, TaskFlag::KillIfGoingOnBatteries);
    ASSERT_EQ(ticked(minute(0)), "");
    unplug();
    ASSERT_EQ(ticked(minute(1)), "started:a");
    std::this_thread::sleep_for(isSlow);
    EXPECT_TRUE(runOf(u"a").IsRunning()) << "it was started on battery";
    plugIn();
    std::this_thread::sleep_for(isSlow);
    EXPECT_TRUE(runOf(u"a").IsRunning());
    unplug();
    waitForEnd(u"a");
    EXPECT_EQ(ReadLog(m_jobFolder, 1).back().Kind, TJobEvent::PowerFailed);
}

TEST_F(TickTest, ReportsARunnerThatDoesNotComeAndStartsTheNextTime)
{
    const struct
    {
        const char *Runner;
        bool IsThere;
        TTaskResult Result;
    } cases[] = {{"gone", false, TaskResult::ServiceNotInstalled}, {"exit 1", true, TRunnerReport().Request}};
    script(u"a", u"true", {everyMinute});
    ASSERT_EQ(ticked(minute(0)), "");
    int next = 1;
    for (const auto &row : cases) {
        SCOPED_TRACE(row.Runner);
        useRunner(row.Runner);
        if (!row.IsThere)
            std::filesystem::remove(m_tick.Runner);
        EXPECT_EQ(ticked(minute(next++)), "start-failed:a");
        EXPECT_EQ(ReadLog(m_jobFolder, 1).back().Value, row.Result);
        m_tick.Runner.clear();
        EXPECT_EQ(ticked(minute(next++)), "started:a");
        waitForEnd(u"a");
    }
}

TEST_F(TickTest, LetsOneOfTwoTicksDoTheWork)
{
    script(u"a", u"echo a >> ran", {everyMinute});
    script(u"b", u"echo b >> ran", {everyMinute});
    ASSERT_EQ(ticked(minute(0)), "");
    for (int i = 1; i <= 5; ++i) {
        std::vector<pid_t> ticks;
        for (int other = 0; other < 4; ++other) {
            ticks.push_back(fork());
            if (ticks.back() == 0) {
                const auto result = tick(minute(i)).Result;
                _exit(result == TaskResult::Ok || result == TaskResult::AlreadyRunning ? 0 : 1);
            }
        }
        for (const auto child : ticks) {
            int status = -1;
            waitpid(child, &status, 0);
            EXPECT_EQ(status, 0);
        }
        waitForEnd(u"a");
        waitForEnd(u"b");
        EXPECT_EQ(output("ran").size(), static_cast<std::size_t>(4 * i));
    }
}

TEST_F(TickTest, ReportsAStartThatWasLostAndDoesNotMakeItLater)
{
    script(u"a", u"echo x >> ran", {once(minute(1)), once(minute(3))});
    script(u"b", u"echo x >> ran-b", {once(minute(1))});
    ASSERT_EQ(ticked(minute(0)), "");
    useRunner("kill -9 $PPID");
    ASSERT_EQ(killedTick(minute(1).c_str()), SIGKILL);
    EXPECT_EQ(ReadTickState(m_jobFolder).Last, at(minute(0)));
    EXPECT_EQ(ticked(minute(2)), "start-lost:a started:b") << "the tick had not come to b";
    EXPECT_EQ(ticked(minute(3)), "started:a");
    waitForEnd(u"a");
    waitForEnd(u"b");
    EXPECT_EQ(output("ran"), "x\n");
    EXPECT_EQ(output("ran-b"), "x\n");
}

TEST_F(TickTest, DoesNotRepeatAStartWhoseTickWasKilled)
{
    script(u"a", u"sleep 0.3; echo x >> ran", {once(minute(1))});
    ASSERT_EQ(ticked(minute(0)), "");
    useRunner("'" ZELMAR01_JOB_RUNNER "' \"$@\"; kill -9 $PPID");
    ASSERT_EQ(killedTick(minute(1).c_str()), SIGKILL);
    EXPECT_TRUE(waitUntil([&] { return runOf(u"a").IsRunning(); }));
    EXPECT_EQ(ticked(minute(2)), "");
    waitForEnd(u"a");
    EXPECT_EQ(ticked(minute(3)), "");
    EXPECT_EQ(output("ran"), "x\n");
}

TEST_F(TickTest, TakesAStartFromARunnerThatComesTooLate)
{
    script(u"a", u"echo x >> ran", {once(minute(1))});
    ASSERT_EQ(ticked(minute(0)), "");
    useRunner("kill -9 $PPID; sleep 0.5; '" ZELMAR01_JOB_RUNNER "' \"$@\"; touch '" +
              (m_folder / "over").string() + "'");
    ASSERT_EQ(killedTick(minute(1).c_str()), SIGKILL);
    EXPECT_EQ(ticked(minute(2)), "start-lost:a");
    EXPECT_TRUE(waitUntil([&] { return std::filesystem::exists(m_folder / "over"); }));
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    EXPECT_EQ(output("ran"), "");
}

TEST_F(TickTest, WakesUpAfterADay)
{
    script(u"each", u"echo x >> ran", {everyMinute});
    script(u"nightly", u"true", {daily("2027-01-01 02:00")});
    script(u"recent", u"true", {once("2027-02-04 09:51")});
    script(u"too late", u"true", {once("2027-02-04 09:49")}, TaskFlag::DeleteWhenDone);
    ASSERT_EQ(ticked(minute(0)), "");
    EXPECT_EQ(ticked("2027-02-04 10:00"),
              "missed:each*1439 missed:nightly*1 missed:too late*1 started:each started:recent");
    waitForEnd(u"each");
    waitForEnd(u"recent");
    EXPECT_EQ(output("ran"), "x\n");
    m_now = m_tick.Now;
    EXPECT_EQ(statusOf(activated(u"too late")), TaskResult::TaskNoMoreRuns);
    EXPECT_EQ(ticked("2027-02-04 10:01"), "started:each");
    waitForEnd(u"each");
}

TEST_F(TickTest, SkipsAStartWhileItsJobRuns)
{
    const auto task = script(u"slow", u"echo x >> ran; exec sleep 100", {everyMinute});
    ASSERT_EQ(ticked(minute(0)), "");
    EXPECT_EQ(ticked(minute(1)), "started:slow");
    EXPECT_EQ(ticked(minute(2)), "still-running:slow");
    EXPECT_TRUE(waitUntil([&] { return !output("ran").empty(); }));
    EXPECT_EQ(task->Terminate(), TaskResult::Ok);
    waitForEnd(u"slow");
    EXPECT_EQ(output("ran"), "x\n");
}

TEST_F(TickTest, SurvivesAClockThatIsSetBack)
{
    script(u"each", u"echo x >> ran", {everyMinute});
    ASSERT_EQ(ticked(minute(0)), "");
    EXPECT_EQ(ticked(minute(1)), "started:each");
    waitForEnd(u"each");
    EXPECT_EQ(ticked(minute(-1)), "");
    EXPECT_EQ(ticked(minute(0)), "");
    EXPECT_EQ(ticked(minute(1)), "");
    EXPECT_EQ(ticked(minute(2)), "started:each");
    waitForEnd(u"each");
    // A clock that was years ahead must not keep a job from starting.
    EXPECT_EQ(ticked("2031-01-01 00:00"), "missed:each*19999 started:each");
    waitForEnd(u"each");
    EXPECT_EQ(ticked(minute(5)), "");
    EXPECT_EQ(ticked(minute(6)), "started:each");
    waitForEnd(u"each");
}

TEST_F(TickTest, ReportsAFileThatCannotBeUsedOnceAndLeavesItAlone)
{
    script(u"good", u"echo x >> ran", {everyMinute});
    writeBytes(path("damaged.job"), "damaged");
    script(u"open to all", u"echo y >> ran", {everyMinute});
    std::filesystem::permissions(path("open to all.job"), std::filesystem::perms::all);
    EXPECT_EQ(ticked(minute(0)), "unreadable:damaged unreadable:open to all");
    EXPECT_EQ(ticked(minute(1)), "started:good");
    waitForEnd(u"good");
    EXPECT_EQ(output("ran"), "x\n");
    EXPECT_EQ(bytesOf(path("damaged.job")), "damaged");
    EXPECT_EQ(ReadTickState(m_jobFolder).Unusable,
              (std::vector<TUnusableJob>{{u"damaged.job", TaskResult::UnknownObjectVersion},
                                         {u"open to all.job", TaskResult::AccessDenied}}));
    std::filesystem::permissions(m_jobs, std::filesystem::perms::all);
    EXPECT_EQ(tick(minute(2)).Result, TaskResult::AccessDenied);
}

TEST_F(TickTest, StartsWithTheComputer)
{
    script(u"boot", u"sleep 0.3; echo x >> ran", {starting("2027-02-03", TASK_EVENT_TRIGGER_AT_SYSTEMSTART)});
    script(u"later", u"true", {starting("2027-02-04", TASK_EVENT_TRIGGER_AT_SYSTEMSTART)});
    ASSERT_EQ(ticked(minute(0)), "");
    ASSERT_EQ(ticked(minute(1)), "");
    m_tick.BootId = "boot-2";
    EXPECT_EQ(ticked(minute(30)), "started:boot");
    waitForEnd(u"boot");
    EXPECT_EQ(ticked(minute(31)), "");
    m_tick.BootId = "boot-3";
    useRunner("'" ZELMAR01_JOB_RUNNER "' \"$@\"; kill -9 $PPID");
    ASSERT_EQ(killedTick(minute(40).c_str()), SIGKILL);
    EXPECT_TRUE(waitUntil([&] { return runOf(u"boot").IsRunning(); }));
    waitForEnd(u"boot");
    EXPECT_EQ(ticked(minute(41)), "") << "the tick was killed after the start";
    EXPECT_EQ(output("ran"), "x\nx\n");
}

TEST_F(TickTest, KeepsTheEndOfALongLog)
{
    ASSERT_EQ(MakePrivateFolder(m_jobFolder.Side()), TaskResult::Ok);
    std::vector<TJobEvent> events;
    for (int i = 0; i < 4000; ++i)
        events.push_back({TJobEvent::Ended, i, std::u16string(200, u'é') + u".job", i, {}});
    for (auto some = events.begin(); some != events.end(); some += 1000)
        ASSERT_EQ(AppendToLog(m_jobFolder, {some, some + 1000}), TaskResult::Ok);
    EXPECT_LE(file_size(m_jobFolder.Side() / "log"), std::size_t(256) << 10);
    const auto kept = ReadLog(m_jobFolder, 9999);
    ASSERT_GE(kept.size(), 250U);
    EXPECT_TRUE(std::equal(kept.begin(), kept.end(), events.end() - std::ssize(kept)));
}

TEST(EndOfDuration, IsThatOfTheStartWhichIsRepeated)
{
    const auto hourly = repeated(daily("2027-02-01 20:00"), 60, 600);
    const auto plain = repeated(once("2027-02-03 10:00"), 0, 30);
    constexpr auto kill = TriggerFlag::KillAtDurationEnd;
    const struct
    {
        std::vector<TASK_TRIGGER> Triggers;
        std::uint32_t Flags;
        const char *Start, *End;
    } cases[] = {
        {{hourly}, kill, "2027-02-03 20:00", "2027-02-04 06:00"},
        {{hourly}, kill, "2027-02-04 05:00", "2027-02-04 06:00"},
        {{hourly, plain}, kill, "2027-02-03 10:00", "2027-02-03 10:30"},
        {{hourly}, 0, "2027-02-03 20:00", ""},
        {{hourly}, kill | TriggerFlag::Disabled, "2027-02-03 20:00", ""},
    };
    for (const auto &row : cases) {
        TJob job;
        job.Triggers = row.Triggers;
        for (auto &trigger : job.Triggers)
            trigger.rgFlags = row.Flags;
        const auto end = EndOfDuration(job, at(row.Start), TTimeZone());
        EXPECT_EQ(end ? written(*end) : "", row.End) << row.Start;
    }
}

} // namespace
