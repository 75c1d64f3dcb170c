#include "SpoolerFixture.h"

#include <Zelmar01/printing/output/PrinterObject.h>

#include <filesystem>
#include <fstream>

using namespace Zelmar01;
using namespace std::chrono_literals;

namespace {

using TDocuments = std::vector<std::string>;

class Spooler : public SpoolerFixture
{
protected:
    static void SetUpTestSuite()
    {
        s_sink.emplace();
        s_server.emplace();
        for (const auto *name : {"ticket", "refuse", "arret"})
            s_server->AddQueue(name, s_sink->Port());
        s_server->Run({"cupsreject", "refuse"});
        s_server->Run({"cupsdisable", "arret"});
    }
    static void TearDownTestSuite()
    {
        s_server.reset();
        s_sink.reset();
    }

    std::shared_ptr<IPrintSystem> m_system = printSystem(s_server->Address());
    static inline std::optional<TcpSink> s_sink;
    static inline std::optional<CupsServer> s_server;
};

} // namespace

TEST_F(Spooler, everyByteArrivesUnchangedUpToTheLimit)
{
    for (const std::size_t size : {1U, 256U, 4085U, 5000U}) {
        const auto ticket = everyByte(size);
        const auto limit = std::min<std::size_t>(size, 4085);
        const auto sent = send(*m_system, "ticket", ticket);
        EXPECT_TRUE(sent.Outcome.Success) << sent.Outcome.Cause.Words();
        EXPECT_EQ(sent.Outcome.Accepted, limit);
        EXPECT_EQ(sent.Outcome.Cut, size - limit);
        EXPECT_TRUE(s_sink->Take(1) == TDocuments{ticket.substr(0, limit)}) << size;
    }
}

TEST_F(Spooler, printersThatTakeNoJobs)
{
    const auto jobs = s_server->Jobs("ticket", "all");
    struct TCase
    {
        std::string Printer, Words;
    };
    const std::string unknown = "inconnue du serveur d'impression";
    for (const auto &[printer, words] : {TCase{"absente", unknown},
                                         {"refuse", "n'accepte pas de travaux"},
                                         {"", "aucune imprimante"},
                                         {"ticket ", unknown},
                                         {"ticket/x", unknown},
                                         {"../printers/ticket", unknown},
                                         {"ticket?x=1", unknown},
                                         {"ticket#1", unknown},
                                         {"ticket\r\nHost: x", unknown},
                                         {"ticket%20", unknown},
                                         {"ticket@elsewhere", unknown},
                                         {"caisse n° 1 – reçus €", unknown},
                                         {"reçus", unknown},
                                         {"\xE9\xFF", unknown},
                                         {std::string(127, 'x'), unknown},
                                         {std::string(2000, 'x'), unknown}})
        for (const auto *data : {"Total", ""}) {
            const auto sent = send(*m_system, printer, data);
            EXPECT_FALSE(sent.Outcome.Success) << printer;
            EXPECT_FALSE(sent.Outcome.Unknown);
            EXPECT_EQ(sent.Outcome.Accepted, 0U);
            EXPECT_NE(sent.Outcome.Cause.Text.find(words), std::string::npos) << sent.Outcome.Cause.Words();
            EXPECT_LE(sent.Time, 1000ms);
        }
    EXPECT_EQ(s_server->Jobs("ticket", "all"), jobs);
    EXPECT_EQ(s_server->Jobs("refuse", "all"), 0U);
    EXPECT_EQ(s_sink->Take(1, 100ms), TDocuments{});
}

TEST_F(Spooler, aStoppedPrinterTakesJobsAndPrintsThemLater)
{
    EXPECT_TRUE(send(*m_system, "arret", "").Outcome.Success);
    EXPECT_EQ(s_server->Jobs("arret", "all"), 0U) << "an empty job leaves nothing behind";
    EXPECT_TRUE(send(*m_system, "arret", "Total").Outcome.Success);
    EXPECT_EQ(s_server->Jobs("arret", "not-completed"), 1U);
    EXPECT_EQ(s_sink->Take(1, 200ms), TDocuments{});
    s_server->Run({"cupsenable", "arret"});
    EXPECT_EQ(s_sink->Take(1), TDocuments{"Total"});
    s_server->Run({"cupsdisable", "arret"});
}

TEST_F(Spooler, listsPrintersAndFindsTheDefaultOne)
{
    EXPECT_EQ(m_system->Printers(), (TDocuments{"arret", "refuse", "ticket"}));

    const auto lpoptions = [&](const std::string &text) {
        std::filesystem::create_directories(m_home / ".cups");
        std::ofstream(m_home / ".cups/lpoptions") << text;
    };
    struct TCase
    {
        std::optional<std::string> Lpdest, Printer;
        std::string Lpoptions, Default;
    };
    const std::vector<TCase> users{
        {"absente", "refuse", "Default ticket\n", "refuse"},
        {"arret/brouillon", "refuse", "", "arret"},
        {{}, {}, "Dest refuse a=b\nDefault ticket/x copies=2\n", "ticket"},
        {"", "absente", "Default\nDest refuse\n", ""},
    };
    for (const std::string serverDefault : {"", "arret"}) {
        if (!serverDefault.empty())
            s_server->Run({"lpadmin", "-d", serverDefault});
        for (const auto &user : users) {
            const EnvironmentSetting lpdest("LPDEST", user.Lpdest), printer("PRINTER", user.Printer);
            lpoptions(user.Lpoptions);
            EXPECT_EQ(m_system->DefaultPrinter(), user.Default.empty() ? serverDefault : user.Default)
                << user.Lpoptions;
        }
    }
    CupsServer none;
    const auto system = printSystem(none.Address());
    EXPECT_FALSE(send(*system, "absente", "Total").Outcome.Success);
    EXPECT_EQ(system->Printers(), TDocuments{});
    EXPECT_TRUE(system->LastCause().Text.empty()) << "no printers is not a failure";
    TPrinterObject printer(printSystem(none.Address()));
    EXPECT_EQ(printer.CurrentPrinter(), "");
    EXPECT_THROW(printer.BeginDoc(), EInOutError);
}

TEST_F(Spooler, passThroughSendsTheDocumentAtItsEnd)
{
    s_server->Run({"lpadmin", "-d", "arret"});
    TPrinterObject printer(m_system);
    printer.SelectPrinter("ticket");
    printer.BeginDoc();
    for (const std::string_view buffer :
         {std::string_view("\x03\x00\x00\n\xFF?", 6), std::string_view("\x00\x00", 2),
          std::string_view("\x02\x00\x1Bi", 4)})
        m_system->Escape(printer.Handle(), EscapePassThrough, 0, buffer.data(), nullptr);
    EXPECT_EQ(s_sink->Take(1, 200ms), TDocuments{});
    printer.EndDoc();
    EXPECT_EQ(s_sink->Take(1), (TDocuments{std::string("\x00\n\xFF\x1Bi", 5)}));

    TPrintOutcome outcome;
    const auto ticket = everyByte(5000);
    SendThroughDriver(printer, ticket, outcome);
    EXPECT_TRUE(outcome.Success) << outcome.Cause.Words();
    EXPECT_EQ(outcome.Cut, 915U);
    EXPECT_TRUE(s_sink->Take(1) == TDocuments{ticket.substr(0, 4085)});

    for (const auto *refusing : {"refuse", "absente"}) { // the latter stands for the default printer
        s_server->Run({"lpadmin", "-d", "refuse"});
        printer.SelectPrinter(refusing);
        SendThroughDriver(printer, "Total", outcome);
        EXPECT_FALSE(outcome.Success);
        EXPECT_FALSE(outcome.Unknown);
        EXPECT_NE(outcome.Cause.Text.find("n'accepte pas de travaux"), std::string::npos)
            << outcome.Cause.Text;
    }
}
