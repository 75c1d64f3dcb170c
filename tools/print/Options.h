#pragma once

#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/printing/DosPrint.h>

#include <QString>
#include <QStringList>

#include <optional>

namespace Zelmar01 {

enum class TNotation { Decimal, Hexadecimal };

/// What the user asked for on the command line.
struct TPrintToolOptions
{
    bool Help = false;
    bool List = false;
    std::optional<TNotation> ShowCodes;
    QString SaveCodes; ///< the code file to write; empty for none
    QString LoadCodes; ///< the code file to read first; empty for none

    QString TextFile; ///< empty for standard input
    bool IsWindows1252 = false;
    QString Printer;
    TPortMap Ports;
    bool PassThrough = false;
    int Conversion = 0;
    TDosPrint::TTicketOptions Ticket;

    /// The printer and the codes are only looked at.
    bool PrintsNothing() const { return List || ShowCodes || !SaveCodes.isEmpty(); }
};

/// A command line that the tool cannot follow. what() says why.
class EUsage : public Exception
{
public:
    using Exception::Exception;
};

/// Reads a command line, the program's name being its first item. Raises EUsage.
TPrintToolOptions ParseOptions(const QStringList &arguments);

/// The answer to --help: every option, the exit codes and some examples.
QString HelpText();

/// A printer type as the user names it, such as "Epson".
QString TypeName(TPrinterType type);

} // namespace Zelmar01
