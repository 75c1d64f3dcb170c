#pragma once

#include <Zelmar01/tasks/service/store/Tick.h>

namespace Zelmar01 {

/// Writes what ReadTickState() reads. The caller holds the folder's lock.
TTaskResult WriteTickState(const TJobFolder &folder, const TTickState &state);

} // namespace Zelmar01
