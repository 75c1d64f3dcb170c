#include "StoreFixture.h"

#include <thread>

using namespace Zelmar01;

namespace {

using JobStore = StoreTest;

TEST_F(JobStore, TakesTheseNames)
{
    // 250 bytes of UTF-8 with the ending, and more than that in any encoding.
    const std::u16string longest(123, u'é'), tooLong(251, u'é');
    const std::pair<std::u16string, std::u16string> taken[] = {{u"Backup", u"Backup.job"},
                                                               {u"Backup.JOB", u"Backup.JOB"},
                                                               {u"Été à 12 h.Job", u"Été à 12 h.Job"},
                                                               {u"export.2027.job", u"export.2027.job"},
                                                               {u" .job", u" .job"},
                                                               {u"\uFEFFa", u"\uFEFFa.job"},
                                                               {longest, longest + u".job"}};
    for (const auto &[name, file] : taken) {
        SCOPED_TRACE(PathFromText(name));
        const auto task = made(name.c_str());
        EXPECT_EQ(text(fileOf(task), &IPersistFile::GetCurFile), TextFromPath(m_jobs / PathFromText(file)));
        EXPECT_EQ(save(task), TaskResult::Ok);
        EXPECT_EQ(names(), std::vector{file});
        EXPECT_NE(activated(name.c_str()), nullptr);
        EXPECT_EQ(m_scheduler->Delete(name.c_str()), TaskResult::Ok);
    }
    for (const auto *name : {tooLong.c_str(), u"export.2027", u"Backup.com", u"Backup.", u".job", u"",
                             u"a\\b", u"a/b", u"..\\x.job", u"../x.job", u"a\nb", u"a\x1b[2J"}) {
        SCOPED_TRACE(PathFromText(name));
        std::shared_ptr<ITask> task;
        EXPECT_EQ(make(name, task), TaskResult::InvalidArgument);
        EXPECT_EQ(activate(name, task), TaskResult::InvalidArgument);
        EXPECT_EQ(m_scheduler->Delete(name), TaskResult::InvalidArgument);
    }
}

TEST_F(JobStore, FindsAJobInAnyLetterCase)
{
    ASSERT_EQ(save(made(u"Étiquettes")), TaskResult::Ok);
    const auto own = TextFromPath(m_store.Folder() / PathFromText(u"Étiquettes.job"));
    for (const auto *name : {u"étiquettes", u"ÉTIQUETTES.JOB", u"Étiquettes.job"}) {
        EXPECT_EQ(text(fileOf(activated(name)), &IPersistFile::GetCurFile), own);
        std::shared_ptr<ITask> task;
        EXPECT_EQ(make(name, task), TaskResult::FileExists);
        EXPECT_EQ(m_scheduler->AddWorkItem(name, made(u"other")), TaskResult::FileExists);
    }
    EXPECT_EQ(m_scheduler->Delete(u"éTIQUETTES"), TaskResult::Ok);
    EXPECT_EQ(m_scheduler->Delete(u"éTIQUETTES"), TaskResult::FileNotFound);
}

TEST_F(JobStore, ListsTheFilesOfJobsAlone)
{
    for (const auto *file : {"a.job", "B.JOB", "c.job.new", "d.jobs", ".job", "e.com", "f"})
        writeBytes(path(file), "");
    std::filesystem::create_directory(path("folder.job"));
    EXPECT_EQ(names(), (std::vector<std::u16string>{u"B.JOB", u"a.job"}));

    std::shared_ptr<IEnumWorkItems> listing, copy;
    ASSERT_EQ(m_scheduler->Enum(listing), TaskResult::Ok);
    EXPECT_EQ(listing->Skip(1), TaskResult::Ok);
    EXPECT_EQ(listing->Clone(copy), TaskResult::Ok);
    EXPECT_EQ(copy->Skip(2), TaskResult::False);
}

#ifndef _WIN32
TEST_F(JobStore, ListsANameThatIsNotUtf8ButCannotOpenIt)
{
    writeBytes(path("caf\xE9.job"), "");
    ASSERT_EQ(names(), std::vector<std::u16string>{u"caf\xFFFD.job"});
    std::shared_ptr<ITask> task;
    EXPECT_EQ(activate(u"caf\xFFFD", task), TaskResult::InvalidName);
    EXPECT_EQ(activate(u"caf\xFFFD\xFFFD", task), TaskResult::FileNotFound);
}
#endif

TEST_F(JobStore, RefusesDamagedFilesAndNeverWritesThem)
{
    const auto task = made(u"whole");
    ASSERT_EQ(save(task), TaskResult::Ok);
    const auto whole = bytesOf(path("whole.job"));
    const std::tuple<const char16_t *, std::string, TTaskResult> cases[] = {
        {u"short", whole.substr(0, whole.size() - 1), TaskResult::HandleEndOfFile},
        {u"long", whole + "tail", TaskResult::InvalidData},
        {u"huge", std::string(9 << 20, '\0'), TaskResult::InvalidData},
    };
    for (const auto &[name, bytes, result] : cases) {
        const auto file = path(PathFromText(name).string() + ".job");
        SCOPED_TRACE(file);
        std::shared_ptr<ITask> opened;
        ASSERT_EQ(save(made(name)), TaskResult::Ok);
        const auto before = activated(name);
        writeBytes(file, bytes);
        EXPECT_EQ(activate(name, opened), result);
        EXPECT_EQ(opened, nullptr);
        EXPECT_EQ(make(name, opened), TaskResult::FileExists);
        EXPECT_EQ(m_scheduler->AddWorkItem(name, task), TaskResult::FileExists);
        EXPECT_EQ(before->SetComment(u"x"), TaskResult::Ok);
        EXPECT_EQ(save(before), result);
        EXPECT_EQ(bytesOf(file), bytes);
        EXPECT_EQ(m_scheduler->Delete(name), TaskResult::Ok);
    }
}

TEST_F(JobStore, KeepsWhatItDoesNotKnowInAFile)
{
    auto job = NewJob();
    job.Flags = 0x21800002;
    job.Reserved = TJobReserved{0x1D0FFF, 7};
    job.Signature.assign(68, 0);
    std::string bytes;
    ASSERT_EQ(WriteJobFile(job, bytes), TaskResult::Ok);
    writeBytes(path("foreign.job"), bytes);
    const auto task = activated(u"foreign");
    EXPECT_EQ(save(task), TaskResult::Ok);
    EXPECT_EQ(bytesOf(path("foreign.job")), bytes);

    EXPECT_EQ(task->SetFlags(0xFFFF0204), TaskResult::Ok);
    EXPECT_EQ(value(task, &ITask::GetFlags), 0x0204U);
    EXPECT_EQ(save(task), TaskResult::Ok);
    EXPECT_EQ(ReadJobFile(bytesOf(path("foreign.job")), job), TaskResult::Ok);
    EXPECT_EQ(job.Flags, 0x21800204U);
}

TEST_F(JobStore, SavesByTheseRules)
{
    const auto task = made(u"first"), rival = made(u"FIRST");
    const auto file = fileOf(task);
    EXPECT_EQ(task->SetComment(u"one"), TaskResult::Ok);
    EXPECT_EQ(save(task), TaskResult::Ok);
    EXPECT_EQ(save(rival), TaskResult::FileExists);

    const auto own = TextFromPath(path("first.job")), copy = TextFromPath(path("copy.job"));
    EXPECT_EQ(file->Save(copy.c_str(), false), TaskResult::Ok);
    EXPECT_EQ(text(file, &IPersistFile::GetCurFile), own);
    EXPECT_EQ(task->SetComment(u"two"), TaskResult::Ok);
    EXPECT_EQ(file->Load(own.c_str(), 0), TaskResult::Ok);
    EXPECT_EQ(text(task, &ITask::GetComment), u"one");
    EXPECT_EQ(m_scheduler->Delete(u"first"), TaskResult::Ok);
    EXPECT_EQ(save(task), TaskResult::Ok);
    EXPECT_EQ(names(), (std::vector<std::u16string>{u"copy.job", u"first.job"}));
    EXPECT_EQ(filesIn(m_jobs / ".zelmar01"), std::vector<std::string>{"lock"});
}

TEST_F(JobStore, SavesElsewhereWithoutHarmToOtherFiles)
{
    const auto elsewhere = m_folder / "elsewhere";
    std::filesystem::create_directory(elsewhere);
    writeBytes(elsewhere / "a.job", "somebody's");
    writeBytes(elsewhere / "b.job.new", "somebody's");
    const auto task = made(u"first");
    const auto file = fileOf(task);
    const auto taken = TextFromPath(elsewhere / "a.job"), free = TextFromPath(elsewhere / "b.job");
    EXPECT_EQ(file->Save(taken.c_str(), true), TaskResult::FileExists);
    EXPECT_EQ(file->Save(free.c_str(), true), TaskResult::Ok);
    EXPECT_EQ(text(file, &IPersistFile::GetCurFile), free);
    EXPECT_EQ(save(task), TaskResult::Ok);
    EXPECT_EQ(task->Run(), TaskResult::TaskNotReady);
    EXPECT_EQ(m_scheduler->AddWorkItem(u"again", task), TaskResult::Ok);
    EXPECT_EQ(text(file, &IPersistFile::GetCurFile), TextFromPath(path("again.job")));

    // What comes between the look at the name and the write is left alone, too.
    EXPECT_EQ(CreateWholeFile(elsewhere / "a.job", elsewhere, "ours"), TaskResult::FileExists);
    EXPECT_EQ(filesIn(elsewhere), (std::vector<std::string>{"a.job", "b.job", "b.job.new"}));
    for (const auto *kept : {"a.job", "b.job.new"})
        EXPECT_EQ(bytesOf(elsewhere / kept), "somebody's");
}

TEST_F(JobStore, KeepsWhatRunsLeftInTheFileOfAnOpenJob)
{
    const auto task = made(u"a");
    add(task, daily("2027-01-01 04:00"));
    ASSERT_EQ(save(task), TaskResult::Ok);
    TJob job;
    ASSERT_EQ(ReadJobFile(bytesOf(path("a.job")), job), TaskResult::Ok);
    job.LastRun = SystemTimeFromSeconds(m_now);
    job.Status = TaskResult::TaskReady;
    job.ExitCode = 3;
    std::string bytes;
    ASSERT_EQ(WriteJobFile(job, bytes), TaskResult::Ok);
    writeBytes(path("a.job"), bytes);

    EXPECT_EQ(statusOf(task), TaskResult::TaskHasNotRun);
    ASSERT_EQ(task->SetComment(u"edited"), TaskResult::Ok);
    ASSERT_EQ(save(task), TaskResult::Ok);
    const auto again = activated(u"a");
    EXPECT_EQ(value(again, &ITask::GetExitCode), 3U);
    EXPECT_EQ(value(again, &ITask::GetMostRecentRunTime), SystemTimeFromSeconds(m_now));
    EXPECT_EQ(text(again, &ITask::GetComment), u"edited");
}

TEST_F(JobStore, TellsHowThingsAreWithAJob)
{
    using namespace TaskResult;
    auto off = daily("2027-01-01 04:00");
    off.rgFlags = TriggerFlag::Disabled;
    const auto logon = starting("2027-01-01", TASK_EVENT_TRIGGER_AT_LOGON);
    const auto nightly = daily("2027-01-01 04:00"), past = once("2027-02-03 09:59");
    const auto never = byDate("2027-01-01 08:00", bit(31), 2);
    const struct
    {
        const char16_t *Name;
        std::vector<TASK_TRIGGER> Triggers;
        std::uint32_t Flags;
        TTaskResult Status, Next;
    } cases[] = {
        {u"none", {}, 0, TaskNoValidTriggers, TaskNoValidTriggers},
        {u"off", {off}, 0, TaskNoValidTriggers, TaskNoValidTriggers},
        {u"daily", {off, nightly}, 0, TaskHasNotRun, Ok},
        {u"now", {once("2027-02-03 10:00")}, 0, TaskHasNotRun, Ok},
        {u"past", {past}, 0, TaskNoMoreRuns, TaskNoMoreRuns},
        {u"never", {never}, 0, TaskNoMoreRuns, TaskNoMoreRuns},
        {u"disabled", {nightly}, TaskFlag::Disabled, TaskDisabled, TaskDisabled},
        {u"event", {logon}, 0, TaskHasNotRun, EventTrigger},
        {u"event and past", {logon, past}, 0, TaskHasNotRun, EventTrigger},
    };
    for (const auto &row : cases) {
        SCOPED_TRACE(PathFromText(row.Name));
        auto task = made(row.Name);
        for (const auto &trigger : row.Triggers)
            add(task, trigger);
        ASSERT_EQ(task->SetFlags(row.Flags), TaskResult::Ok);
        EXPECT_EQ(statusOf(task), TaskResult::TaskNotScheduled);
        ASSERT_EQ(save(task), TaskResult::Ok);
        EXPECT_EQ(statusOf(task), row.Status);
        task = activated(row.Name);
        EXPECT_EQ(statusOf(task), row.Status);
        EXPECT_EQ(value(task, &ITask::GetTriggerCount), row.Triggers.size());
        SYSTEMTIME next;
        EXPECT_EQ(task->GetNextRunTime(next), row.Next);
    }
}

TEST_F(JobStore, RefusesWhatItCannotKeep)
{
    const auto task = made(u"new");
    EXPECT_EQ(task->SetPriority(0x4000), TaskResult::InvalidArgument);
    EXPECT_EQ(task->SetComment(std::u16string(65535, u'x').c_str()), TaskResult::InvalidArgument);
    EXPECT_EQ(task->SetComment(std::u16string(65534, u'x').c_str()), TaskResult::Ok);
    std::uint16_t index = 9;
    std::shared_ptr<ITaskTrigger> trigger;
    for (int i = 0; i < TaskMaxTriggers; ++i)
        EXPECT_EQ(task->CreateTrigger(index, trigger), TaskResult::Ok);
    EXPECT_EQ(task->CreateTrigger(index, trigger), TaskResult::Fail);
    EXPECT_EQ(save(task), TaskResult::Ok);
    EXPECT_EQ(m_scheduler->IsOfType(u"new", ITask::Iid), TaskResult::Ok);
    EXPECT_EQ(m_scheduler->IsOfType(u"new", ITaskTrigger::Iid), TaskResult::False);
}

TEST_F(JobStore, RunsJobsUnderTheOwnAccountAlone)
{
    const auto task = made(u"a");
    const auto own = UserAccount();
    char16_t *account = nullptr;
    EXPECT_EQ(task->GetAccountInformation(account), TaskResult::AccountInformationNotSet);
    EXPECT_EQ(task->SetAccountInformation(own.c_str(), nullptr), TaskResult::Ok);
    EXPECT_EQ(task->SetAccountInformation((ComputerName() + u"\\" + own).c_str(), u"secret"), TaskResult::Ok);
    EXPECT_EQ(task->SetAccountInformation(u"", nullptr), TaskResult::UnsupportedAccountOption);
    EXPECT_EQ(task->SetAccountInformation(u"nobody of this name", u""), TaskResult::AccountNameNotFound);
}

TEST_F(JobStore, IsOfThisComputer)
{
    for (const auto &name :
         {FoldName(ComputerName()), std::u16string(u"\\\\localhost"), std::u16string(u".")})
        EXPECT_EQ(m_scheduler->SetTargetComputer(name.c_str()), TaskResult::Ok);
    for (const auto *name : {u"", u"\\\\", u"\\\\elsewhere", u"\\x"})
        EXPECT_EQ(m_scheduler->SetTargetComputer(name), TaskResult::BadNetPath);
}

TEST_F(JobStore, IsSharedByManyWriters)
{
    const auto task = made(u"shared");
    ASSERT_EQ(save(task), TaskResult::Ok);
    std::vector<std::thread> writers;
    writers.reserve(4);
    for (int writer = 0; writer < 4; ++writer) {
        writers.emplace_back([this, writer] {
            TJobStore store({m_jobs, {}, {}, {}});
            std::shared_ptr<ITaskScheduler> scheduler;
            ASSERT_EQ(store.CreateScheduler(scheduler), TaskResult::Ok);
            for (int i = 0; i < 20; ++i) {
                std::shared_ptr<ITaskObject> object;
                ASSERT_EQ(scheduler->Activate(u"shared", ITask::Iid, object), TaskResult::Ok);
                const auto own = std::dynamic_pointer_cast<ITask>(object);
                const std::u16string comment(static_cast<std::size_t>(1000 * writer + 1), u'x');
                ASSERT_EQ(own->SetComment(comment.c_str()), TaskResult::Ok);
                ASSERT_EQ(save(own), TaskResult::Ok);
            }
        });
    }
    for (auto &writer : writers)
        writer.join();
    EXPECT_EQ(text(activated(u"shared"), &ITask::GetComment).size() % 1000, 1U);
}

} // namespace
