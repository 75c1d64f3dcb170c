#pragma once

#include "JobsTool.h"

namespace Zelmar01 {

/// Has the ticks of a folder come every minute, and says what else the system needs for it. A user has one
/// such folder: the one installed last.
TExit InstallTicks(const TJobsToolOptions &options, QTextStream &out, QTextStream &err);
TExit UninstallTicks(const TJobsToolOptions &options, QTextStream &out, QTextStream &err);

/// Whether InstallTicks() has set an engine up, for this user.
bool TicksComeFrom(TEngine engine);

} // namespace Zelmar01
