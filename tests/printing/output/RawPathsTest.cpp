#include "RecordingPrintSystem.h"

#include <Zelmar01/printing/output/RawPaths.h>

#include <gtest/gtest.h>

using namespace Zelmar01;
using TCalls = std::vector<std::string>;

namespace {

std::string raisedBy(RecordingPrintSystem &system, std::string_view data, TPrintOutcome &outcome)
{
    try {
        SendToPort(system, "LPT1:", data, outcome);
    } catch (const EInOutError &error) {
        EXPECT_EQ(error.Cause().Words(), outcome.Cause.Words());
        return error.what();
    }
    return {};
}

struct TSpoolerFailure
{
    std::string Failing;
    TCalls CallsAfterIt;
};
const TSpoolerFailure spoolerFailures[] = {
    {"OpenPrinter", {}},
    {"StartDocPrinter", {"ClosePrinter"}},
    {"StartPagePrinter", {"EndDocPrinter", "ClosePrinter"}},
    {"WritePrinter", {"EndPagePrinter", "EndDocPrinter", "ClosePrinter"}},
    {"EndPagePrinter", {"EndDocPrinter", "ClosePrinter"}},
    {"EndDocPrinter", {"ClosePrinter"}},
};

const TCalls spoolerCalls{"OpenPrinter Ticket", "StartDocPrinter Ticket RAW",
                          "StartPagePrinter",   "WritePrinter 3",
                          "EndPagePrinter",     "EndDocPrinter",
                          "ClosePrinter"};

} // namespace

TEST(PortPath, callsInOrder)
{
    RecordingPrintSystem system;
    TPrintOutcome outcome;
    SendToPort(system, "LPT1:", "abc", outcome);
    EXPECT_EQ(system.Calls,
              (TCalls{"SetErrorMode 1", "FileCreate LPT1:", "SetErrorMode 32768", "GetCommTimeouts",
                      "SetCommTimeouts 1 1000", "SetErrorMode 1", "FileWrite 3", "SetErrorMode 32768",
                      "SetCommTimeouts 4 5", "FileClose"}));
    EXPECT_EQ(system.Timeouts, (TCommTimeouts{1, 2, 3, 4, 5}));
    EXPECT_TRUE(outcome.Success);
    EXPECT_EQ(outcome.Path, TPrintPath::Port);
}

TEST(PortPath, anAbsentPortIsRaisedBeforeAnythingElse)
{
    RecordingPrintSystem system;
    system.Failing = {"FileCreate"};
    TPrintOutcome outcome;
    EXPECT_EQ(raisedBy(system, "abc", outcome), "Port de l'imprimante ticket non trouvé");
    EXPECT_EQ(system.Calls, (TCalls{"SetErrorMode 1", "FileCreate LPT1:", "SetErrorMode 32768"}));
    EXPECT_EQ(outcome.Cause.Code, 42);
    EXPECT_EQ(outcome.Accepted, 0U);
    EXPECT_FALSE(outcome.Success);
}

TEST(PortPath, aShortWriteGivesThePortBackAndIsRaised)
{
    RecordingPrintSystem system;
    system.Takes = 2;
    TPrintOutcome outcome;
    EXPECT_EQ(raisedBy(system, "abc", outcome), "Problème d'écriture sur l'imprimante ticket !");
    EXPECT_EQ(TCalls(system.Calls.end() - 3, system.Calls.end()),
              (TCalls{"SetErrorMode 32768", "SetCommTimeouts 4 5", "FileClose"}));
    EXPECT_EQ(outcome.Accepted, 2U);
}

TEST(PortPath, withoutTimeoutsToReadNoneAreRestored)
{
    RecordingPrintSystem system;
    system.Failing = {"GetCommTimeouts"};
    TPrintOutcome outcome;
    SendToPort(system, "LPT1:", "abc", outcome);
    EXPECT_EQ(system.Timeouts.WriteConstant, 1000U);
    EXPECT_TRUE(outcome.Success);
}

TEST(SpoolerPath, endsWhatHasBegunInReverseOrder)
{
    for (const auto &failure : spoolerFailures) {
        SCOPED_TRACE(failure.Failing);
        RecordingPrintSystem system;
        system.Failing = {failure.Failing};
        system.Unknown = failure.Failing == "EndPagePrinter";
        TPrintOutcome outcome;
        SendToSpooler(system, "Ticket", "abc", outcome);

        TCalls expected;
        for (const auto &call : spoolerCalls) {
            expected.push_back(call);
            if (call.starts_with(failure.Failing))
                break;
        }
        expected.insert(expected.end(), failure.CallsAfterIt.begin(), failure.CallsAfterIt.end());
        EXPECT_EQ(system.Calls, expected);
        EXPECT_FALSE(outcome.Success);
        EXPECT_EQ(outcome.Unknown, system.Unknown);
        EXPECT_EQ(outcome.Cause.Text, failure.Failing + " failed");
    }
}

TEST(SpoolerPath, theFirstCauseCountsWhenTheEndingFailsToo)
{
    RecordingPrintSystem system;
    system.Failing = {"WritePrinter", "EndPagePrinter", "EndDocPrinter", "ClosePrinter"};
    TPrintOutcome outcome;
    SendToSpooler(system, "Ticket", "abc", outcome);
    EXPECT_EQ(outcome.Cause.Text, "WritePrinter failed");
    EXPECT_EQ(system.Calls.back(), "ClosePrinter");
}

TEST(SpoolerPath, successIsTheCountAlone)
{
    RecordingPrintSystem system;
    system.Failing = {"ClosePrinter"};
    TPrintOutcome outcome;
    SendToSpooler(system, "Ticket", "abc", outcome);
    EXPECT_EQ(system.Calls, spoolerCalls);
    EXPECT_TRUE(outcome.Success);

    system.Takes = 2;
    SendToSpooler(system, "Ticket", "abc", outcome);
    EXPECT_FALSE(outcome.Success);
    EXPECT_FALSE(outcome.Cause.Text.empty());
}

TEST(DriverPath, sendsACountedBufferToTheCurrentPrinter)
{
    const auto system = std::make_shared<RecordingPrintSystem>();
    TPrinterObject printer(system);
    printer.SelectPrinter("Ticket");
    TPrintOutcome outcome;
    SendThroughDriver(printer, std::string(300, '\xE9'), outcome);
    EXPECT_EQ(system->Calls, (TCalls{"BeginDoc Ticket", "Escape 19 0 300", "EndDoc"}));
    EXPECT_EQ(system->Sent, std::string(300, '\xE9'));
    EXPECT_TRUE(outcome.Success);
}

TEST(DriverPath, onlyExceptionsAreFailures)
{
    struct TCase
    {
        std::string Failing;
        bool Success;
    };
    for (const auto &failure : {TCase{"BeginDoc", false}, TCase{"Escape", true}, TCase{"EndDoc", false}}) {
        SCOPED_TRACE(failure.Failing);
        const auto system = std::make_shared<RecordingPrintSystem>();
        TPrinterObject printer(system);
        system->Failing = {failure.Failing};
        TPrintOutcome outcome;
        SendThroughDriver(printer, "abc", outcome);
        EXPECT_EQ(outcome.Success, failure.Success);
        EXPECT_EQ(outcome.Accepted, 0U);
        EXPECT_EQ(outcome.Cause.Text, failure.Failing + " failed");

        system->Failing.clear();
        SendThroughDriver(printer, "abc", outcome);
        EXPECT_TRUE(outcome.Success) << "the document before was left open";
    }
}

TEST(DriverPath, aDriverWithoutTheEscapeTakesNothingAndSaysSo)
{
    const auto system = std::make_shared<RecordingPrintSystem>();
    system->EscapeAnswer = 0;
    TPrinterObject printer(system);
    TPrintOutcome outcome;
    SendThroughDriver(printer, "abc", outcome);
    EXPECT_TRUE(outcome.Success);
    EXPECT_EQ(outcome.Accepted, 0U);
    EXPECT_FALSE(outcome.Cause.Text.empty());
}

TEST(AnyPath, limitsOneCall)
{
    const auto system = std::make_shared<RecordingPrintSystem>();
    TPrinterObject printer(system);
    const std::string data(5000, 'x');
    TPrintOutcome outcome;

    SendToPort(*system, "LPT1:", data, outcome);
    EXPECT_EQ(std::tuple(outcome.Asked, outcome.Cut, outcome.Accepted), std::tuple(5000U, 914U, 4086U));
    SendToSpooler(*system, "Ticket", data, outcome);
    EXPECT_EQ(std::tuple(outcome.Asked, outcome.Cut, outcome.Accepted), std::tuple(5000U, 915U, 4085U));
    SendThroughDriver(printer, data, outcome);
    EXPECT_EQ(std::tuple(outcome.Asked, outcome.Cut, outcome.Accepted), std::tuple(5000U, 915U, 4085U));
    EXPECT_EQ(system->Sent.size(), 4086U + 4085U + 4085U);
}

TEST(PrinterObject, choosesByNameAndFallsBackToTheDefault)
{
    const auto system = std::make_shared<RecordingPrintSystem>();
    TPrinterObject printer(system);
    EXPECT_EQ(printer.PrinterIndex(), 2);
    printer.SelectPrinter("Ticket");
    EXPECT_EQ(printer.PrinterIndex(), 1);
    printer.SelectPrinter("ticket");
    EXPECT_EQ(printer.CurrentPrinter(), "Atelier");
    printer.SetPrinterIndex(0);
    EXPECT_EQ(printer.CurrentPrinter(), "Bureau");
    printer.SetPrinterIndex(-1);
    EXPECT_EQ(printer.CurrentPrinter(), "Atelier");
    EXPECT_THROW(printer.SetPrinterIndex(3), EInvalidOperation);

    system->PrinterNames.clear();
    printer.SelectPrinter("Ticket");
    EXPECT_EQ(printer.CurrentPrinter(), "Ticket") << "a list that cannot be had changes nothing";
    printer.SelectPrinter({});
    system->Default.clear();
    EXPECT_EQ(printer.PrinterIndex(), -1);
    EXPECT_THROW(printer.BeginDoc(), EInOutError);
    EXPECT_THROW(printer.EndDoc(), EInvalidOperation);
}
