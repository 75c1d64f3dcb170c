#include "PrintTexts.h"
#include "WindowsPort.h"
#include "WindowsTexts.h"

#include <Zelmar01/core/Translation.h>
#include <Zelmar01/printing/output/PrintSystem.h>

#include <winspool.h>

#include <map>
#include <optional>
#include <utility>

// Macros of the same names as members of IPrintSystem.
#undef OpenPrinter
#undef StartDocPrinter

namespace Zelmar01 {

namespace {

// Without a setting the name is that of Windows' own device.
TPortTarget targetOf(const TPortMap &ports, const std::string &name)
{
    const auto *target = ports.Find(name);
    return target ? *target : TPortTarget{{name}, {}, {}};
}

// An opened printer and what it was given.
struct TJob
{
    HANDLE Printer;
    std::string Name;
    bool HandedOver = false; // the spooler may hold bytes of the document
};

struct TDocument
{
    HDC Context;
    std::string Printer;
    bool HandedOver = false;
};

// The server's name of options is not used: Windows finds its print servers by the printers' names. Nor are
// its time-outs: the waits of the spooler's calls are bounded by Windows itself.
class WindowsPrintSystem final : public IPrintSystem
{
public:
    explicit WindowsPrintSystem(TPortMap hostPorts) : m_hostPorts(std::move(hostPorts)) {}

    ~WindowsPrintSystem() override
    {
        for (const auto &[handle, document] : m_documents)
            DeleteDC(document.Context);
        for (const auto &[handle, job] : m_jobs)
            ::ClosePrinter(job.Printer);
    }

    unsigned SetErrorMode(unsigned mode) override { return ::SetErrorMode(mode); }

    TPrintHandle FileCreate(const std::string &name) override
    try {
        TSystemCause cause;
        // Read once, but again after a setting that could not be understood: its user will have mended it.
        if (!m_portMap)
            m_portMap = TPortMap::InForce(m_hostPorts);
        auto port = std::make_unique<WindowsPort>(targetOf(*m_portMap, name), cause);
        if (!port->IsOpen())
            return failed(std::move(cause));
        m_ports.emplace(++m_lastHandle, std::move(port));
        return m_lastHandle;
    } catch (const EConvertError &error) {
        return failed({0, error.what(), PrintTexts::MendSetting()});
    }

    bool GetCommTimeouts(TPrintHandle port, TCommTimeouts &timeouts) override
    {
        m_unknown = false;
        return m_ports.at(port)->GetTimeouts(timeouts, m_cause);
    }

    bool SetCommTimeouts(TPrintHandle port, const TCommTimeouts &timeouts) override
    {
        m_unknown = false;
        return m_ports.at(port)->SetTimeouts(timeouts, m_cause);
    }

    std::size_t FileWrite(TPrintHandle port, std::string_view bytes) override
    {
        m_unknown = false;
        return m_ports.at(port)->Write(bytes, m_cause);
    }

    void FileClose(TPrintHandle port) override { m_ports.erase(port); }

    TPrintHandle OpenPrinter(const std::string &printer) override
    {
        // An empty name would stand for the print server itself.
        if (printer.empty())
            return failed({0, PrintTexts::NoDefaultPrinter(), PrintTexts::ChoosePrinter()});
        auto name = AnsiText(printer);
        if (!name)
            return failed(UnspeakableName(printer));
        HANDLE handle = nullptr;
        if (!OpenPrinterA(name->data(), &handle, nullptr))
            return failedOn(printer);
        m_jobs.emplace(++m_lastHandle, TJob{handle, printer});
        return m_lastHandle;
    }

    bool StartDocPrinter(TPrintHandle printer, const TDocInfo &document) override
    {
        auto name = AnsiText(document.DocName);
        auto type = AnsiText(document.DataType);
        if (!name || !type)
            return failed(UnspeakableName(document.DocName)) > 0;
        DOC_INFO_1A information{name->data(), nullptr, type->data()};
        return spooled(printer, StartDocPrinterA(m_jobs.at(printer).Printer, 1,
                                                 reinterpret_cast<BYTE *>(&information)) > 0);
    }

    bool StartPagePrinter(TPrintHandle printer) override
    {
        return spooled(printer, ::StartPagePrinter(m_jobs.at(printer).Printer));
    }

    bool WritePrinter(TPrintHandle printer, std::string_view bytes, std::size_t &written) override
    {
        auto &job = m_jobs.at(printer);
        std::string data(bytes);
        DWORD count = 0;
        const bool done = ::WritePrinter(job.Printer, data.data(), static_cast<DWORD>(data.size()), &count);
        written = count;
        job.HandedOver = job.HandedOver || count > 0 || (!done && GetLastError() == RPC_S_CALL_FAILED);
        return spooled(printer, done);
    }

    bool EndPagePrinter(TPrintHandle printer) override
    {
        return spooled(printer, ::EndPagePrinter(m_jobs.at(printer).Printer));
    }

    bool EndDocPrinter(TPrintHandle printer) override
    {
        return spooled(printer, ::EndDocPrinter(m_jobs.at(printer).Printer));
    }

    bool ClosePrinter(TPrintHandle printer) override
    {
        const auto job = std::move(m_jobs.extract(printer).mapped());
        return ::ClosePrinter(job.Printer) || failedOn(job.Name) > 0;
    }

    std::vector<std::string> Printers() override
    {
        constexpr DWORD which = PRINTER_ENUM_LOCAL | PRINTER_ENUM_CONNECTIONS;
        constexpr DWORD level = 4; // names alone: no printer is contacted for them
        std::vector<PRINTER_INFO_4A> found;
        DWORD size = 0, count = 0;
        while (!EnumPrintersA(which, nullptr, level, reinterpret_cast<BYTE *>(found.data()),
                              static_cast<DWORD>(found.size() * sizeof found[0]), &size, &count)) {
            if (GetLastError() != ERROR_INSUFFICIENT_BUFFER) {
                failedOn(Translate("Zelmar01", "liste des imprimantes"));
                return {};
            }
            found.resize(size / sizeof found[0] + 1);
        }
        m_cause = {};
        std::vector<std::string> printers;
        for (DWORD i = 0; i < count; ++i)
            printers.push_back(Utf8Text(found[i].pPrinterName));
        return printers;
    }

    std::string DefaultPrinter() override
    {
        DWORD size = 0;
        GetDefaultPrinterA(nullptr, &size);
        std::string name(size, '\0');
        if (GetDefaultPrinterA(name.data(), &size))
            return Utf8Text(name.c_str());
        const auto error = GetLastError();
        failed(error == ERROR_FILE_NOT_FOUND
                   ? TSystemCause{static_cast<int>(error), PrintTexts::NoDefaultPrinter(),
                                  Translate("Zelmar01", "en définir une dans les paramètres de Windows")}
                   : CauseFromWindows(error, Translate("Zelmar01", "imprimante par défaut")));
        return {};
    }

    TPrintHandle BeginDoc(const std::string &printer, const std::string &title) override
    {
        const auto name = AnsiText(printer);
        const auto document = AnsiText(title);
        if (!name || !document)
            return failed(UnspeakableName(name ? title : printer));
        const HDC context = CreateDCA("WINSPOOL", name->c_str(), nullptr, nullptr);
        if (!context)
            return failedOn(printer);
        const DOCINFOA information{sizeof information, document->c_str(), nullptr, nullptr, 0};
        if (StartDocA(context, &information) <= 0) {
            failedOn(printer);
            DeleteDC(context);
            return -1;
        }
        m_documents.emplace(++m_lastHandle, TDocument{context, printer});
        return m_lastHandle;
    }

    int Escape(TPrintHandle context, int function, int inputSize, const char *input, void *output) override
    {
        auto &document = m_documents.at(context);
        const int answer = ::Escape(document.Context, function, inputSize, input, output);
        if (answer < 0)
            failedOn(document.Printer);
        document.HandedOver = document.HandedOver || answer > 0;
        return answer;
    }

    bool EndDoc(TPrintHandle context) override
    {
        const auto document = std::move(m_documents.extract(context).mapped());
        const bool ended =
            ::EndDoc(document.Context) > 0 || failedOn(document.Printer, document.HandedOver) > 0;
        DeleteDC(document.Context);
        return ended;
    }

    const TSystemCause &LastCause() const override { return m_cause; }

    // Windows prints what its spooler holds when a document ends, and even one that a program leaves open. So
    // once the spooler has taken bytes, a failed call tells nothing about the printing.
    bool OutcomeUnknown() const override { return m_unknown; }

private:
    TPrintHandle failed(TSystemCause cause, bool unknown = false)
    {
        m_cause = std::move(cause);
        m_unknown = unknown;
        return -1;
    }

    TPrintHandle failedOn(const std::string &subject, bool unknown = false)
    {
        return failed(CauseFromWindows(GetLastError(), subject), unknown);
    }

    bool spooled(TPrintHandle printer, bool done)
    {
        if (!done)
            failedOn(m_jobs.at(printer).Name, m_jobs.at(printer).HandedOver);
        return done;
    }

    TPortMap m_hostPorts;
    std::optional<TPortMap> m_portMap; // with the user's settings
    TSystemCause m_cause;
    bool m_unknown = false;
    TPrintHandle m_lastHandle = 0;
    std::map<TPrintHandle, std::unique_ptr<WindowsPort>> m_ports;
    std::map<TPrintHandle, TJob> m_jobs;
    std::map<TPrintHandle, TDocument> m_documents;
};

} // namespace

std::shared_ptr<IPrintSystem> PlatformPrintSystem(TPrintSystemOptions options)
{
    return std::make_shared<WindowsPrintSystem>(std::move(options.Ports));
}

std::vector<TPortState> LookAtPorts(const TPortMap &hostPorts)
{
    const auto ports = TPortMap::InForce(hostPorts);
    std::vector<TPortState> states;
    for (const auto port : LocalPortNames) {
        const std::string name(port);
        const auto device = WindowsPort::ChosenDevice(targetOf(ports, name));
        TPortState state{name, device, WindowsPort::Exists(device), {}};
        if (!state.Usable)
            state.Cause = CauseFromWindows(ERROR_FILE_NOT_FOUND, device);
        states.push_back(std::move(state));
    }
    return states;
}

} // namespace Zelmar01
