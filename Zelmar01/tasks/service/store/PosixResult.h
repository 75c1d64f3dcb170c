#pragma once

#include <Zelmar01/tasks/service/TaskResults.h>

namespace Zelmar01 {

/// The result code that stands for an errno value; `other` for one that has none of its own.
TTaskResult ResultFromErrno(int error, TTaskResult other = TaskResult::Fail);

} // namespace Zelmar01
