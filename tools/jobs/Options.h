#pragma once

#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/tasks/service/MSTask.h>

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace Zelmar01 {

/// What makes the ticks come.
enum class TEngine { Cron, Systemd };

/// What the user asked for on the command line.
struct TJobsToolOptions
{
    enum TCommand {
        Help,
        List,
        Show,
        Next,
        Create,
        Delete,
        Run,
        Terminate,
        Tick,
        Status,
        Install,
        Uninstall
    };

    TCommand Command = Help;
    QString Folder; ///< absolute; empty for the default one
    bool Json = false;
    QString Name; ///< of the job

    bool All = false;     ///< list: hidden jobs, too
    QDateTime From;       ///< next: local time; invalid for now
    int Count = 10;       ///< next
    bool Wait = false;    ///< run: until the job is over
    bool Verbose = false; ///< tick: also what went well
    bool Print = false;   ///< install: only show what would be done
    std::optional<TEngine> Engine;

    // create
    QString Program, Parameters, Directory, Comment, Creator;
    std::uint32_t Flags = 0;
    std::uint32_t Priority = PriorityClass::Normal;
    std::optional<std::uint32_t> MaxRunTime; ///< milliseconds
    std::vector<TASK_TRIGGER> Triggers;
};

/// A command line that the tool cannot follow. what() says why.
class EUsage : public Exception
{
public:
    using Exception::Exception;
};

/// Reads a command line, the program's name being its first item. Raises EUsage.
TJobsToolOptions ParseOptions(const QStringList &arguments);

/// The answer to --help: every command and option, the exit codes and some examples.
QString HelpText();

/// The names of flags, such as "disabled", each with its bit.
struct TFlagName
{
    const char *Name;
    std::uint32_t Bit;
};
const std::vector<TFlagName> &FlagNames();

} // namespace Zelmar01
