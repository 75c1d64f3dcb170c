#pragma once

#include <Zelmar01/tasks/service/store/Tick.h>

namespace Zelmar01 {

/// What ReadTickState() reads; a failure when there is such a state and it cannot be read.
TTaskResult LoadTickState(const TJobFolder &folder, TTickState &state);

/// Writes what ReadTickState() reads. The caller holds the folder's lock.
TTaskResult WriteTickState(const TJobFolder &folder, const TTickState &state);

} // namespace Zelmar01
