#pragma once

#include <Zelmar01/tasks/service/TaskAllocator.h>
#include <Zelmar01/tasks/service/TaskService.h>

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

/// A task service that does nothing but write down what is asked of it, and fails where a test says so. It
/// knows one job, with the triggers that the test puts there.
class RecordingTaskService : public Zelmar01::ITaskService,
                             public std::enable_shared_from_this<RecordingTaskService>
{
public:
    using TTaskResult = Zelmar01::TTaskResult;

    std::map<std::string, TTaskResult> Fails; ///< by the name of a call; a success code may stand here, too
    Zelmar01::TServiceStart Start;
    std::vector<std::u16string> Names; ///< of the jobs that Enum gives; Activate opens these alone
    std::vector<Zelmar01::TASK_TRIGGER> Triggers;
    std::uint32_t Flags = 0, Priority = 0x20;
    TTaskResult Status = 0;
    std::string Data; ///< of the job
    std::vector<Zelmar01::SYSTEMTIME> RunTimes;
    Zelmar01::TPropertySheet Sheet; ///< the last one that was shown
    std::function<std::intptr_t()> WhileSheetIsOpen = [] { return 1; };
    Zelmar01::TTaskAllocator Blocks;

    /// The calls since the last time, one behind the other: names, with the arguments that matter.
    std::string TakeCalls() { return std::exchange(m_calls, {}); }

    TTaskResult call(const std::string &name, const std::string &arguments = {});
    TTaskResult handOut(const std::string &name, std::u16string_view text, char16_t *&block);

    Zelmar01::TServiceStart StartScheduler() override;
    TTaskResult CreateScheduler(std::shared_ptr<Zelmar01::ITaskScheduler> &scheduler) override;
    Zelmar01::ITaskAllocator &Allocator() override { return Blocks; }
    std::intptr_t ShowSheet(const Zelmar01::TPropertySheet &sheet) override;
    std::string DescribeResult(TTaskResult result) override;

private:
    std::string m_calls;
};
