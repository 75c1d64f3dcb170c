// Runs on Windows, under Wine: see run_under_wine.py, which provides the printer and the ports and looks at
// the bytes that arrive there.
#include <Zelmar01/core/Messages.h>
#include <Zelmar01/printing/output/PrinterObject.h>
#include <Zelmar01/printing/output/RawPaths.h>
#include <support/TempFolder.h>

#include <gtest/gtest.h>

#include <windows.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <iterator>

using namespace Zelmar01;

namespace {

constexpr auto queue = "ticket";

// All byte values, and no stretch like another.
std::string pattern(std::size_t size)
{
    std::string bytes;
    for (std::size_t i = 0; i < size; ++i)
        bytes += static_cast<char>((i + i / 256) & 0xFFU);
    return bytes;
}

std::shared_ptr<IPrintSystem> systemWith(const std::string &port, TPortTarget target)
{
    TPrintSystemOptions options;
    options.Ports.Set(port, std::move(target));
    return PlatformPrintSystem(options);
}

TPrintOutcome spool(const std::string &printer, std::string_view data)
{
    TPrintOutcome outcome;
    SendToSpooler(*PlatformPrintSystem(), printer, data, outcome);
    return outcome;
}

// Sends to a port and returns the message of the exception, if any.
std::string sendTo(const std::shared_ptr<IPrintSystem> &system, const std::string &port,
                   std::string_view data, TPrintOutcome &outcome)
{
    try {
        SendToPort(*system, port, data, outcome);
    } catch (const EInOutError &error) {
        return error.what();
    }
    return {};
}

std::string contentOf(const std::filesystem::path &file)
{
    std::ifstream bytes(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(bytes), {}};
}

// On any other machine there might be a printer behind these ports.
class PreparedMachine : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!std::getenv("ZELMAR01_TEST_PORTS"))
            GTEST_SKIP() << "to be run by run_under_wine.py";
    }
};
using WindowsSpooler = PreparedMachine;
using WindowsDriver = PreparedMachine;
using WindowsPort = PreparedMachine;

} // namespace

TEST_F(WindowsSpooler, knowsThePrinterAndItsDefault)
{
    const auto system = PlatformPrintSystem();
    const auto printers = system->Printers();
    EXPECT_NE(std::find(printers.begin(), printers.end(), queue), printers.end());
    EXPECT_EQ(system->DefaultPrinter(), queue);
}

TEST_F(WindowsSpooler, sendsEveryByteUpToItsLimit)
{
    const auto whole = spool(queue, pattern(256));
    EXPECT_TRUE(whole.Success) << whole.Cause.Words();
    EXPECT_EQ(whole.Accepted, 256U);
    const auto cut = spool(queue, pattern(5000));
    EXPECT_TRUE(cut.Success) << cut.Cause.Words();
    EXPECT_EQ(cut.Accepted, 4085U);
    const auto empty = spool(queue, {});
    EXPECT_TRUE(empty.Success) << empty.Cause.Words();
}

TEST_F(WindowsSpooler, tellsWhyAPrinterCannotBeUsed)
{
    for (const auto *name : {"absente", "caf\u00e9 \u6771", ""}) {
        const auto outcome = spool(name, "x");
        EXPECT_FALSE(outcome.Success) << name;
        EXPECT_FALSE(outcome.Unknown) << name;
        EXPECT_FALSE(outcome.Cause.Text.empty() || outcome.Cause.Remedy.empty()) << name;
    }
    EXPECT_EQ(spool("absente", "x").Cause.Code, ERROR_INVALID_PRINTER_NAME);
}

TEST_F(WindowsDriver, passesBytesThrough)
{
    TPrinterObject printer(PlatformPrintSystem());
    printer.SelectPrinter(queue);
    TPrintOutcome outcome;
    SendThroughDriver(printer, pattern(5000), outcome);
    EXPECT_TRUE(outcome.Success) << outcome.Cause.Words();
    EXPECT_EQ(outcome.Accepted, 4085U);
}

TEST_F(WindowsPort, sendsEveryByteUpToItsLimit)
{
    TPrintOutcome outcome;
    EXPECT_EQ(sendTo(PlatformPrintSystem(), "COM1:", pattern(256), outcome), "");
    EXPECT_EQ(sendTo(PlatformPrintSystem(), "COM1:", pattern(5000), outcome), "");
    EXPECT_EQ(outcome.Accepted, 4086U);
    EXPECT_EQ(sendTo(PlatformPrintSystem(), "COM1:", {}, outcome), "");
}

TEST_F(WindowsPort, givesUpAtItsTimeOut)
{
    // A line that is stopped, and a device that knows no time-outs of its own and that nobody reads.
    const auto pipe =
        CreateNamedPipeA(R"(\\.\pipe\zelmar01-test)", PIPE_ACCESS_INBOUND, 0, 1, 16, 16, 0, nullptr);
    ASSERT_NE(pipe, INVALID_HANDLE_VALUE);
    const TLineSettings line{19200, 8, TParity::None, 2, TFlowControl::None};
    for (const auto &target :
         {TPortTarget{{"COM2"}, line, {}}, TPortTarget{{R"(\\.\pipe\zelmar01-test)"}, {}, {}}}) {
        const auto start = std::chrono::steady_clock::now();
        TPrintOutcome outcome;
        EXPECT_EQ(sendTo(systemWith("COM2:", target), "COM2:", pattern(200), outcome),
                  MessageText(TMessage::PortWriteFailed));
        const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
        EXPECT_GE(elapsed.count(), 1.19) << target.Devices[0];
        EXPECT_LT(elapsed.count(), 2.5) << target.Devices[0];
        EXPECT_LT(outcome.Accepted, 200U);
        EXPECT_EQ(outcome.Cause.Code, ERROR_TIMEOUT) << outcome.Cause.Words();
        EXPECT_FALSE(outcome.Unknown || outcome.Cause.Remedy.empty());
    }
    CloseHandle(pipe);
}

TEST_F(WindowsPort, tellsThatADeviceIsAbsent)
{
    TPrintOutcome outcome;
    const TPortTarget absent{{R"(\\.\LPT9)", "LPT8"}, {}, {}};
    EXPECT_EQ(sendTo(systemWith("LPT2:", absent), "LPT2:", "x", outcome),
              MessageText(TMessage::PortNotFound));
    EXPECT_EQ(outcome.Cause.Code, ERROR_FILE_NOT_FOUND) << outcome.Cause.Words();
    EXPECT_FALSE(outcome.Cause.Remedy.empty());
    // Windows has this port, but nothing is plugged in.
    EXPECT_NE(sendTo(PlatformPrintSystem(), "COM3:", "x", outcome), "");
    EXPECT_FALSE(outcome.Cause.Text.empty());

    TPortMap ports;
    ports.Set("LPT2:", absent);
    ports.Set("COM4:", {{"COM42", "COM1"}, {}, {}});
    const auto states = LookAtPorts(ports);
    ASSERT_EQ(states.size(), 6U);
    EXPECT_TRUE(states[2].Usable && states[2].Device == "COM1:");
    EXPECT_TRUE(states[5].Usable && states[5].Device == "COM1");
    EXPECT_FALSE(states[1].Usable || states[1].Cause.Text.empty());
}

TEST_F(WindowsPort, writesToAFileOnlyWhenItMay)
{
    const TempFolder folder;
    const auto file = folder / "ticket.bin";
    const auto send = [&](TRegularFile use) {
        TPrintOutcome outcome;
        return sendTo(systemWith("LPT1:", {{file.string()}, {}, use}), "LPT1:", "neuf", outcome);
    };
    const auto notFound = MessageText(TMessage::PortNotFound);
    EXPECT_EQ(send(TRegularFile::Append), notFound);
    EXPECT_FALSE(exists(file));
    std::ofstream(file) << "ancien ";
    EXPECT_EQ(send(TRegularFile::Refuse), notFound);
    EXPECT_EQ(contentOf(file), "ancien ");
    EXPECT_EQ(send(TRegularFile::Append), "");
    EXPECT_EQ(contentOf(file), "ancien neuf");
}
