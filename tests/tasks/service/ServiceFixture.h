#pragma once

#include <Zelmar01/tasks/service/TaskAllocator.h>
#include <Zelmar01/tasks/service/TaskService.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

/// Tests at the interfaces of a task service, whichever it is.
class ServiceFixture : public testing::Test
{
protected:
    using ITask = Zelmar01::ITask;
    using TTaskResult = Zelmar01::TTaskResult;

    virtual Zelmar01::ITaskAllocator &allocator() = 0;

    TTaskResult make(const char16_t *name, std::shared_ptr<ITask> &task)
    {
        std::shared_ptr<Zelmar01::ITaskObject> object;
        const auto result = m_scheduler->NewWorkItem(name, Zelmar01::ClsidTask, ITask::Iid, object);
        task = std::dynamic_pointer_cast<ITask>(object);
        return result;
    }

    std::shared_ptr<ITask> made(const char16_t *name)
    {
        std::shared_ptr<ITask> task;
        EXPECT_EQ(make(name, task), Zelmar01::TaskResult::Ok);
        return task;
    }

    TTaskResult activate(const char16_t *name, std::shared_ptr<ITask> &task)
    {
        std::shared_ptr<Zelmar01::ITaskObject> object;
        const auto result = m_scheduler->Activate(name, ITask::Iid, object);
        task = std::dynamic_pointer_cast<ITask>(object);
        return result;
    }

    std::shared_ptr<ITask> activated(const char16_t *name)
    {
        std::shared_ptr<ITask> task;
        EXPECT_EQ(activate(name, task), Zelmar01::TaskResult::Ok);
        return task;
    }

    static std::shared_ptr<Zelmar01::IPersistFile> fileOf(const std::shared_ptr<ITask> &task)
    {
        std::shared_ptr<Zelmar01::IPersistFile> file;
        EXPECT_EQ(Zelmar01::QueryInterface(*task, file), Zelmar01::TaskResult::Ok);
        return file;
    }

    static TTaskResult save(const std::shared_ptr<ITask> &task) { return fileOf(task)->Save(nullptr, true); }

    static void add(const std::shared_ptr<ITask> &task, const Zelmar01::TASK_TRIGGER &trigger)
    {
        std::uint16_t index = 0;
        std::shared_ptr<Zelmar01::ITaskTrigger> added;
        ASSERT_EQ(task->CreateTrigger(index, added), Zelmar01::TaskResult::Ok);
        ASSERT_EQ(added->SetTrigger(&trigger), Zelmar01::TaskResult::Ok);
    }

    static bool waitUntil(const std::function<bool()> &condition)
    {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (!condition() && std::chrono::steady_clock::now() < deadline)
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        return condition();
    }

    /// What an operation answers.
    template<class TObject, class TOwner, class TValue>
    static TValue value(const std::shared_ptr<TObject> &object, TTaskResult (TOwner::*get)(TValue &))
    {
        TValue answer{};
        EXPECT_EQ((object.get()->*get)(answer), Zelmar01::TaskResult::Ok);
        return answer;
    }

    static TTaskResult statusOf(const std::shared_ptr<ITask> &task) { return value(task, &ITask::GetStatus); }

    template<class TObject, class TOwner>
    std::u16string text(const std::shared_ptr<TObject> &object, TTaskResult (TOwner::*get)(char16_t *&))
    {
        char16_t *block = nullptr;
        EXPECT_EQ((object.get()->*get)(block), Zelmar01::TaskResult::Ok);
        return Zelmar01::TakeText(allocator(), block);
    }

    std::vector<std::u16string> names()
    {
        std::shared_ptr<Zelmar01::IEnumWorkItems> listing;
        EXPECT_EQ(m_scheduler->Enum(listing), Zelmar01::TaskResult::Ok);
        std::vector<std::u16string> found;
        char16_t **list = nullptr;
        while (listing->Next(1, &list, nullptr) == Zelmar01::TaskResult::Ok) {
            found.push_back(Zelmar01::TakeText(allocator(), list[0]));
            allocator().Free(list);
        }
        std::sort(found.begin(), found.end());
        return found;
    }

    std::shared_ptr<Zelmar01::ITaskScheduler> m_scheduler;
};
