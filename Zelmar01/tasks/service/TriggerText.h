#pragma once

#include <Zelmar01/tasks/service/MSTask.h>

#include <string>

namespace Zelmar01 {

/// When a trigger starts its job, in French: "À 05:00 tous les jours, à partir du 05/05/2011". For a trigger
/// that never can, "Jamais" and why.
std::u16string TriggerText(const TASK_TRIGGER &trigger);

} // namespace Zelmar01
