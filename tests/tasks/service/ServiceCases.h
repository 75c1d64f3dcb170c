#pragma once

#include <Zelmar01/tasks/service/TaskService.h>

#include <tasks/service/ServiceFixture.h>

#include <filesystem>
#include <memory>
#include <string>

/// A task service that the cases of ServiceCases.cpp are run against. It has no jobs.
struct TServiceUnderTest
{
    std::shared_ptr<Zelmar01::ITaskService> Service;
    std::filesystem::path Folder; ///< of the job files

    bool CanSetPriority = true;     ///< SetPriority and SetIdleWait
    bool CanRun = true;             ///< Run and Terminate
    bool MayMissARun = false;       ///< one that is asked for just after the job was saved
    std::u16string Program;         ///< is there wherever the tests run
    std::u16string EndsWithSeven;   ///< parameters with which it ends with exit code 7
    std::u16string StaysForAWhile;  ///< parameters with which it goes on until it is terminated
    std::shared_ptr<void> TearDown; ///< removes what it left
};

/// Each program of tests has one. Empty where this machine is none to try it on.
TServiceUnderTest MakeServiceUnderTest();

/// The cases, which a program adds its own to.
class TaskService : public ServiceFixture
{
protected:
    void SetUp() override
    {
        if (!m_tested.Service)
            GTEST_SKIP() << "not on this machine";
        ASSERT_EQ(m_tested.Service->CreateScheduler(m_scheduler), Zelmar01::TaskResult::Ok);
        ASSERT_TRUE(names().empty());
    }

    Zelmar01::ITaskAllocator &allocator() override { return m_tested.Service->Allocator(); }

    std::u16string pathText(const char *file) const
    {
        return (m_tested.Folder / std::filesystem::path(file)).u16string();
    }

    TServiceUnderTest m_tested = MakeServiceUnderTest();
};
