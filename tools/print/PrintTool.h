#pragma once

#include "Options.h"

#include <QTextStream>

namespace Zelmar01 {

/// How the tool ends; the process' exit code.
enum class TExit { Accepted = 0, Failed = 1, WrongUsage = 2, OutcomeUnknown = 3 };

/// Does what the options ask for. What was done goes to `out`, warnings and the reason of an outcome that is
/// not Accepted to `err`.
TExit RunPrintTool(const TPrintToolOptions &options, QTextStream &out, QTextStream &err);

/// Says why something failed: the message, then its cause and remedy where it has them.
void ReportFailure(QTextStream &err, const std::exception &failure);

} // namespace Zelmar01
