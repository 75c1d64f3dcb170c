#pragma once

#include <Zelmar01/tasks/service/TaskService.h>

#include <memory>

namespace Zelmar01 {

class TComApartment;

/// The task service of Windows: the system's own objects of Task Scheduler 1.0.
///
/// What they answer is handed through. Null where a text is needed is refused before it gets to them. The
/// service and all that came from it belong to the thread that made the service; COM is taken for that thread
/// as long as the service or one of its objects lives.
class WindowsTaskService : public ITaskService
{
public:
    WindowsTaskService();
    ~WindowsTaskService() override;

    TServiceStart StartScheduler() override;
    TTaskResult CreateScheduler(std::shared_ptr<ITaskScheduler> &scheduler) override;
    /// The system's, for all of the process.
    ITaskAllocator &Allocator() override;
    /// The system's property sheet, over the window of its parent. Each page can be shown once.
    std::intptr_t ShowSheet(const TPropertySheet &sheet) override;
    std::string DescribeResult(TTaskResult result) override;

private:
    std::shared_ptr<TComApartment> m_apartment;
    std::unique_ptr<ITaskAllocator> m_allocator;
};

} // namespace Zelmar01
