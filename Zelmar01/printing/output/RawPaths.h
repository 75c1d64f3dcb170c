#pragma once

#include <Zelmar01/printing/output/PrinterObject.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace Zelmar01 {

/// The ways on which bytes reach a printer without any page layout.
enum class TPrintPath {
    None,        ///< nothing has been sent yet
    PassThrough, ///< through the printer driver's escape
    Port,        ///< straight to a local port
    Spooler,     ///< a raw job of the print spooler
};

/// The most bytes that one call sends; longer data are cut without notice.
inline constexpr std::size_t PassThroughLimit = 4085;
inline constexpr std::size_t PortLimit = 4086;
inline constexpr std::size_t SpoolerLimit = 4085;

/// What became of the data of one call.
struct TPrintOutcome
{
    TPrintPath Path = TPrintPath::None;
    std::string Printer;      ///< the printer or port, UTF-8
    std::size_t Asked = 0;    ///< bytes of the data
    std::size_t Cut = 0;      ///< how many of them were beyond the limit and not sent
    std::size_t Accepted = 0; ///< how many the printer, port or spooler took
    bool Success = false;
    /// The printer may print the data although the call failed: they had been handed over when the answer
    /// failed to come. A host asks its user before it prints them again.
    bool Unknown = false;
    TSystemCause Cause; ///< why the call failed
};

/// Sends data to a local port, within 1000 ms and 1 ms a byte. On failure of the opening or of the writing
/// the outcome is stored all the same and EInOutError is raised: "Port de l'imprimante ticket non trouvé" or
/// "Problème d'écriture sur l'imprimante ticket !".
void SendToPort(IPrintSystem &system, const std::string &port, std::string_view data, TPrintOutcome &outcome);

/// Sends data as a raw job of the spooler, named after the printer. When a step fails, every step that had
/// begun is ended in reverse order and the outcome is a failure.
void SendToSpooler(IPrintSystem &system, const std::string &printer, std::string_view data,
                   TPrintOutcome &outcome);

/// Sends data through the driver's pass-through escape to the current printer. What the escape answers is not
/// looked at; any exception makes the outcome a failure.
void SendThroughDriver(TPrinterObject &printer, std::string_view data, TPrintOutcome &outcome);

} // namespace Zelmar01
