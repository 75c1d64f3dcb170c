#include "SpoolerFixture.h"

#include "support/Pty.h"

#include <Zelmar01/printing/DosPrint.h>

using namespace Zelmar01;

namespace {

using Till = SpoolerFixture;

} // namespace

// One receipt with its codes, cut and drawer, on every way there is.
TEST_F(Till, aReceiptPrintsAndTheDrawerOpens)
{
    CupsServer server;
    TcpSink sink;
    server.AddQueue("ticket", sink.Port());
    server.Run({"lpadmin", "-d", "ticket"});
    Pty line;
    TPrintSystemOptions options;
    options.Server = server.Address();
    options.Ports.Set("COM2:", {{line.Path()}, {}, {}});

    TDosPrint till(nullptr, PlatformPrintSystem(options));
    till.setConversion(1);
    till.Codes[ptTiroir].Tiroir = std::string_view("\x1Bp\x00\x19", 4);
    const auto text = QStringLiteral("Bague dorée\r\n1 × 49,90 €\r\n");
    const TDosPrint::TTicketOptions ticket{
        .Type = ptEpson, .Ini = true, .Eject = false, .Cut = true, .OpenDrawer = true, .Convert = true};
    const std::string wanted("\x1B@\x1B!"
                             "Bague dor\x82"
                             "e\r\n1 x 49,90 \xE4\r\n"
                             "\x1Bi\x1Bp\x00\x19",
                             36);

    struct TCase
    {
        QString Printer;
        bool PassThrough;
        TPrintPath Path;
    };
    for (const auto &way : {TCase{"COM2:", false, TPrintPath::Port},
                            {"ticket", false, TPrintPath::Spooler},
                            {QStringLiteral("par DÉFAUT"), false, TPrintPath::Spooler},
                            {"COM2:", true, TPrintPath::PassThrough}}) {
        till.setPrnName(way.Printer);
        till.setEscPassThrough(way.PassThrough);
        EXPECT_TRUE(till.PrintTicket(text, ticket)) << till.Outcome().Cause.Words();
        EXPECT_EQ(till.Outcome().Path, way.Path);
        EXPECT_EQ(till.Outcome().Accepted, wanted.size());
        EXPECT_EQ(way.Path == TPrintPath::Port ? line.Read(wanted.size()) : sink.Take(1).front(), wanted);
    }
}
