#pragma once

#include <Zelmar01/tasks/service/TaskInterfaces.h>
#include <Zelmar01/tasks/service/WindowsCom.h>

#include <memory>

namespace Zelmar01 {

/// The scheduler of the system's service. Names of jobs are handed to it as they come.
class WindowsScheduler : public ITaskScheduler, public std::enable_shared_from_this<WindowsScheduler>
{
public:
    explicit WindowsScheduler(std::shared_ptr<::ITaskScheduler> scheduler);

    TTaskResult QueryInterface(const TGuid &iid, std::shared_ptr<ITaskObject> &object) override;
    TTaskResult SetTargetComputer(const char16_t *computer) override;
    TTaskResult GetTargetComputer(char16_t *&computer) override;
    TTaskResult Enum(std::shared_ptr<IEnumWorkItems> &names) override;
    TTaskResult Activate(const char16_t *name, const TGuid &iid,
                         std::shared_ptr<ITaskObject> &object) override;
    TTaskResult Delete(const char16_t *name) override;
    TTaskResult NewWorkItem(const char16_t *name, const TGuid &clsid, const TGuid &iid,
                            std::shared_ptr<ITaskObject> &object) override;
    TTaskResult AddWorkItem(const char16_t *name, const std::shared_ptr<IScheduledWorkItem> &item) override;
    TTaskResult IsOfType(const char16_t *name, const TGuid &iid) override;

private:
    TTaskResult wrapTask(IUnknown *found, const TGuid &iid, std::shared_ptr<ITaskObject> &object) const;

    std::shared_ptr<::ITaskScheduler> m_scheduler;
};

} // namespace Zelmar01
