#pragma once

#include <Zelmar01/tasks/service/store/StoredTask.h>

#include <memory>

namespace Zelmar01 {

/// A trigger of a job of the job store.
class TStoredTrigger : public ITaskTrigger, public std::enable_shared_from_this<TStoredTrigger>
{
public:
    TStoredTrigger(std::shared_ptr<TStoredTask> task, std::size_t index);

    TTaskResult QueryInterface(const TGuid &iid, std::shared_ptr<ITaskObject> &object) override;
    TTaskResult SetTrigger(const TASK_TRIGGER *trigger) override;
    TTaskResult GetTrigger(TASK_TRIGGER &trigger) override;
    TTaskResult GetTriggerString(char16_t *&text) override;

private:
    // Null when the job has no trigger of this index any more.
    TASK_TRIGGER *stored() const;

    std::shared_ptr<TStoredTask> m_task;
    std::size_t m_index;
};

} // namespace Zelmar01
