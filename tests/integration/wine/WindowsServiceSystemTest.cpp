// The steps that start the task service, with the system's own calls.
#include "WineTaskService.h"

#include <Zelmar01/tasks/service/WindowsServiceSystem.h>

#include <gtest/gtest.h>

using namespace Zelmar01;

namespace {

// Answers some of the questions itself.
class PreparedSystem : public WindowsServiceSystem
{
public:
    std::uint32_t Platform = 2;
    const char *Service = "Schedule";
    bool SaysStopped = false;
    std::string Program;

    std::uint32_t PlatformId() override { return Platform; }
    std::string SearchPathA(const char *program, std::uint32_t size) override
    {
        return Program.empty() ? WindowsServiceSystem::SearchPathA(program, size) : Program;
    }
    TSystemHandle OpenServiceA(TSystemHandle manager, const char *, std::uint32_t access) override
    {
        return WindowsServiceSystem::OpenServiceA(manager, Service, access);
    }
    bool QueryServiceStatus(TSystemHandle service, std::uint32_t &currentState) override
    {
        const bool known = WindowsServiceSystem::QueryServiceStatus(service, currentState);
        currentState = SaysStopped ? 1 : currentState;
        return known;
    }
};

void expectStep(PreparedSystem &system, int step)
{
    const auto start = StartTaskService(system);
    EXPECT_EQ(start.FailedStep, step);
    EXPECT_EQ(start.Text.empty(), step == 0) << start.Text;
}

} // namespace

TEST(WindowsServiceSystem, GivesTheReasonOfTheStepThatFailed)
{
    if (!IsPreparedMachine())
        GTEST_SKIP() << "to be run by run_under_wine.py";
    EXPECT_EQ(WindowsServiceSystem().PlatformId(), 2U);
    PreparedSystem service;
    expectStep(service, 0);
    service.SaysStopped = true;
    expectStep(service, 6);
    service.Service = "no such service";
    expectStep(service, 4);

    PreparedSystem program;
    program.Platform = 1;
    expectStep(program, 1);
    program.Program = "C:\\no such program.exe";
    expectStep(program, 2);
    program.Program = WindowsServiceSystem().SearchPathA("hostname.exe", 260);
    ASSERT_FALSE(program.Program.empty());
    EXPECT_TRUE(WindowsServiceSystem().SearchPathA("hostname.exe", 8).empty());
    expectStep(program, 0);
}
