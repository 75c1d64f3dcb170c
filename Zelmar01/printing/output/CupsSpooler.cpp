#include "CupsSpooler.h"

#include "PrintTexts.h"

#include <Zelmar01/core/Translation.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>
#include <sstream>

namespace Zelmar01 {

namespace {

void addString(const TIpp &request, ipp_tag_t tag, const char *name, const std::string &value)
{
    ippAddString(request.get(), IPP_TAG_OPERATION, tag, name, nullptr, value.c_str());
}

TSystemCause unknownPrinter(const std::string &printer)
{
    return {IPP_STATUS_ERROR_NOT_FOUND,
            Filled(Translate("Zelmar01", "imprimante « %1 » : inconnue du serveur d'impression"), {printer}),
            PrintTexts::ChooseListedPrinter()};
}

// What the server accepts as the name of a queue. Other names are not asked for: part of such a name could be
// taken for the path or the options of another printer.
bool canBePrinter(const std::string &name)
{
    return name.size() <= 127 && std::all_of(name.begin(), name.end(), [](char c) {
               const auto byte = static_cast<unsigned char>(c);
               return byte > ' ' && byte != 0x7F &&
                      std::string_view("/\\?'\"#").find(c) == std::string_view::npos;
           });
}

// The printer that the user has made his own default, whether the server knows it or not.
std::vector<std::string> userDefaults()
{
    std::vector<std::string> names;
    const auto add = [&](std::string name) {
        name.erase(std::min(name.find('/'), name.size())); // an instance of the printer
        if (!name.empty())
            names.push_back(std::move(name));
    };
    for (const char *variable : {"LPDEST", "PRINTER"})
        if (const char *name = std::getenv(variable))
            add(name);
    std::vector<std::string> files{"/etc/cups/lpoptions"};
    if (const char *home = std::getenv("HOME"))
        files.insert(files.begin(), std::string(home) + "/.cups/lpoptions");
    for (const auto &file : files) {
        std::ifstream lines(file);
        for (std::string line, word, name; std::getline(lines, line);)
            if (std::istringstream words(line); words >> word >> name && word == "Default")
                add(name);
    }
    return names;
}

} // namespace

CupsJob::CupsJob(CupsSpooler &spooler, std::string printer)
    : m_spooler(spooler), m_connection(spooler.m_options), m_printer(std::move(printer))
{
}

bool CupsJob::Open()
{
    const auto request = CupsConnection::NewRequest(IPP_OP_GET_PRINTER_ATTRIBUTES, m_printer);
    addString(request, IPP_TAG_KEYWORD, "requested-attributes", "printer-is-accepting-jobs");
    const auto answer = m_connection.Ask(request);
    if (!answer)
        return failed();
    auto *accepting = ippFindAttribute(answer.get(), "printer-is-accepting-jobs", IPP_TAG_BOOLEAN);
    m_accepting = !accepting || ippGetBoolean(accepting, 0);
    return true;
}

bool CupsJob::StartDocument(const std::string &name)
{
    m_document = name;
    return m_accepting ||
           m_spooler.failed(
               {IPP_STATUS_ERROR_NOT_ACCEPTING_JOBS,
                Filled(Translate("Zelmar01", "imprimante « %1 » : n'accepte pas de travaux"), {m_printer}),
                Translate("Zelmar01", "la réactiver (cupsaccept)")});
}

bool CupsJob::Write(std::string_view bytes, std::size_t &written)
{
    written = 0;
    if (bytes.empty())
        return true;
    if (!m_sending && !beginDocument())
        return failed();
    if (!m_connection.SendDocument(bytes))
        return failed();
    written = bytes.size();
    return true;
}

bool CupsJob::EndPage()
{
    // The end of a document that was cut short is not announced: the server then throws it away.
    if (!m_sending)
        return true;
    m_sending = false;
    return m_connection.EndRequest() != nullptr || failed();
}

bool CupsJob::EndDocument()
{
    const bool ended = EndPage();
    // A server that has just kept us waiting is not asked again; it gives up such a job by itself.
    if (m_failed && m_job && !m_unknown && !m_connection.TimedOut()) {
        const auto request = CupsConnection::NewRequest(IPP_OP_CANCEL_JOB, m_printer);
        ippAddInteger(request.get(), IPP_TAG_OPERATION, IPP_TAG_INTEGER, "job-id", m_job);
        m_connection.Ask(request);
    }
    return ended;
}

bool CupsJob::beginDocument()
{
    if (!m_job && !createJob())
        return false;
    const auto request = CupsConnection::NewRequest(IPP_OP_SEND_DOCUMENT, m_printer);
    ippAddInteger(request.get(), IPP_TAG_OPERATION, IPP_TAG_INTEGER, "job-id", m_job);
    addString(request, IPP_TAG_MIMETYPE, "document-format", CUPS_FORMAT_RAW);
    ippAddBoolean(request.get(), IPP_TAG_OPERATION, "last-document", 1);
    m_sending = m_connection.BeginRequest(request, true);
    return m_sending;
}

bool CupsJob::createJob()
{
    const auto request = CupsConnection::NewRequest(IPP_OP_CREATE_JOB, m_printer);
    if (!m_document.empty())
        addString(request, IPP_TAG_NAME, "job-name", m_document);
    const auto answer = m_connection.Ask(request);
    if (!answer)
        return false;
    auto *job = ippFindAttribute(answer.get(), "job-id", IPP_TAG_INTEGER);
    m_job = job ? ippGetInteger(job, 0) : 0;
    return m_job > 0;
}

bool CupsJob::failed()
{
    m_failed = true;
    m_sending = false;
    // Without its document a job prints nothing, whatever became of it.
    m_unknown = m_job && m_connection.AnswerMissing();
    return m_spooler.failed(m_connection.NotFound() ? unknownPrinter(m_printer) : m_connection.Cause(),
                            m_unknown);
}

std::unique_ptr<CupsJob> CupsSpooler::Open(const std::string &printer)
{
    // An empty name would be taken for the server itself.
    if (printer.empty()) {
        failed({0, PrintTexts::NoDefaultPrinter(), PrintTexts::ChoosePrinter()});
        return nullptr;
    }
    if (!canBePrinter(printer)) {
        failed(unknownPrinter(printer));
        return nullptr;
    }
    auto job = std::make_unique<CupsJob>(*this, printer);
    return job->Open() ? std::move(job) : nullptr;
}

bool CupsSpooler::List(std::vector<std::string> &printers)
{
    CupsConnection connection(m_options);
    const auto request = CupsConnection::NewRequest(IPP_OP_CUPS_GET_PRINTERS);
    addString(request, IPP_TAG_KEYWORD, "requested-attributes", "printer-name");
    const auto answer = connection.Ask(request);
    if (!answer)
        return connection.NotFound() || failed(connection.Cause());
    for (auto *attribute = ippFirstAttribute(answer.get()); attribute;
         attribute = ippNextAttribute(answer.get()))
        if (const char *name = ippGetName(attribute); name && std::string_view(name) == "printer-name")
            printers.emplace_back(ippGetString(attribute, 0, nullptr));
    return true;
}

bool CupsSpooler::Default(std::string &printer)
{
    if (const auto wanted = userDefaults(); !wanted.empty()) {
        std::vector<std::string> printers;
        if (!List(printers))
            return false;
        for (const auto &name : wanted)
            if (std::find(printers.begin(), printers.end(), name) != printers.end()) {
                printer = name;
                return true;
            }
    }
    CupsConnection connection(m_options);
    const auto request = CupsConnection::NewRequest(IPP_OP_CUPS_GET_DEFAULT);
    addString(request, IPP_TAG_KEYWORD, "requested-attributes", "printer-name");
    const auto answer = connection.Ask(request);
    auto *name = answer ? ippFindAttribute(answer.get(), "printer-name", IPP_TAG_NAME) : nullptr;
    if (!name)
        return failed(connection.NotFound() || answer
                          ? TSystemCause{0, PrintTexts::NoDefaultPrinter(),
                                         Translate("Zelmar01", "en définir une (lpadmin -d)")}
                          : connection.Cause());
    printer = ippGetString(name, 0, nullptr);
    return true;
}

bool CupsSpooler::failed(TSystemCause cause, bool unknown)
{
    m_cause = std::move(cause);
    m_unknown = unknown;
    return false;
}

} // namespace Zelmar01
