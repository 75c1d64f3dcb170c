#pragma once

#include "CupsConnection.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Zelmar01 {

class CupsSpooler;

/// One raw job on a printer, from the opening of the printer to its closing. The job comes into being with
/// its first byte, so that an empty one leaves nothing behind in the queue.
class CupsJob
{
public:
    CupsJob(CupsSpooler &spooler, std::string printer);

    bool Open();
    bool StartDocument(const std::string &name);
    bool Write(std::string_view bytes, std::size_t &written);
    bool EndPage();
    /// Ends the page that may be open, and the job; cancels it when a step before has failed and it is
    /// certain that it will not print.
    bool EndDocument();

private:
    bool failed();
    bool createJob();
    bool beginDocument();

    CupsSpooler &m_spooler;
    CupsConnection m_connection;
    std::string m_printer, m_document;
    bool m_accepting = true;
    int m_job = 0;          // the server's number; 0 while there is no job
    bool m_sending = false; // a document is on its way
    bool m_failed = false;
    bool m_unknown = false;
};

/// The print server's side of IPrintSystem: its printers, and raw jobs on them.
class CupsSpooler
{
public:
    explicit CupsSpooler(TPrintSystemOptions options) : m_options(std::move(options)) {}

    /// A printer that the server knows, open for one job; null otherwise.
    std::unique_ptr<CupsJob> Open(const std::string &printer);

    bool List(std::vector<std::string> &printers);

    /// The default printer: the user's own (LPDEST, PRINTER, lpoptions) when the server knows it, else the
    /// server's. False with an empty name when there is none.
    bool Default(std::string &printer);

    const TSystemCause &Cause() const { return m_cause; }
    bool OutcomeUnknown() const { return m_unknown; }

private:
    friend class CupsJob;
    bool failed(TSystemCause cause, bool unknown = false);

    TPrintSystemOptions m_options;
    TSystemCause m_cause;
    bool m_unknown = false;
};

} // namespace Zelmar01
