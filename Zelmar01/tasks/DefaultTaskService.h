#pragma once

#include <Zelmar01/tasks/service/TaskService.h>

#include <memory>

namespace Zelmar01 {

/// The task service of this platform: the system's own on Windows, elsewhere the job store (JobStore.h) in
/// its default folder.
std::shared_ptr<ITaskService> DefaultTaskService();

} // namespace Zelmar01
