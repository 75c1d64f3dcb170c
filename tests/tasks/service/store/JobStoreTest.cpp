#include "StoreFixture.h"

#include <Zelmar01/tasks/service/store/JobPage.h>

#include <cstring>
#include <thread>

using namespace Zelmar01;

namespace {

using JobStore = StoreTest;

TEST_F(JobStore, TakesTheseNames)
{
    struct TCase
    {
        const char16_t *Name;
        const char16_t *File; // null for a refused name
    };
    // 250 bytes of UTF-8 with the ending, and more than that in any encoding.
    const std::u16string longest(123, u'é'), longestFile = longest + u".job", tooLong(251, u'é');
    const TCase cases[] = {
        {u"Backup", u"Backup.job"},
        {u"Backup.JOB", u"Backup.JOB"},
        {u"Été à 12 h.Job", u"Été à 12 h.Job"},
        {u"export.2027.job", u"export.2027.job"},
        {u" .job", u" .job"},
        {longest.c_str(), longestFile.c_str()},
        {tooLong.c_str(), nullptr},
        {u"export.2027", nullptr},
        {u"Backup.com", nullptr},
        {u"Backup.", nullptr},
        {u".job", nullptr},
        {u"", nullptr},
        {nullptr, nullptr},
        {u"a\\b", nullptr},
        {u"a/b", nullptr},
        {u"..\\x.job", nullptr},
        {u"../x.job", nullptr},
        {u"a\nb", nullptr},
        {u"a\x1b[2J", nullptr},
    };
    for (const auto &row : cases) {
        std::shared_ptr<ITask> task;
        SCOPED_TRACE(row.Name ? PathFromText(row.Name).string() : "null");
        EXPECT_EQ(make(row.Name, task), row.File ? TaskResult::Ok : TaskResult::InvalidArgument);
        if (row.File) {
            EXPECT_EQ(text(fileOf(task), &IPersistFile::GetCurFile),
                      TextFromPath(m_store.Folder() / PathFromText(row.File)));
            EXPECT_EQ(save(task), TaskResult::Ok);
            EXPECT_EQ(activate(row.Name, task), TaskResult::Ok);
            EXPECT_EQ(m_scheduler->Delete(row.Name), TaskResult::Ok);
        } else {
            EXPECT_EQ(activate(row.Name, task), TaskResult::InvalidArgument);
            EXPECT_EQ(m_scheduler->Delete(row.Name), TaskResult::InvalidArgument);
        }
    }
    EXPECT_TRUE(names().empty());
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

TEST_F(JobStore, GivesItsBlocksBackAtItsEndAndNotBefore)
{
    std::shared_ptr<ITask> task;
    char16_t *comment = nullptr;
    {
        TJobStore store({m_jobs, {}, {}, {}});
        ASSERT_EQ(store.CreateScheduler(m_scheduler), TaskResult::Ok);
        task = made(u"a");
    }
    m_scheduler.reset();
    ASSERT_EQ(task->SetComment(u"left behind"), TaskResult::Ok);
    ASSERT_EQ(task->GetComment(comment), TaskResult::Ok);
    EXPECT_EQ(std::u16string(comment), u"left behind");
}

TEST_F(JobStore, RefusesDamagedFilesAndNeverWritesThem)
{
    const auto task = made(u"whole");
    ASSERT_EQ(task->SetApplicationName(u"/bin/true"), TaskResult::Ok);
    add(task, daily("2027-01-01 04:00"));
    ASSERT_EQ(save(task), TaskResult::Ok);
    const auto whole = bytesOf(path("whole.job"));
    auto otherVersion = whole;
    otherVersion[2] = 2;
    const struct
    {
        const char *File;
        std::string Bytes;
        TTaskResult Result;
    } cases[] = {
        {"empty.job", "", TaskResult::HandleEndOfFile},
        {"short.job", whole.substr(0, whole.size() - 1), TaskResult::HandleEndOfFile},
        {"long.job", whole + "tail", TaskResult::InvalidData},
        {"version.job", otherVersion, TaskResult::UnknownObjectVersion},
        {"huge.job", std::string(9 << 20, '\0'), TaskResult::InvalidData},
    };
    for (const auto &row : cases) {
        SCOPED_TRACE(row.File);
        const auto name = std::filesystem::path(row.File).u16string();
        std::shared_ptr<ITask> opened, fresh;
        ASSERT_EQ(save(made(name.c_str())), TaskResult::Ok);
        const auto before = activated(name.c_str());
        writeBytes(path(row.File), row.Bytes);
        EXPECT_EQ(activate(name.c_str(), opened), row.Result);
        EXPECT_EQ(opened, nullptr);
        EXPECT_EQ(make(name.c_str(), fresh), TaskResult::FileExists);
        EXPECT_EQ(m_scheduler->AddWorkItem(name.c_str(), task), TaskResult::FileExists);
        EXPECT_EQ(before->SetComment(u"x"), TaskResult::Ok);
        EXPECT_EQ(save(before), row.Result);
        EXPECT_EQ(bytesOf(path(row.File)), row.Bytes);
        EXPECT_EQ(m_scheduler->Delete(name.c_str()), TaskResult::Ok);
    }
}

TEST_F(JobStore, WritesAFileBackByteForByte)
{
    auto job = NewJob();
    job.Flags = 0x21800002;
    job.Status = TaskResult::TaskReady;
    job.Parameters.reset();
    job.Comment = u"kept";
    job.Reserved = TJobReserved{0x1D0FFF, 7};
    job.Triggers = {daily("2027-01-01 04:00")};
    job.Triggers[0].Type.Words[3] = 0xABCD;
    job.Signature.assign(68, 0);
    std::string bytes;
    ASSERT_EQ(WriteJobFile(job, bytes), TaskResult::Ok);
    writeBytes(path("foreign.job"), bytes);
    const auto task = activated(u"foreign");
    EXPECT_EQ(save(task), TaskResult::Ok);
    EXPECT_EQ(bytesOf(path("foreign.job")), bytes);

    std::uint32_t flags = 0;
    EXPECT_EQ(task->SetFlags(0xFFFF0204), TaskResult::Ok);
    EXPECT_EQ(task->GetFlags(flags), TaskResult::Ok);
    EXPECT_EQ(flags, 0x0204U);
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
    std::uint32_t exitCode = 0;
    SYSTEMTIME lastRun;
    EXPECT_EQ(again->GetExitCode(exitCode), TaskResult::Ok);
    EXPECT_EQ(exitCode, 3U);
    EXPECT_EQ(again->GetMostRecentRunTime(lastRun), TaskResult::Ok);
    EXPECT_EQ(lastRun, SystemTimeFromSeconds(m_now));
    EXPECT_EQ(text(again, &ITask::GetComment), u"edited");
}

TEST_F(JobStore, TellsHowThingsAreWithAJob)
{
    auto off = daily("2027-01-01 04:00");
    off.rgFlags = TriggerFlag::Disabled;
    const auto logon = starting("2027-01-01", TASK_EVENT_TRIGGER_AT_LOGON);
    const struct
    {
        const char16_t *Name;
        std::vector<TASK_TRIGGER> Triggers;
        std::uint32_t Flags;
        TTaskResult Status, Next;
    } cases[] = {
        {u"none", {}, 0, TaskResult::TaskNoValidTriggers, TaskResult::TaskNoValidTriggers},
        {u"off", {off}, 0, TaskResult::TaskNoValidTriggers, TaskResult::TaskNoValidTriggers},
        {u"daily", {off, daily("2027-01-01 04:00")}, 0, TaskResult::TaskHasNotRun, TaskResult::Ok},
        {u"now", {once("2027-02-03 10:00")}, 0, TaskResult::TaskHasNotRun, TaskResult::Ok},
        {u"past", {once("2027-02-03 09:59")}, 0, TaskResult::TaskNoMoreRuns, TaskResult::TaskNoMoreRuns},
        {u"disabled",
         {daily("2027-01-01 04:00")},
         TaskFlag::Disabled,
         TaskResult::TaskDisabled,
         TaskResult::TaskDisabled},
        {u"event", {logon}, 0, TaskResult::TaskHasNotRun, TaskResult::EventTrigger},
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
        std::uint16_t count = 0;
        EXPECT_EQ(task->GetTriggerCount(count), TaskResult::Ok);
        EXPECT_EQ(count, row.Triggers.size());
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

TEST_F(JobStore, DescribesPagesOfSavedJobs)
{
    const auto task = made(u"a");
    std::shared_ptr<IProvideTaskPage> pages;
    std::shared_ptr<ITaskPage> page;
    ASSERT_EQ(QueryInterface(*task, pages), TaskResult::Ok);
    EXPECT_EQ(pages->GetPage(TASKPAGE_TASK, true, page), TaskResult::NotFileBasedStorage);
    ASSERT_EQ(save(task), TaskResult::Ok);
    ASSERT_EQ(pages->GetPage(TASKPAGE_SCHEDULE, false, page), TaskResult::Ok);
    const auto &described = dynamic_cast<const TJobPage &>(*page);
    EXPECT_EQ(described.Job, task);
    EXPECT_EQ(described.Type, TASKPAGE_SCHEDULE);
    EXPECT_FALSE(described.PersistChanges);
    EXPECT_EQ(m_store.ShowSheet({}), -1);
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
