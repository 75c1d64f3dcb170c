#pragma once

#include "StoreFixture.h"

#include <Zelmar01/tasks/service/store/RunFiles.h>
#include <Zelmar01/tasks/service/store/Tick.h>

#include <support/Environment.h>

#include <functional>

#include <sys/wait.h>
#include <unistd.h>

/// A job store whose jobs are really run, by the runner that was built with the tests.
class RunTest : public StoreTest
{
protected:
    /// A job that gives a script to a shell. It is saved.
    std::shared_ptr<ITask> script(const char16_t *name, const std::u16string &text,
                                  const std::vector<Zelmar01::TASK_TRIGGER> &triggers,
                                  std::uint32_t flags = 0)
    {
        auto task = made(name);
        EXPECT_EQ(task->SetApplicationName(u"/bin/sh"), Zelmar01::TaskResult::Ok);
        EXPECT_EQ(task->SetParameters((u"-c \"" + text + u'"').c_str()), Zelmar01::TaskResult::Ok);
        EXPECT_EQ(task->SetWorkingDirectory(m_folder.Path().u16string().c_str()), Zelmar01::TaskResult::Ok);
        EXPECT_EQ(task->SetFlags(flags), Zelmar01::TaskResult::Ok);
        for (const auto &trigger : triggers)
            add(task, trigger);
        EXPECT_EQ(save(task), Zelmar01::TaskResult::Ok);
        return task;
    }

    Zelmar01::TRunFiles runOf(const char16_t *name) const
    {
        return {m_jobFolder, std::u16string(name) + u".job"};
    }

    void waitForEnd(const char16_t *name)
    {
        EXPECT_TRUE(waitUntil([&] { return !runOf(name).Runner(); }));
    }

    std::string output(const char *file) const { return bytesOf(m_folder / file); }

    Zelmar01::TTickReport tick(const std::string &now)
    {
        m_tick.Now = at(now);
        return Zelmar01::RunTick(m_tick);
    }

    /// What a tick did, one event a word: "missed:daily*3".
    std::string ticked(const std::string &now)
    {
        const auto report = tick(now);
        EXPECT_EQ(report.Result, Zelmar01::TaskResult::Ok);
        std::string words;
        for (const auto &event : report.Events) {
            words += (words.empty() ? "" : " ") + std::string(EventName(event.Kind)) + ':' +
                     Zelmar01::PathFromText(Zelmar01::JobTitle(event.File)).string();
            if (event.Kind == Zelmar01::TJobEvent::Missed)
                words += '*' + std::to_string(event.Value);
        }
        return words;
    }

    /// Does something in a process of its own, and tells how that ended.
    static int inChild(const std::function<void()> &work)
    {
        const auto child = fork();
        if (child == 0) {
            work();
            _exit(testing::Test::HasFailure() ? 1 : 0);
        }
        int status = -1;
        waitpid(child, &status, 0);
        return status;
    }

    const EnvironmentSetting m_zone{"TZ", "UTC0"}, m_runner{"ZELMAR01_JOB_RUNNER", ZELMAR01_JOB_RUNNER},
        m_grace{"ZELMAR01_JOB_GRACE", "0.3"}, m_power{"ZELMAR01_POWER_SUPPLY", (m_folder / "power").string()};
    const Zelmar01::TJobFolder m_jobFolder{m_jobs};
    Zelmar01::TTickOptions m_tick{m_jobs, {}, 0, Zelmar01::TTimeZone(), "boot-1"};
};
