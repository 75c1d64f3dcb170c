#pragma once

#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/tasks/TaskItem.h>
#include <Zelmar01/tasks/service/TaskInterfaces.h>

#include <QString>

#include <cstdint>
#include <vector>

namespace Zelmar01 {

/// All that a person sets of a job, as a value.
struct TTaskSettings
{
    QString ApplicationName, Parameters, WorkingDirectory, Comment;
    std::uint32_t Flags = 0; ///< of TaskFlag, with bits that have no name
    TIdleTime IdleTime;
    std::uint32_t MaxRunTime = 0; ///< milliseconds
    std::uint32_t Priority = PriorityClass::Normal;
    std::vector<TASK_TRIGGER> Triggers;

    // To be looked at alone.
    QString File;
    QString Account; ///< empty when none is set
};

/// Reads the settings of a job. Raises EInOutError with the service's reason.
TTaskSettings ReadTaskSettings(ITask &task, ITaskAllocator &allocator);

/// Makes `after` the settings of a job that has `before` now, by calls for what differs alone, and with
/// `save` writes its file. Raises EInOutError with the service's reason; the job then has its old settings
/// again.
void WriteTaskSettings(ITask &task, const TTaskSettings &before, const TTaskSettings &after, bool save);

/// Whether two triggers are the same in all their 48 bytes.
bool SameTrigger(const TASK_TRIGGER &a, const TASK_TRIGGER &b);

} // namespace Zelmar01
