#pragma once

#include <Zelmar01/tasks/service/TaskService.h>

#include <cstdint>
#include <functional>
#include <memory>

namespace Zelmar01 {

/// A page of the property sheet of a job of the job store: which job, and which page of it. A room with
/// windows turns it into one.
class TJobPage : public ITaskPage
{
public:
    std::shared_ptr<ITask> Job; ///< as it was opened by the host, with changes that are not saved
    TASKPAGE Type = TASKPAGE_TASK;
    bool PersistChanges = true; ///< the job is saved when the page is applied

    /// The allocator of what Job hands out.
    std::shared_ptr<ITaskAllocator> Allocator;
};

/// Shows a sheet of TJobPages; see ITaskService::ShowSheet for its answer.
using TJobSheet = std::function<std::intptr_t(const TPropertySheet &sheet)>;

/// Sets what shows the property sheets of the job stores, and returns what did before. Without one a sheet
/// cannot be shown.
TJobSheet SetJobSheet(TJobSheet sheet);

/// What shows property sheets; may be empty.
const TJobSheet &JobSheet();

} // namespace Zelmar01
