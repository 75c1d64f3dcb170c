#include "CupsSpooler.h"
#include "PosixPort.h"
#include "PrintTexts.h"

#include <Zelmar01/printing/output/PrintSystem.h>

#include <map>
#include <optional>
#include <utility>

namespace Zelmar01 {

namespace {

class PosixPrintSystem final : public IPrintSystem
{
public:
    explicit PosixPrintSystem(TPrintSystemOptions options)
        : m_hostPorts(options.Ports), m_spooler(std::move(options))
    {
    }

    // There is no such mode on these systems: no device error brings up a box.
    unsigned SetErrorMode(unsigned mode) override { return std::exchange(m_errorMode, mode); }

    TPrintHandle FileCreate(const std::string &name) override
    try {
        // Read once, but again after a setting that could not be understood: its user will have mended it.
        if (!m_portMap)
            m_portMap = TPortMap::InForce(m_hostPorts);
        const auto *target = m_portMap->Find(name);
        if (!target)
            return failed({0, name + " : " + PrintTexts::NoDeviceSet(), PrintTexts::SetPort()});
        TSystemCause cause;
        auto port = std::make_unique<PosixPort>(*target, cause);
        if (!port->IsOpen())
            return failed(std::move(cause));
        m_ports.emplace(++m_lastHandle, std::move(port));
        return m_lastHandle;
    } catch (const EConvertError &error) {
        return failed({0, error.what(), PrintTexts::MendSetting()});
    }

    bool GetCommTimeouts(TPrintHandle port, TCommTimeouts &timeouts) override
    {
        timeouts = m_ports.at(port)->Timeouts;
        return true;
    }

    bool SetCommTimeouts(TPrintHandle port, const TCommTimeouts &timeouts) override
    {
        m_ports.at(port)->Timeouts = timeouts;
        return true;
    }

    std::size_t FileWrite(TPrintHandle port, std::string_view bytes) override
    {
        m_unknown = false;
        return m_ports.at(port)->Write(bytes, m_cause);
    }

    void FileClose(TPrintHandle port) override { m_ports.erase(port); }

    TPrintHandle OpenPrinter(const std::string &printer) override
    {
        auto job = m_spooler.Open(printer);
        if (!job)
            return spoolerFailed();
        m_jobs.emplace(++m_lastHandle, std::move(job));
        return m_lastHandle;
    }

    bool StartDocPrinter(TPrintHandle printer, const TDocInfo &document) override
    {
        return spooled(m_jobs.at(printer)->StartDocument(document.DocName));
    }

    bool StartPagePrinter(TPrintHandle) override { return true; }

    bool WritePrinter(TPrintHandle printer, std::string_view bytes, std::size_t &written) override
    {
        return spooled(m_jobs.at(printer)->Write(bytes, written));
    }

    bool EndPagePrinter(TPrintHandle printer) override { return spooled(m_jobs.at(printer)->EndPage()); }

    bool EndDocPrinter(TPrintHandle printer) override { return spooled(m_jobs.at(printer)->EndDocument()); }

    bool ClosePrinter(TPrintHandle printer) override { return m_jobs.erase(printer) == 1; }

    std::vector<std::string> Printers() override
    {
        std::vector<std::string> printers;
        if (spooled(m_spooler.List(printers)))
            m_cause = {};
        return printers;
    }

    std::string DefaultPrinter() override
    {
        std::string printer;
        spooled(m_spooler.Default(printer));
        return printer;
    }

    TPrintHandle BeginDoc(const std::string &printer, const std::string &title) override
    {
        const auto handle = OpenPrinter(printer);
        if (handle < 0)
            return handle;
        if (!StartDocPrinter(handle, {title, "RAW"})) {
            ClosePrinter(handle);
            return -1;
        }
        m_documents[handle];
        return handle;
    }

    int Escape(TPrintHandle context, int function, int, const char *input, void *) override
    {
        if (function != EscapePassThrough)
            return 0;
        const auto count = static_cast<std::size_t>(static_cast<unsigned char>(input[0]) +
                                                    256 * static_cast<unsigned char>(input[1]));
        m_documents.at(context).append(input + 2, count);
        return 1;
    }

    bool EndDoc(TPrintHandle context) override
    {
        const auto bytes = std::move(m_documents.at(context));
        m_documents.erase(context);
        std::size_t written = 0;
        const bool sent = WritePrinter(context, bytes, written) && EndPagePrinter(context);
        const auto cause = m_cause;
        const bool unknown = m_unknown;
        const bool ended = EndDocPrinter(context);
        ClosePrinter(context);
        if (!sent) {
            m_cause = cause;
            m_unknown = unknown;
        }
        return sent && ended;
    }

    const TSystemCause &LastCause() const override { return m_cause; }
    bool OutcomeUnknown() const override { return m_unknown; }

private:
    TPrintHandle failed(TSystemCause cause)
    {
        m_cause = std::move(cause);
        m_unknown = false;
        return -1;
    }

    TPrintHandle spoolerFailed()
    {
        m_cause = m_spooler.Cause();
        m_unknown = m_spooler.OutcomeUnknown();
        return -1;
    }

    bool spooled(bool done)
    {
        if (!done)
            spoolerFailed();
        return done;
    }

    TPortMap m_hostPorts;
    std::optional<TPortMap> m_portMap; // with the user's settings
    CupsSpooler m_spooler;
    TSystemCause m_cause;
    bool m_unknown = false;
    unsigned m_errorMode = 0;
    TPrintHandle m_lastHandle = 0;
    std::map<TPrintHandle, std::unique_ptr<PosixPort>> m_ports;
    std::map<TPrintHandle, std::unique_ptr<CupsJob>> m_jobs;
    std::map<TPrintHandle, std::string> m_documents; // bytes of the open pass-through documents
};

} // namespace

std::shared_ptr<IPrintSystem> PlatformPrintSystem(TPrintSystemOptions options)
{
    return std::make_shared<PosixPrintSystem>(std::move(options));
}

std::vector<TPortState> LookAtPorts(const TPortMap &hostPorts)
{
    const auto ports = TPortMap::InForce(hostPorts);
    std::vector<TPortState> states;
    for (const auto name : LocalPortNames) {
        TPortState state{std::string(name), {}, false, {}};
        if (const auto *target = ports.Find(name))
            state.Usable = PosixPort::IsUsable(*target, state.Device, state.Cause);
        states.push_back(std::move(state));
    }
    return states;
}

} // namespace Zelmar01
