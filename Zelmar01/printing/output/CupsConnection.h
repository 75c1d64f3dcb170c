#pragma once

#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/printing/output/PrintSystem.h>

#include <cups/cups.h>

#include <chrono>
#include <memory>
#include <string>
#include <string_view>

namespace Zelmar01 {

struct TIppDelete
{
    void operator()(ipp_t *ipp) const { ippDelete(ipp); }
};
using TIpp = std::unique_ptr<ipp_t, TIppDelete>;

/// One connection to the print server, with every wait bounded. It speaks IPP itself, since the convenience
/// calls of libcups hide errors, may ask for a password on the terminal and cannot be bounded.
class CupsConnection
{
public:
    explicit CupsConnection(const TPrintSystemOptions &options) : m_options(options) {}
    ~CupsConnection() { Close(); }
    CupsConnection(const CupsConnection &) = delete;
    CupsConnection &operator=(const CupsConnection &) = delete;

    /// Connects unless it is connected.
    bool Connect();
    void Close();

    /// A request about a printer, or about the server when `printer` is empty.
    static TIpp NewRequest(ipp_op_t operation, const std::string &printer = {});

    /// Sends a request and returns the server's answer; null when none came or the server refused.
    TIpp Ask(const TIpp &request);

    /// The same in steps, for a request with a document behind it, in any number of pieces. The server throws
    /// away a document whose request is not ended.
    bool BeginRequest(const TIpp &request, bool hasDocument);
    bool SendDocument(std::string_view bytes);
    TIpp EndRequest();

    /// Why the last call failed.
    const TSystemCause &Cause() const { return m_cause; }
    /// The request had been sent as a whole when the answer failed to come.
    bool AnswerMissing() const { return m_answerMissing; }
    /// The connection's last failure was a wait that reached its end.
    bool TimedOut() const { return m_wait.Over; }
    /// The server refused because it does not know what was asked for.
    bool NotFound() const;

private:
    // How long libcups may wait within one step.
    struct TWait
    {
        std::chrono::steady_clock::time_point Deadline;
        bool Over = false;
    };
    static int goesOn(http_t *http, void *wait);

    void startWait();
    bool fail(int code, const std::string &why, const std::string &remedy = {});
    bool failConnection(const std::string &why);
    void failAnswer(const std::string &why);
    bool refused(http_status_t status);
    bool refused(ipp_t *answer);

    const TPrintSystemOptions &m_options;
    http_t *m_http = nullptr;
    std::string m_server; // for people
    TSystemCause m_cause;
    TWait m_wait;
    bool m_answerMissing = false;
};

} // namespace Zelmar01
