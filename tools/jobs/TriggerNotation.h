#pragma once

#include <Zelmar01/tasks/service/MSTask.h>

#include <QDateTime>
#include <QString>

namespace Zelmar01 {

/// Reads a trigger as it is written on the command line, such as "weekly 04:00 days=mon,fri every=2"; see
/// TriggerNotationHelp(). It begins at `now` where it says nothing else. Raises EUsage.
TASK_TRIGGER ParseTrigger(const QString &text, const QDateTime &now);

/// The notation of a trigger, which ParseTrigger() reads back; empty for one that can never start its job,
/// which has none.
QString NotationOf(const TASK_TRIGGER &trigger);

QString TriggerNotationHelp();

} // namespace Zelmar01
