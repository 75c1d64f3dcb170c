#pragma once

#include "Options.h"

#include <QTextStream>

namespace Zelmar01 {

/// How the tool ends; the process' exit code.
enum class TExit { Done = 0, Failed = 1, WrongUsage = 2, NotWell = 3 };

/// Does what the options ask for. Answers go to `out`, what somebody should look at to `err`.
TExit RunJobsTool(const TJobsToolOptions &options, QTextStream &out, QTextStream &err);

} // namespace Zelmar01
