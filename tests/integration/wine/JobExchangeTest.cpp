// Job files that the system's service has written and the job store reads, and the other way round.
#include "WineTaskService.h"

#include <Zelmar01/tasks/service/store/JobStore.h>

#include <tasks/service/Samples.h>

#include <array>
#include <fstream>
#include <iterator>
#include <ostream>

using namespace Zelmar01;

namespace {

using TTriggerWords = std::array<std::uint16_t, 24>;

std::string bytesOf(const std::filesystem::path &file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

class JobExchange : public TaskService
{
protected:
    // What both sides must agree on.
    struct TSeen
    {
        std::vector<std::u16string> Texts;
        std::vector<std::uint8_t> Data;
        std::uint32_t Flags = 0, Priority = 0, MaxRunTime = 0;
        std::uint16_t IdleWait = 0, IdleDeadline = 0;
        TTaskResult Status = 0;
        std::vector<TTriggerWords> Triggers;

        bool operator==(const TSeen &) const = default;
    };

    void SetUp() override
    {
        TaskService::SetUp();
        if (!IsSkipped()) {
            ASSERT_EQ(m_store.CreateScheduler(m_stored), TaskResult::Ok);
        }
    }

    // A job with everything in it.
    std::shared_ptr<ITask> fill(std::shared_ptr<ITask> task)
    {
        EXPECT_EQ(task->SetApplicationName(u"no such program.exe"), TaskResult::Ok);
        EXPECT_EQ(task->SetParameters(u"/x \"Bijoux & Cie\""), TaskResult::Ok);
        EXPECT_EQ(task->SetComment(u"Été \U0001F48D"), TaskResult::Ok);
        EXPECT_EQ(task->SetCreator(u"caisse"), TaskResult::Ok);
        const std::uint8_t data[] = {0, 1, 0xFF};
        EXPECT_EQ(task->SetWorkItemData(sizeof data, data), TaskResult::Ok);
        EXPECT_EQ(task->SetFlags(TaskFlag::Interactive | TaskFlag::KillIfGoingOnBatteries), TaskResult::Ok);
        EXPECT_EQ(task->SetMaxRunTime(60'000), TaskResult::Ok);
        for (const auto &trigger :
             {once("2031-12-31 23:59"), repeated(daily("2027-01-01 04:00", 3), 15, 60),
              weekly("2027-01-02 05:00", 1, Mon | Sat), byDate("2027-01-03 06:00", bit(31), 0xAAA),
              ending(byWeekday("2027-01-04 07:00", 5, Fri, 0x555), "2028-02-29"),
              starting("2027-01-05", TASK_EVENT_TRIGGER_ON_IDLE),
              starting("2027-01-06", TASK_EVENT_TRIGGER_AT_SYSTEMSTART),
              starting("2027-01-07", TASK_EVENT_TRIGGER_AT_LOGON)})
            add(task, trigger);
        EXPECT_EQ(save(task), TaskResult::Ok);
        return task;
    }

    TSeen seen(const std::shared_ptr<ITask> &task, ITaskAllocator &blocks)
    {
        TSeen all;
        const auto take = [&](auto get) {
            char16_t *block = nullptr;
            EXPECT_EQ((task.get()->*get)(block), TaskResult::Ok);
            all.Texts.push_back(TakeText(blocks, block));
        };
        take(&ITask::GetApplicationName);
        take(&ITask::GetParameters);
        take(&ITask::GetWorkingDirectory);
        take(&ITask::GetComment);
        take(&ITask::GetCreator);
        std::uint16_t size = 0, count = 0;
        std::uint8_t *data = nullptr;
        EXPECT_EQ(task->GetWorkItemData(size, data), TaskResult::Ok);
        all.Data.assign(data, data + size);
        blocks.Free(data);
        EXPECT_EQ(task->GetFlags(all.Flags), TaskResult::Ok);
        EXPECT_EQ(task->GetPriority(all.Priority), TaskResult::Ok);
        EXPECT_EQ(task->GetMaxRunTime(all.MaxRunTime), TaskResult::Ok);
        EXPECT_EQ(task->GetIdleWait(all.IdleWait, all.IdleDeadline), TaskResult::Ok);
        EXPECT_EQ(task->GetStatus(all.Status), TaskResult::Ok);
        EXPECT_EQ(task->GetTriggerCount(count), TaskResult::Ok);
        for (std::uint16_t i = 0; i < count; ++i) {
            std::shared_ptr<ITaskTrigger> trigger;
            TASK_TRIGGER record;
            EXPECT_EQ(task->GetTrigger(i, trigger), TaskResult::Ok);
            EXPECT_EQ(trigger->GetTrigger(record), TaskResult::Ok);
            all.Triggers.push_back(std::bit_cast<TTriggerWords>(record));
        }
        return all;
    }

    template<class TWork>
    auto inStore(TWork work)
    {
        std::swap(m_scheduler, m_stored);
        auto result = work();
        std::swap(m_scheduler, m_stored);
        return result;
    }

    TJobStore m_store{{m_tested.Folder, {}, {}, {}}};
    std::shared_ptr<ITaskScheduler> m_stored;
};

} // namespace

TEST_F(JobExchange, BothReadWhatTheOtherWrites)
{
    const auto ours = inStore([&] { return fill(made(u"ours")); });
    const auto written = seen(ours, m_store.Allocator());
    EXPECT_EQ(written.Triggers.size(), 8U);
    EXPECT_EQ(seen(activated(u"ours"), allocator()), written);

    const auto theirs = fill(made(u"theirs"));
    const auto opened = inStore([&] { return activated(u"theirs"); });
    EXPECT_EQ(seen(opened, m_store.Allocator()), written);
    EXPECT_EQ(seen(theirs, allocator()), written);

    // Nothing of what the service put into the file is lost.
    const auto before = bytesOf(pathText("theirs.job"));
    EXPECT_EQ(save(opened), TaskResult::Ok);
    EXPECT_EQ(bytesOf(pathText("theirs.job")), before);
}

TEST_F(JobExchange, AServiceThatSavesAJobWithoutTriggersGivesItADisabledOne)
{
    const auto task = made(u"none");
    ASSERT_EQ(save(task), TaskResult::Ok);
    const auto opened = inStore([&] { return activated(u"none"); });
    const auto found = seen(opened, m_store.Allocator());
    ASSERT_EQ(found.Triggers.size(), 1U);
    EXPECT_EQ(std::bit_cast<TASK_TRIGGER>(found.Triggers[0]).rgFlags, TriggerFlag::Disabled);
    EXPECT_EQ(found.Status, TaskResult::TaskNoValidTriggers);
}

TEST_F(JobExchange, AShorterSecondSaveLeavesATailThatIsRefused)
{
    const auto task = fill(made(u"tail"));
    ASSERT_EQ(task->SetComment(u""), TaskResult::Ok);
    ASSERT_EQ(save(task), TaskResult::Ok);
    const auto before = bytesOf(pathText("tail.job"));
    inStore([&] {
        std::shared_ptr<ITask> opened;
        EXPECT_EQ(activate(u"tail", opened), TaskResult::InvalidData);
        EXPECT_EQ(make(u"tail", opened), TaskResult::FileExists);
        return opened;
    });
    EXPECT_EQ(bytesOf(pathText("tail.job")), before);
}
