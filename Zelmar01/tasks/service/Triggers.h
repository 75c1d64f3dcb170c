#pragma once

#include <Zelmar01/tasks/service/MSTask.h>
#include <Zelmar01/tasks/service/TaskResults.h>

namespace Zelmar01 {

/// Whether a trigger may be set: Ok or InvalidArgument. Refused are null, a size other than 48, an unknown
/// kind, a begin date that does not exist, a start time outside 00:00 to 23:59, with HasEndDate an end date
/// that does not exist, and a repetition that does not last longer than its interval. The end date may lie
/// before the begin date, and without its flag it may be anything.
TTaskResult CheckTrigger(const TASK_TRIGGER *trigger);

/// A trigger as it is stored: reserved fields, random interval and what its kind does not use are 0.
TASK_TRIGGER StoredTrigger(const TASK_TRIGGER &trigger);

/// Hands a stored trigger out: all of it but those words of the union that its kind does not use, which keep
/// their values in `target`.
void HandOutTrigger(const TASK_TRIGGER &stored, TASK_TRIGGER &target);

/// What a new trigger looks like at the local time `now`: daily from today at this minute on, and disabled.
TASK_TRIGGER NewTrigger(const SYSTEMTIME &now);

/// Whether a trigger waits for an event, and so has no times.
bool IsEventTrigger(const TASK_TRIGGER &trigger);

} // namespace Zelmar01
