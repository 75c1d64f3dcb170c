// What holds for every task service: that of Windows, as far as Wine has it, and the job store.
#include <tasks/service/ServiceCases.h>

#include <Zelmar01/tasks/service/TaskAllocator.h>

#include <tasks/service/Samples.h>

#include <chrono>
#include <cstring>
#include <ctime>
#include <functional>

using namespace Zelmar01;

namespace {

// The wall clock of this computer, to the minute, in the seconds of its calendar.
TSeconds wallClock()
{
    const auto now = std::time(nullptr);
    const auto local = *std::localtime(&now);
    return DayFromCivil({local.tm_year + 1900, static_cast<unsigned>(local.tm_mon) + 1,
                         static_cast<unsigned>(local.tm_mday)}) *
               SecondsADay +
           local.tm_hour * SecondsAnHour + local.tm_min * SecondsAMinute;
}

TASK_TRIGGER without(TASK_TRIGGER trigger, std::uint16_t TASK_TRIGGER::*field, std::uint16_t value)
{
    trigger.*field = value;
    return trigger;
}

constexpr std::uint32_t threeDays = 259'200'000;

} // namespace

TEST_F(TaskService, GivesANewJobTheseDefaults)
{
    const auto task = made(u"new");
    for (const auto get : {&ITask::GetApplicationName, &ITask::GetParameters, &ITask::GetWorkingDirectory})
        EXPECT_EQ(text(task, get), u"");
    for (const auto get : {&IScheduledWorkItem::GetComment, &IScheduledWorkItem::GetCreator})
        EXPECT_EQ(text(task, get), u"");
    std::uint32_t exitCode = 9;
    EXPECT_EQ(value(task, &ITask::GetFlags), 0U);
    EXPECT_EQ(value(task, &ITask::GetPriority), PriorityClass::Normal);
    EXPECT_EQ(value(task, &ITask::GetMaxRunTime), threeDays);
    EXPECT_EQ(task->GetExitCode(exitCode), TaskResult::TaskHasNotRun);
    EXPECT_EQ(exitCode, 0U);

    std::uint16_t idle = 9, deadline = 9, size = 9;
    std::uint8_t *data = nullptr;
    EXPECT_EQ(task->GetIdleWait(idle, deadline), TaskResult::Ok);
    EXPECT_EQ(std::pair(idle, deadline), std::pair(std::uint16_t{10}, std::uint16_t{60}));
    EXPECT_EQ(value(task, &ITask::GetTriggerCount), 0);
    EXPECT_EQ(task->GetWorkItemData(size, data), TaskResult::Ok);
    EXPECT_EQ(size, 0);
    EXPECT_EQ(data, nullptr);
    SYSTEMTIME moment{1, 1, 1, 1, 1, 1, 1, 1};
    EXPECT_EQ(task->GetMostRecentRunTime(moment), TaskResult::TaskHasNotRun);
    EXPECT_EQ(moment, SYSTEMTIME{});
    EXPECT_EQ(statusOf(task), TaskResult::TaskNotScheduled);
}

TEST_F(TaskService, KeepsWhatIsSaved)
{
    const struct
    {
        TTaskResult (ITask::*Set)(const char16_t *);
        TTaskResult (ITask::*Get)(char16_t *&);
        const char16_t *Text;
    } texts[] = {
        {&ITask::SetApplicationName, &ITask::GetApplicationName, u"no such program.exe"},
        {&ITask::SetParameters, &ITask::GetParameters, u"/x \"Bijoux & Cie\" %1"},
        {&ITask::SetWorkingDirectory, &ITask::GetWorkingDirectory, u"C:\\Été"},
        {&ITask::SetComment, &ITask::GetComment, u"Mise à jour du stock\r\n\U0001F48D"},
        {&ITask::SetCreator, &ITask::GetCreator, u"東"},
    };
    const std::uint8_t data[] = {0, 1, 0xFF, 0};
    {
        const auto task = made(u"Export de nuit");
        for (const auto &row : texts)
            EXPECT_EQ(((*task).*row.Set)(row.Text), TaskResult::Ok);
        EXPECT_EQ(task->SetWorkItemData(sizeof data, data), TaskResult::Ok);
        EXPECT_EQ(task->SetFlags(TaskFlag::Disabled | TaskFlag::Hidden), TaskResult::Ok);
        EXPECT_EQ(task->SetMaxRunTime(UnlimitedRunTime), TaskResult::Ok);
        if (m_tested.CanSetPriority) {
            EXPECT_EQ(task->SetPriority(PriorityClass::High), TaskResult::Ok);
            EXPECT_EQ(task->SetIdleWait(3, 4), TaskResult::Ok);
        }
        add(task, daily("2027-01-01 04:00", 3));
        add(task, ending(weekly("2027-01-02 05:00", 1, Mon | Sat), "2028-02-29"));
        ASSERT_EQ(save(task), TaskResult::Ok);
    }
    const auto task = activated(u"Export de nuit");
    for (const auto &row : texts)
        EXPECT_EQ(text(task, row.Get), row.Text);
    std::uint16_t size = 0;
    std::uint8_t *block = nullptr;
    ASSERT_EQ(task->GetWorkItemData(size, block), TaskResult::Ok);
    EXPECT_EQ(std::vector(block, block + size), std::vector(data, data + sizeof data));
    allocator().Free(block);
    EXPECT_EQ(value(task, &ITask::GetFlags), TaskFlag::Disabled | TaskFlag::Hidden);
    EXPECT_EQ(value(task, &ITask::GetMaxRunTime), UnlimitedRunTime);
    if (m_tested.CanSetPriority) {
        EXPECT_EQ(value(task, &ITask::GetPriority), PriorityClass::High);
    }
    ASSERT_EQ(value(task, &ITask::GetTriggerCount), 2);
    std::shared_ptr<ITaskTrigger> trigger;
    TASK_TRIGGER record;
    ASSERT_EQ(task->GetTrigger(1, trigger), TaskResult::Ok);
    ASSERT_EQ(trigger->GetTrigger(record), TaskResult::Ok);
    EXPECT_EQ(record.TriggerType, TASK_TIME_TRIGGER_WEEKLY);
    EXPECT_EQ(record.Type.Weekly.rgfDaysOfTheWeek, Mon | Sat);
    EXPECT_EQ(record.rgFlags, TriggerFlag::HasEndDate);
    EXPECT_EQ(record.wEndDay, 29);
}

TEST_F(TaskService, TakesNoNullForAText)
{
    const auto task = made(u"a");
    std::shared_ptr<ITask> none;
    EXPECT_EQ(make(nullptr, none), TaskResult::InvalidArgument);
    EXPECT_EQ(activate(nullptr, none), TaskResult::InvalidArgument);
    EXPECT_EQ(m_scheduler->Delete(nullptr), TaskResult::InvalidArgument);
    EXPECT_EQ(m_scheduler->AddWorkItem(u"b", nullptr), TaskResult::InvalidArgument);
    for (const auto set : {&ITask::SetApplicationName, &ITask::SetParameters, &ITask::SetWorkingDirectory})
        EXPECT_EQ(((*task).*set)(nullptr), TaskResult::InvalidArgument);
    for (const auto set : {&IScheduledWorkItem::SetComment, &IScheduledWorkItem::SetCreator})
        EXPECT_EQ(((*task).*set)(nullptr), TaskResult::InvalidArgument);
    EXPECT_EQ(task->SetAccountInformation(nullptr, nullptr), TaskResult::InvalidArgument);
    EXPECT_EQ(task->SetWorkItemData(1, nullptr), TaskResult::InvalidArgument);
    EXPECT_EQ(fileOf(task)->IsDirty(), TaskResult::False);
}

TEST_F(TaskService, ChecksTriggers)
{
    const auto good = daily("2027-02-28 23:59");
    const auto logon = starting("2027-01-01", TASK_EVENT_TRIGGER_AT_LOGON);
    const auto badEnd = ending(good, "2027-02-28");
    const struct
    {
        const char *Label;
        TASK_TRIGGER Trigger;
        bool Taken;
    } cases[] = {
        {"once", once("2028-02-29 00:00"), true},
        {"daily", good, true},
        {"weekly", weekly("2027-01-01 01:00", 1, Sun | Wed), true},
        {"monthly date", byDate("2027-01-01 01:00", bit(1) | bit(31)), true},
        {"monthly weekday", byWeekday("2027-01-01 01:00", 5, Fri), true},
        {"idle", starting("2027-01-01", TASK_EVENT_TRIGGER_ON_IDLE), true},
        {"start", starting("2027-01-01", TASK_EVENT_TRIGGER_AT_SYSTEMSTART), true},
        {"logon", logon, true},
        {"size", without(good, &TASK_TRIGGER::cbTriggerSize, 47), false},
        {"month 13", without(good, &TASK_TRIGGER::wBeginMonth, 13), false},
        {"30 February", without(good, &TASK_TRIGGER::wBeginDay, 30), false},
        {"hour 24", without(good, &TASK_TRIGGER::wStartHour, 24), false},
        {"minute 60", without(good, &TASK_TRIGGER::wStartMinute, 60), false},
        {"end date", badEnd, true},
        {"end before begin", ending(good, "2026-01-01"), true},
        {"bad end date", without(badEnd, &TASK_TRIGGER::wEndMonth, 0), false},
        {"bad end date without its flag", without(good, &TASK_TRIGGER::wEndMonth, 99), true},
        {"interval", repeated(good, 10, 11), true},
        {"duration of one interval", repeated(good, 10, 10), false},
        {"interval without duration", repeated(good, 1, 0), false},
        {"duration without interval", repeated(good, 0, 60), true},
    };
    const auto task = made(u"a");
    std::uint16_t index = 0;
    std::shared_ptr<ITaskTrigger> trigger;
    ASSERT_EQ(task->CreateTrigger(index, trigger), TaskResult::Ok);
    EXPECT_EQ(trigger->SetTrigger(nullptr), TaskResult::InvalidArgument);
    for (const auto &row : cases) {
        SCOPED_TRACE(row.Label);
        ASSERT_EQ(trigger->SetTrigger(&good), TaskResult::Ok);
        auto wanted = row.Trigger;
        wanted.Reserved1 = wanted.Reserved2 = wanted.wRandomMinutesInterval = 7;
        EXPECT_EQ(trigger->SetTrigger(&wanted), row.Taken ? TaskResult::Ok : TaskResult::InvalidArgument);
        TASK_TRIGGER got;
        got.cbTriggerSize = 0;
        ASSERT_EQ(trigger->GetTrigger(got), TaskResult::Ok);
        EXPECT_EQ(std::memcmp(&got, row.Taken ? &row.Trigger : &good, sizeof got), 0);
    }
}

TEST_F(TaskService, KnowsTriggersByTheirIndex)
{
    std::shared_ptr<ITaskTrigger> first, second;
    std::uint16_t index = 9;
    TASK_TRIGGER record;
    const auto wanted = daily("2027-05-01 07:00");
    {
        const auto task = made(u"a");
        EXPECT_EQ(task->GetTrigger(0, first), TaskResult::TriggerNotFound);
        EXPECT_EQ(task->DeleteTrigger(0), TaskResult::TriggerNotFound);
        const auto before = wallClock();
        ASSERT_EQ(task->CreateTrigger(index, first), TaskResult::Ok);
        ASSERT_EQ(first->GetTrigger(record), TaskResult::Ok);
        EXPECT_EQ(record.TriggerType, TASK_TIME_TRIGGER_DAILY);
        EXPECT_EQ(record.Type.Daily.DaysInterval, 1);
        EXPECT_EQ(record.rgFlags, TriggerFlag::Disabled);
        const auto begin =
            DayFromCivil({record.wBeginYear, record.wBeginMonth, record.wBeginDay}) * SecondsADay +
            record.wStartHour * SecondsAnHour + record.wStartMinute * SecondsAMinute;
        EXPECT_TRUE(begin >= before && begin <= wallClock()) << written(begin);

        ASSERT_EQ(task->CreateTrigger(index, second), TaskResult::Ok);
        EXPECT_EQ(index, 1);
        EXPECT_EQ(second->SetTrigger(&wanted), TaskResult::Ok);
        EXPECT_EQ(task->DeleteTrigger(0), TaskResult::Ok);
        EXPECT_EQ(value(task, &ITask::GetTriggerCount), 1);
    }
    // They keep their job.
    ASSERT_EQ(first->GetTrigger(record), TaskResult::Ok);
    EXPECT_EQ(record.wStartHour, 7);
    EXPECT_EQ(second->SetTrigger(&wanted), TaskResult::Fail);
}

TEST_F(TaskService, FollowsTheRulesOfFiles)
{
    const auto task = made(u"a");
    const auto file = fileOf(task);
    const auto own = pathText("a.job"), other = pathText("b.job"), copy = pathText("c.job");
    EXPECT_EQ(value(file, &IPersistFile::GetClassID), ClsidTask);
    EXPECT_EQ(std::filesystem::path(text(file, &IPersistFile::GetCurFile)).filename(), "a.job");
    EXPECT_EQ(file->IsDirty(), TaskResult::False);
    EXPECT_EQ(task->SetComment(u"one"), TaskResult::Ok);
    EXPECT_EQ(file->IsDirty(), TaskResult::Ok);
    add(task, daily("2027-01-01 04:00"));
    EXPECT_FALSE(std::filesystem::exists(own));
    EXPECT_EQ(file->Save(nullptr, false), TaskResult::Ok);
    EXPECT_TRUE(std::filesystem::exists(own));
    EXPECT_EQ(file->IsDirty(), TaskResult::False);
    EXPECT_EQ(file->Save(nullptr, true), TaskResult::Ok);
    EXPECT_EQ(statusOf(task), TaskResult::TaskHasNotRun);

    const auto second = made(u"b");
    add(second, daily("2027-01-01 04:00"));
    ASSERT_EQ(save(second), TaskResult::Ok);
    EXPECT_EQ(file->Save(other.c_str(), true), TaskResult::FileExists);
    EXPECT_EQ(file->Save(own.c_str(), true), TaskResult::FileExists);
    EXPECT_EQ(file->Load(copy.c_str(), 0), TaskResult::FileNotFound);
    EXPECT_EQ(m_scheduler->AddWorkItem(u"b", task), TaskResult::FileExists);
    EXPECT_EQ(m_scheduler->AddWorkItem(u"c", task), TaskResult::Ok);
    EXPECT_EQ(std::filesystem::path(text(file, &IPersistFile::GetCurFile)).filename(), "c.job");
    EXPECT_EQ(m_scheduler->AddWorkItem(u"d", task), TaskResult::Ok);
    EXPECT_EQ(names(), (std::vector<std::u16string>{u"a.job", u"b.job", u"c.job", u"d.job"}));

    EXPECT_EQ(m_scheduler->Delete(u"B"), TaskResult::Ok);
    EXPECT_EQ(m_scheduler->Delete(u"b"), TaskResult::FileNotFound);
    EXPECT_FALSE(std::filesystem::exists(other));
}

TEST_F(TaskService, RefusesWhatItDoesNotKnow)
{
    std::shared_ptr<ITaskObject> object;
    EXPECT_EQ(m_scheduler->NewWorkItem(u"x", ClsidTaskScheduler, ITask::Iid, object),
              TaskResult::ClassNotAvailable);
    EXPECT_EQ(m_scheduler->NewWorkItem(u"x", ClsidTask, ITaskTrigger::Iid, object), TaskResult::NoInterface);
    EXPECT_EQ(m_scheduler->Activate(u"unknown", ITask::Iid, object), TaskResult::FileNotFound);
    EXPECT_EQ(m_scheduler->Delete(u"unknown"), TaskResult::FileNotFound);
    for (const auto *name : {u"a.txt", u"export.2027"}) {
        EXPECT_EQ(m_scheduler->NewWorkItem(name, ClsidTask, ITask::Iid, object), TaskResult::InvalidArgument);
        EXPECT_EQ(m_scheduler->Delete(name), TaskResult::InvalidArgument);
    }
    EXPECT_EQ(object, nullptr);
    const auto task = made(u"x");
    EXPECT_EQ(task->QueryInterface(ITaskTrigger::Iid, object), TaskResult::NoInterface);
    EXPECT_EQ(m_scheduler->QueryInterface(ITask::Iid, object), TaskResult::NoInterface);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(task->Run(), TaskResult::TaskNotReady);
    EXPECT_EQ(task->Terminate(), TaskResult::TaskNotRunning);
    for (const auto result : {TaskResult::TaskNotReady, TaskResult::FileNotFound, ResultOf(0x8EED1234)})
        EXPECT_FALSE(m_tested.Service->DescribeResult(result).empty()) << ResultName(result);
}

TEST_F(TaskService, ListsNames)
{
    for (const auto *name : {u"b", u"A", u"été"}) {
        const auto task = made(name);
        add(task, daily("2027-01-01 04:00"));
        ASSERT_EQ(save(task), TaskResult::Ok);
    }
    const std::vector<std::u16string> all{u"A.job", u"b.job", u"été.job"};
    EXPECT_EQ(names(), all);
    for (const auto &name : all)
        EXPECT_NE(activated(name.c_str()), nullptr);

    std::shared_ptr<IEnumWorkItems> listing, copy;
    ASSERT_EQ(m_scheduler->Enum(listing), TaskResult::Ok);
    std::uint32_t fetched = 7;
    char16_t **list = nullptr;
    const auto release = [&] {
        for (std::uint32_t i = 0; i < fetched; ++i)
            allocator().Free(list[i]);
        allocator().Free(list);
    };
    EXPECT_EQ(listing->Next(0, &list, &fetched), TaskResult::InvalidArgument);
    EXPECT_EQ(listing->Next(1, nullptr, &fetched), TaskResult::InvalidArgument);
    EXPECT_EQ(listing->Next(2, &list, nullptr), TaskResult::InvalidArgument);
    EXPECT_EQ(listing->Skip(2), TaskResult::Ok);
    EXPECT_EQ(listing->Next(2, &list, &fetched), TaskResult::False);
    ASSERT_EQ(fetched, 1U);
    release();
    EXPECT_EQ(listing->Next(1, &list, &fetched), TaskResult::False);
    EXPECT_EQ(fetched, 0U);
    EXPECT_EQ(list, nullptr);
    EXPECT_EQ(listing->Skip(1), TaskResult::False);
    EXPECT_EQ(listing->Reset(), TaskResult::Ok);
    EXPECT_EQ(listing->Next(3, &list, &fetched), TaskResult::Ok);
    ASSERT_EQ(fetched, 3U);
    release();
}

TEST_F(TaskService, TellsTheNextRun)
{
    const auto soon = wallClock() + 10 * SecondsAMinute;
    const auto time = written(soon).substr(10);
    const auto yesterday = written(soon - SecondsADay), later = written(soon + 3 * SecondsADay);
    auto off = daily(yesterday);
    off.rgFlags = TriggerFlag::Disabled;
    const auto logon = starting(yesterday, TASK_EVENT_TRIGGER_AT_LOGON);
    const auto idle = starting(yesterday, TASK_EVENT_TRIGGER_ON_IDLE);
    const struct
    {
        const char *Label;
        std::vector<TASK_TRIGGER> Triggers;
        std::uint32_t Flags;
        TTaskResult Result;
        std::string Next;
    } cases[] = {
        {"once", {once(later)}, 0, TaskResult::Ok, later},
        {"daily", {daily(yesterday)}, 0, TaskResult::Ok, written(soon)},
        {"weekly", {weekly(yesterday, 1, 0x7F)}, 0, TaskResult::Ok, written(soon)},
        {"earliest", {once(later), off, daily(yesterday)}, 0, TaskResult::Ok, written(soon)},
        {"event", {logon, idle}, 0, TaskResult::EventTrigger, ""},
        {"event and time", {logon, once(later)}, 0, TaskResult::Ok, later},
        {"none", {}, 0, TaskResult::TaskNoValidTriggers, ""},
        {"off", {off}, 0, TaskResult::TaskNoValidTriggers, ""},
        {"disabled", {daily(yesterday)}, TaskFlag::Disabled, TaskResult::TaskDisabled, ""},
    };
    for (const auto &row : cases) {
        SCOPED_TRACE(row.Label);
        const auto task = made(u"a");
        for (const auto &trigger : row.Triggers)
            add(task, trigger);
        ASSERT_EQ(task->SetFlags(row.Flags), TaskResult::Ok);
        SYSTEMTIME next{1, 2, 3, 4, 5, 6, 7, 8};
        EXPECT_EQ(task->GetNextRunTime(next), row.Result);
        EXPECT_EQ(next, row.Next.empty() ? SYSTEMTIME{} : SystemTimeFromSeconds(at(row.Next)));
    }
}

TEST_F(TaskService, RunsJobs)
{
    if (!m_tested.CanRun)
        GTEST_SKIP() << "this one does not run jobs";
    const auto later = written(wallClock() + SecondsADay);
    const auto started = [&](const char16_t *name, const std::u16string &parameters) {
        const auto task = made(name);
        EXPECT_EQ(task->SetApplicationName(m_tested.Program.c_str()), TaskResult::Ok);
        EXPECT_EQ(task->SetParameters(parameters.c_str()), TaskResult::Ok);
        const auto folder = std::filesystem::temp_directory_path().u16string();
        EXPECT_EQ(task->SetWorkingDirectory(folder.c_str()), TaskResult::Ok);
        add(task, once(later));
        EXPECT_EQ(save(task), TaskResult::Ok);
        EXPECT_EQ(task->Run(), TaskResult::Ok);
        EXPECT_EQ(statusOf(task), TaskResult::TaskHasNotRun);
    };
    using TClock = std::chrono::steady_clock;
    const auto comesTo = [&](const char16_t *name, const std::function<bool(ITask &)> &condition) {
        auto asked = TClock::now();
        return waitUntil([&] {
            const auto task = activated(name);
            const bool isMissed = m_tested.MayMissARun && statusOf(task) == TaskResult::TaskHasNotRun &&
                                  TClock::now() - asked > std::chrono::seconds(1);
            if (isMissed) {
                asked = TClock::now();
                task->Run();
            }
            return condition(*task);
        });
    };
    const auto before = wallClock();
    started(u"ends", m_tested.EndsWithSeven);
    std::uint32_t exitCode = 0;
    EXPECT_TRUE(comesTo(
        u"ends", [&](ITask &task) { return task.GetExitCode(exitCode) == TaskResult::Ok && exitCode == 7; }));
    EXPECT_NE(statusOf(activated(u"ends")), TaskResult::TaskRunning);
    SYSTEMTIME lastRun;
    EXPECT_EQ(activated(u"ends")->GetMostRecentRunTime(lastRun), TaskResult::Ok);
    const auto ran = SecondsFromSystemTime(lastRun);
    ASSERT_TRUE(ran);
    EXPECT_TRUE(*ran >= before && *ran <= wallClock() + SecondsAMinute) << written(*ran);

    started(u"stays", m_tested.StaysForAWhile);
    TTaskResult status = 0;
    const auto runs = [&](ITask &task) {
        return task.GetStatus(status) == TaskResult::Ok && status == TaskResult::TaskRunning;
    };
    EXPECT_TRUE(comesTo(u"stays", runs));
    EXPECT_EQ(activated(u"stays")->Terminate(), TaskResult::Ok);
    EXPECT_TRUE(comesTo(u"stays", [&](ITask &task) { return !runs(task); }));
    EXPECT_EQ(activated(u"stays")->Terminate(), TaskResult::TaskNotRunning);
}

TEST_F(TaskService, IsOfThisComputer)
{
    const auto own = text(m_scheduler, &ITaskScheduler::GetTargetComputer);
    EXPECT_TRUE(own.starts_with(u"\\\\") && own.size() > 2);
    EXPECT_EQ(m_scheduler->SetTargetComputer(nullptr), TaskResult::Ok);
    EXPECT_EQ(m_scheduler->SetTargetComputer(own.c_str()), TaskResult::Ok);
    EXPECT_EQ(m_scheduler->SetTargetComputer(own.c_str() + 2), TaskResult::Ok);
    EXPECT_EQ(m_scheduler->SetTargetComputer(u"\\\\zelmar01.invalid"), TaskResult::BadNetPath);
    EXPECT_EQ(text(m_scheduler, &ITaskScheduler::GetTargetComputer), own);
}

TEST_F(TaskService, MayGoBeforeItsObjects)
{
    std::shared_ptr<ITask> task = made(u"a");
    add(task, daily("2027-01-01 04:00"));
    ASSERT_EQ(save(task), TaskResult::Ok);
    m_scheduler.reset();
    m_tested.Service.reset();
    EXPECT_EQ(value(task, &ITask::GetTriggerCount), 1);
    EXPECT_EQ(task->SetComment(u"later"), TaskResult::Ok);
    char16_t *comment = nullptr;
    ASSERT_EQ(task->GetComment(comment), TaskResult::Ok);
    EXPECT_EQ(std::u16string(comment), u"later"); // a block that nobody can give back any more
}

TEST_F(TaskService, RunsOnceItWasStarted)
{
    for (int i = 0; i < 2; ++i) {
        const auto start = m_tested.Service->StartScheduler();
        EXPECT_EQ(start.FailedStep, 0) << start.Text;
    }
}
