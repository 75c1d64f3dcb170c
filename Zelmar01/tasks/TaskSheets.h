#pragma once

#include <Zelmar01/tasks/TaskItem.h>
#include <Zelmar01/tasks/service/TaskService.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace Zelmar01 {

/// Shows a property sheet of pages that `service` made, until it is closed: above 0 when it was closed with
/// OK, 0 when it was cancelled, below 0 when it could not be shown.
using TTaskSheet = std::function<std::intptr_t(ITaskService &service, const TPropertySheet &sheet)>;

/// Sets what shows property sheets and returns what did before. A host with windows calls UseTaskSheets()
/// (UseTaskSheets.h); without anything set the service shows its own sheets, if it has any.
TTaskSheet SetTaskSheet(TTaskSheet sheet);

/// Shows a property sheet; the service stays as long as it is open. Raises EInvalidOperation when neither
/// anything set nor the service can.
std::intptr_t ShowTaskSheet(std::shared_ptr<ITaskService> service, const TPropertySheet &sheet);

/// Those of `pages` that a job has, in their order. They save the job when they are applied.
std::vector<std::shared_ptr<ITaskPage>> TaskPages(IProvideTaskPage &provider, TPageTypes pages);

} // namespace Zelmar01
