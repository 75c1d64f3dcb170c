#pragma once

#include <Zelmar01/printing/output/PrintSystem.h>

#include <algorithm>
#include <cstdint>
#include <set>
#include <utility>

/// A print system that records the calls made to it, in order, and fails those it is told to.
class RecordingPrintSystem : public Zelmar01::IPrintSystem
{
public:
    std::vector<std::string> Calls;
    std::set<std::string> Failing; ///< names of the calls that fail
    std::size_t Takes = SIZE_MAX;  ///< how many bytes a write takes at most
    std::string Sent;              ///< all bytes taken
    std::vector<std::string> PrinterNames{"Bureau", "Ticket", "Atelier"};
    std::string Default = "Atelier";
    bool Unknown = false;
    int EscapeAnswer = 1; ///< of an escape that does not fail
    Zelmar01::TCommTimeouts Timeouts{1, 2, 3, 4, 5};

    unsigned SetErrorMode(unsigned mode) override
    {
        record("SetErrorMode " + std::to_string(mode));
        return std::exchange(m_mode, mode);
    }
    Zelmar01::TPrintHandle FileCreate(const std::string &port) override { return open("FileCreate", port); }
    bool GetCommTimeouts(Zelmar01::TPrintHandle, Zelmar01::TCommTimeouts &timeouts) override
    {
        timeouts = Timeouts;
        return record("GetCommTimeouts");
    }
    bool SetCommTimeouts(Zelmar01::TPrintHandle, const Zelmar01::TCommTimeouts &timeouts) override
    {
        Timeouts = timeouts;
        return record("SetCommTimeouts " + std::to_string(timeouts.WriteMultiplier) + " " +
                      std::to_string(timeouts.WriteConstant));
    }
    std::size_t FileWrite(Zelmar01::TPrintHandle, std::string_view bytes) override
    {
        return record("FileWrite " + std::to_string(bytes.size())) ? take(bytes) : 0;
    }
    void FileClose(Zelmar01::TPrintHandle) override { record("FileClose"); }

    Zelmar01::TPrintHandle OpenPrinter(const std::string &printer) override
    {
        return open("OpenPrinter", printer);
    }
    bool StartDocPrinter(Zelmar01::TPrintHandle, const Zelmar01::TDocInfo &document) override
    {
        return record("StartDocPrinter " + document.DocName + " " + document.DataType);
    }
    bool StartPagePrinter(Zelmar01::TPrintHandle) override { return record("StartPagePrinter"); }
    bool WritePrinter(Zelmar01::TPrintHandle, std::string_view bytes, std::size_t &written) override
    {
        if (!record("WritePrinter " + std::to_string(bytes.size())))
            return false;
        written = take(bytes);
        return true;
    }
    bool EndPagePrinter(Zelmar01::TPrintHandle) override { return record("EndPagePrinter"); }
    bool EndDocPrinter(Zelmar01::TPrintHandle) override { return record("EndDocPrinter"); }
    bool ClosePrinter(Zelmar01::TPrintHandle) override { return record("ClosePrinter"); }

    std::vector<std::string> Printers() override { return PrinterNames; }
    std::string DefaultPrinter() override { return Default; }
    Zelmar01::TPrintHandle BeginDoc(const std::string &printer, const std::string &) override
    {
        return open("BeginDoc", printer);
    }
    int Escape(Zelmar01::TPrintHandle, int function, int inputSize, const char *input, void *output) override
    {
        const auto size = static_cast<std::size_t>(static_cast<unsigned char>(input[0])) +
                          std::size_t{256} * static_cast<unsigned char>(input[1]);
        if (!record("Escape " + std::to_string(function) + " " + std::to_string(inputSize) + " " +
                    std::to_string(size) + (output ? " output" : "")))
            return -1;
        if (EscapeAnswer > 0)
            take({input + 2, size});
        return EscapeAnswer;
    }
    bool EndDoc(Zelmar01::TPrintHandle) override { return record("EndDoc"); }

    const Zelmar01::TSystemCause &LastCause() const override { return m_cause; }
    bool OutcomeUnknown() const override { return Unknown; }

private:
    bool record(const std::string &call)
    {
        Calls.push_back(call);
        const auto name = call.substr(0, call.find(' '));
        if (!Failing.contains(name))
            return true;
        m_cause = {42, name + " failed", {}};
        return false;
    }
    Zelmar01::TPrintHandle open(const std::string &call, const std::string &name)
    {
        return record(call + " " + name) ? 7 : -1;
    }
    std::size_t take(std::string_view bytes)
    {
        Sent += bytes.substr(0, Takes);
        return std::min(bytes.size(), Takes);
    }

    unsigned m_mode = 32768;
    Zelmar01::TSystemCause m_cause;
};
