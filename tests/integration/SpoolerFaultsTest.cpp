#include "SpoolerFixture.h"

#include <Zelmar01/printing/output/PrinterObject.h>

#include <cerrno>
#include <thread>

using namespace Zelmar01;
using namespace std::chrono_literals;

namespace {

using TDocuments = std::vector<std::string>;
using SpoolerFaults = SpoolerFixture;

enum class TStep { Open, StartDoc, Write, EndPage };

// A job whose server meets with something right before one of its steps; ended like the library ends it.
TSent sendWith(IPrintSystem &system, TStep step, const std::function<void()> &event)
{
    return timed([&](TPrintOutcome &outcome) {
        const auto before = [&](TStep next) {
            if (next == step)
                event();
        };
        const auto failed = [&] {
            outcome.Cause = system.LastCause();
            outcome.Unknown = system.OutcomeUnknown();
        };
        before(TStep::Open);
        const auto job = system.OpenPrinter("ticket");
        if (job < 0)
            return failed();
        before(TStep::StartDoc);
        if (system.StartDocPrinter(job, {"ticket", "RAW"})) {
            before(TStep::Write);
            outcome.Success = system.WritePrinter(job, "Total", outcome.Accepted);
            if (!outcome.Success)
                failed();
            before(TStep::EndPage);
            if (const bool ended = system.EndPagePrinter(job); outcome.Success && !ended) {
                outcome.Success = false;
                failed();
            }
            system.EndDocPrinter(job);
        } else {
            failed();
        }
        system.ClosePrinter(job);
    });
}

} // namespace

TEST_F(SpoolerFaults, aServerThatCannotBeReached)
{
    const TempFolder folder;
    const auto closed = TcpListener().Address();
    TcpListener silent; // takes connections and never answers
    for (const auto &server : {closed, silent.Address(), (folder / "cups.sock").string(), std::string(":1"),
                               std::string("127.0.0.1:nothing")}) {
        const auto system = printSystem(server, 300ms);
        const auto sent = send(*system, "ticket", "Total");
        EXPECT_FALSE(sent.Outcome.Success);
        EXPECT_FALSE(sent.Outcome.Unknown);
        EXPECT_EQ(sent.Outcome.Cause.Text.find("serveur d'impression "), 0U) << sent.Outcome.Cause.Words();
        EXPECT_NE(sent.Outcome.Cause.Remedy, "");
        EXPECT_LE(sent.Time, 1000ms) << server;

        EXPECT_EQ(system->Printers(), TDocuments{});
        EXPECT_NE(system->LastCause().Text, "");
        TPrintOutcome outcome;
        TPrinterObject printer(system);
        SendThroughDriver(printer, "Total", outcome);
        EXPECT_FALSE(outcome.Success);
        EXPECT_NE(outcome.Cause.Text, "");
    }
}

TEST_F(SpoolerFaults, aServerThatStandsStill)
{
    CupsServer server;
    TcpSink sink;
    server.AddQueue("ticket", sink.Port());
    const auto system = printSystem(server.Address(), 500ms);
    for (const auto step : {TStep::Open, TStep::StartDoc, TStep::Write, TStep::EndPage}) {
        const auto sent = sendWith(*system, step, [&] { server.Pause(); });
        const bool handedOver = step == TStep::EndPage;
        EXPECT_FALSE(sent.Outcome.Success);
        EXPECT_EQ(sent.Outcome.Cause.Code, ETIMEDOUT) << sent.Outcome.Cause.Words();
        EXPECT_EQ(sent.Outcome.Unknown, handedOver);
        EXPECT_LE(sent.Time, 1500ms);
        server.Resume();
        // Which is why the outcome is unknown: the server prints what it has as a whole.
        EXPECT_EQ(sink.Take(1, handedOver ? 10s : 300ms), handedOver ? TDocuments{"Total"} : TDocuments{});
    }
}

TEST_F(SpoolerFaults, aServerThatDies)
{
    CupsServer server;
    TcpSink sink;
    server.AddQueue("ticket", sink.Port());
    const auto system = printSystem(server.Address());
    for (const auto step : {TStep::StartDoc, TStep::EndPage}) {
        const auto sent = sendWith(*system, step, [&] { server.Kill(); });
        EXPECT_FALSE(sent.Outcome.Success);
        EXPECT_NE(sent.Outcome.Cause.Text, "");
        EXPECT_LE(sent.Time, 2000ms);
        // Nobody can tell whether the whole document was still read.
        EXPECT_TRUE(!sent.Outcome.Unknown || step == TStep::EndPage);
        server.Start();
        EXPECT_EQ(sink.Take(1, 500ms), TDocuments{}) << "half a ticket came later";
    }
    EXPECT_TRUE(send(*system, "ticket", "Total").Outcome.Success);
    EXPECT_EQ(sink.Take(1), TDocuments{"Total"});
}

TEST_F(SpoolerFaults, aServerThatWasRestartedWhileADocumentWasOpen)
{
    CupsServer server;
    TcpSink sink;
    server.AddQueue("ticket", sink.Port());
    const auto sent = sendWith(*printSystem(server.Address()), TStep::StartDoc, [&] {
        server.Stop();
        server.Start();
    });
    EXPECT_TRUE(sent.Outcome.Success) << sent.Outcome.Cause.Words();
    EXPECT_EQ(sink.Take(1), TDocuments{"Total"});
}

TEST_F(SpoolerFaults, aJobThatIsGivenUpDoesNotPrint)
{
    CupsServer server;
    TcpSink sink;
    server.AddQueue("ticket", sink.Port());
    const auto system = printSystem(server.Address());
    const auto job = system->OpenPrinter("ticket");
    std::size_t written = 0;
    EXPECT_TRUE(system->StartDocPrinter(job, {"ticket", "RAW"}));
    EXPECT_TRUE(system->WritePrinter(job, "Tot", written));
    system->ClosePrinter(job); // in the middle of its document
    EXPECT_EQ(sink.Take(1, 500ms), TDocuments{});

    const auto whole = system->OpenPrinter("ticket");
    EXPECT_TRUE(system->StartDocPrinter(whole, {"ticket", "RAW"}));
    for (const auto *piece : {"To", "", "tal"})
        EXPECT_TRUE(system->WritePrinter(whole, piece, written));
    EXPECT_TRUE(system->EndDocPrinter(whole));
    system->ClosePrinter(whole);
    EXPECT_EQ(sink.Take(1), TDocuments{"Total"});
}

TEST_F(SpoolerFaults, aServerWithRulesOfItsOwn)
{
    CupsServer server(R"(
KeepAlive No
LimitRequestBody 3000
<Location /printers/secret>
AuthType Basic
Require valid-user
</Location>
)");
    TcpSink sink;
    for (const auto *name : {"ticket", "secret"})
        server.AddQueue(name, sink.Port());
    const auto system = printSystem(server.Address());
    EXPECT_TRUE(send(*system, "ticket", "Total").Outcome.Success) << system->LastCause().Words();
    EXPECT_EQ(sink.Take(1), TDocuments{"Total"});

    struct TCase
    {
        std::string Printer;
        std::size_t Size;
        int Code;
    };
    for (const auto &[printer, size, code] : {TCase{"secret", 5, 401}, {"ticket", 4000, 413}}) {
        const auto sent = send(*system, printer, everyByte(size));
        EXPECT_FALSE(sent.Outcome.Success);
        EXPECT_FALSE(sent.Outcome.Unknown) << "a refusal is an answer";
        EXPECT_EQ(sent.Outcome.Cause.Code, code) << sent.Outcome.Cause.Words();
        EXPECT_LE(sent.Time, 2000ms);
        EXPECT_EQ(server.Jobs(printer, "not-completed"), 0U);
    }
    EXPECT_EQ(sink.Take(1, 200ms), TDocuments{});
}
