#pragma once

#include <Zelmar01/tasks/service/TaskInterfaces.h>
#include <Zelmar01/tasks/service/WindowsCom.h>

#include <memory>

namespace Zelmar01 {

/// A trigger of the system's service.
class WindowsTrigger : public ITaskTrigger, public std::enable_shared_from_this<WindowsTrigger>
{
public:
    explicit WindowsTrigger(std::shared_ptr<::ITaskTrigger> trigger);

    TTaskResult QueryInterface(const TGuid &iid, std::shared_ptr<ITaskObject> &object) override;
    TTaskResult SetTrigger(const TASK_TRIGGER *trigger) override;
    TTaskResult GetTrigger(TASK_TRIGGER &trigger) override;
    TTaskResult GetTriggerString(char16_t *&text) override;

private:
    std::shared_ptr<::ITaskTrigger> m_trigger;
};

} // namespace Zelmar01
