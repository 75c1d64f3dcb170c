#pragma once

#include "JobsTool.h"

namespace Zelmar01 {

/// Makes a tick. What went wrong goes to `err`, so that cron mails it; an untroubled tick says nothing.
TExit RunTickCommand(const TJobsToolOptions &options, QTextStream &out, QTextStream &err);

/// Says whether ticks arrive and what happened lately.
TExit RunStatusCommand(const TJobsToolOptions &options, QTextStream &out, QTextStream &err);

} // namespace Zelmar01
