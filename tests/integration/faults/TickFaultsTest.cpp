// Every system call that a tick makes on its folder fails in turn, or is the last one of its process.
// Whatever fails: a job that came due is started once, or somebody is told; never twice.

#include "FaultyCalls.h"

#include <tasks/service/store/RunFixture.h>

#include <csignal>

using namespace Zelmar01;

namespace {

// A job that is due in the next minute.
class TDueJob : public RunTest
{
public:
    TDueJob()
    {
        SetUp();
        script(u"a", u"echo x >> ran", {once("2027-02-03 10:01")});
        Tick(0);
    }

    TTickReport Tick(int minute) { return tick("2027-02-03 10:0" + std::to_string(minute)); }
    void WaitForEnd() { waitForEnd(u"a"); }

    std::size_t Runs() const { return output("ran").size() / 2; }
    bool IsTold() const
    {
        const auto events = ReadLog(m_jobFolder, 100);
        return std::any_of(events.begin(), events.end(), [](const auto &event) { return event.IsProblem(); });
    }
    const std::filesystem::path &Jobs() const { return m_jobs; }
    std::vector<std::string> Litter() const
    {
        std::vector<std::string> litter;
        for (const auto &name : filesIn(m_jobs / ".zelmar01"))
            if (name.starts_with(".zelmar01-"))
                litter.push_back(name);
        return litter;
    }
    using RunTest::inChild;

private:
    void TestBody() override {}
};

bool isTold(const TTickReport &report)
{
    return Failed(report.Result) || std::any_of(report.Events.begin(), report.Events.end(),
                                                [](const auto &event) { return event.IsProblem(); });
}

} // namespace

TEST(TickFaults, eachCallFails)
{
    bool isMet = true;
    for (int number = 1; isMet; ++number) {
        TDueJob job;
        const auto open = OpenFiles();
        std::string met;
        TTickReport report;
        {
            const FaultyCalls calls(job.Jobs(), TFault::Refused, number);
            report = job.Tick(1);
            met = calls.Met();
        }
        isMet = !met.empty();
        SCOPED_TRACE(met);
        job.WaitForEnd();
        EXPECT_EQ(OpenFiles(), open);
        EXPECT_EQ(job.Tick(2).Result, TaskResult::Ok);
        job.WaitForEnd();
        EXPECT_LE(job.Runs(), 1U);
        EXPECT_TRUE(job.Runs() == 1 || isTold(report) || job.IsTold()) << "the log says nothing of it";
    }
}

TEST(TickFaults, eachCallIsTheLast)
{
    for (const auto fault : {TFault::Killed, TFault::KilledBehind}) {
        bool isOver = false;
        for (int number = 1; !isOver; ++number) {
            SCOPED_TRACE(number);
            TDueJob job;
            const auto status = TDueJob::inChild([&] {
                const FaultyCalls calls(job.Jobs(), fault, number);
                job.Tick(1);
            });
            isOver = WIFEXITED(status);
            job.WaitForEnd();
            EXPECT_EQ(job.Tick(2).Result, TaskResult::Ok);
            job.WaitForEnd();
            EXPECT_LE(job.Runs(), 1U);
            EXPECT_TRUE(job.Runs() == 1 || job.IsTold());
            EXPECT_TRUE(job.Litter().empty()) << job.Litter().front();
        }
    }
}
