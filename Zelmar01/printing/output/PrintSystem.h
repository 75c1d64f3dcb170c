#pragma once

#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/printing/output/PortMap.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Zelmar01 {

/// A handle of the print system: a port, a printer or a device context. Negative when there is none.
using TPrintHandle = std::intptr_t;

/// Time-outs of a port in milliseconds. A write may take the constant and, in addition, the multiplier for
/// each byte; 0 and 0 mean that it may take for ever.
struct TCommTimeouts
{
    std::uint32_t ReadInterval = 0, ReadMultiplier = 0, ReadConstant = 0;
    std::uint32_t WriteMultiplier = 0, WriteConstant = 0;

    bool operator==(const TCommTimeouts &) const = default;
};

/// SEM_FAILCRITICALERRORS of SetErrorMode: no box of the system's own for a device that fails.
inline constexpr unsigned ErrorModeFailCriticalErrors = 1;

/// PASSTHROUGH of Escape.
inline constexpr int EscapePassThrough = 19;

/// What a document is sent as: its name in the queue and the type of its data.
struct TDocInfo
{
    std::string DocName;
    std::string DataType;
};

/// What the library asks of the operating system to bring bytes to a printer, under the names that these
/// operations have there. A failed operation leaves its reason in LastCause().
///
/// Texts are UTF-8, data are bytes of any value. All calls run on the caller's thread and each of them ends,
/// but for a write to a port without time-outs: see TCommTimeouts and TPrintSystemOptions.
class IPrintSystem
{
public:
    virtual ~IPrintSystem() = default;

    // Ports.
    /// Sets which errors the system may show in boxes of its own and returns the mode before.
    virtual unsigned SetErrorMode(unsigned mode) = 0;
    /// Opens the device of a local port for writing.
    virtual TPrintHandle FileCreate(const std::string &port) = 0;
    virtual bool GetCommTimeouts(TPrintHandle port, TCommTimeouts &timeouts) = 0;
    virtual bool SetCommTimeouts(TPrintHandle port, const TCommTimeouts &timeouts) = 0;
    /// Returns how many bytes left for the device within the port's time-outs. What is still queued at the
    /// end of that time is thrown away and does not count.
    virtual std::size_t FileWrite(TPrintHandle port, std::string_view bytes) = 0;
    /// Closes a port and gives the device back as it was found.
    virtual void FileClose(TPrintHandle port) = 0;

    // The spooler.
    virtual TPrintHandle OpenPrinter(const std::string &printer) = 0;
    virtual bool StartDocPrinter(TPrintHandle printer, const TDocInfo &document) = 0;
    virtual bool StartPagePrinter(TPrintHandle printer) = 0;
    /// `written` receives the number of bytes that the spooler took.
    virtual bool WritePrinter(TPrintHandle printer, std::string_view bytes, std::size_t &written) = 0;
    virtual bool EndPagePrinter(TPrintHandle printer) = 0;
    virtual bool EndDocPrinter(TPrintHandle printer) = 0;
    virtual bool ClosePrinter(TPrintHandle printer) = 0;

    // The printer object's printers and documents.
    /// The names of the printers, in the system's order. When they cannot be had it is empty and LastCause()
    /// tells why; when there are none, LastCause() is empty too.
    virtual std::vector<std::string> Printers() = 0;
    /// The user's or the system's default printer; empty when there is none.
    virtual std::string DefaultPrinter() = 0;
    /// Opens a document on a printer and returns its device context.
    virtual TPrintHandle BeginDoc(const std::string &printer, const std::string &title) = 0;
    /// The printer escape: with function PASSTHROUGH (19), `input` is a 16-bit little-endian count and that
    /// many bytes, which go to the printer unchanged. `inputSize` is 0 for this function. Negative on
    /// failure.
    virtual int Escape(TPrintHandle context, int function, int inputSize, const char *input,
                       void *output) = 0;
    virtual bool EndDoc(TPrintHandle context) = 0;

    /// Why the last operation that failed did so.
    virtual const TSystemCause &LastCause() const = 0;
    /// Whether that failure leaves open if the document prints: it had been handed over when the answer
    /// failed to come.
    virtual bool OutcomeUnknown() const = 0;
};

/// How the platform's print system is set up.
struct TPrintSystemOptions
{
    /// Ports set by the host; they win over the user's settings.
    TPortMap Ports;
    /// The print server as "host:port" or the path of a socket; empty for the user's own (CUPS_SERVER or
    /// client.conf). Not used on Windows.
    std::string Server;
    /// How long a connection to the print server may take, and each sending and each answer. The server's
    /// name is looked up in the resolver's own time. Not used on Windows, which bounds the waits of its
    /// spooler itself.
    std::chrono::milliseconds ConnectTimeout{3000};
    std::chrono::milliseconds ReplyTimeout{10000};
};

/// The print system of this platform: device files and CUPS on POSIX systems, the spooler, GDI and ports of
/// Windows there. It connects to nothing and reads no setting before it is asked for something.
std::shared_ptr<IPrintSystem> PlatformPrintSystem(TPrintSystemOptions options = {});

/// What stands behind a port name on this machine, for people who look for their printer.
struct TPortState
{
    std::string Name;
    std::string Device; ///< the device that would be used; empty when none is set
    bool Usable = false;
    TSystemCause Cause; ///< why it is not usable
};

/// Looks at the local ports, in the order of LocalPortNames, without writing to any. Raises EConvertError for
/// a user's setting that cannot be understood.
std::vector<TPortState> LookAtPorts(const TPortMap &hostPorts = {});

} // namespace Zelmar01
