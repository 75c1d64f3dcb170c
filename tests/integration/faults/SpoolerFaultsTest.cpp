// Every call that sends to a print server or receives from it fails in turn. Whatever fails: a ticket prints
// once when it counts as printed, not at all when it does not, and at most once when nobody knows.

#include "../SpoolerFixture.h"
#include "FaultyCalls.h"

using namespace Zelmar01;
using namespace std::chrono_literals;

namespace {

using SpoolerCalls = SpoolerFixture;

} // namespace

TEST_F(SpoolerCalls, eachFails)
{
    CupsServer server;
    TcpSink sink;
    server.AddQueue("ticket", sink.Port());
    int count = 1;
    for (int number = 1; number <= count; ++number) {
        const auto system = printSystem(server.Address(), 2s);
        const auto ticket = "Total " + std::to_string(number);
        const auto open = OpenFiles();
        TSent sent;
        std::string met;
        {
            const FaultyCalls calls("socket:", TFault::Refused, number);
            sent = send(*system, "ticket", ticket);
            met = calls.Met();
            count = calls.Count();
        }
        SCOPED_TRACE(met + ' ' + std::to_string(number) + ": " + sent.Outcome.Cause.Words());
        EXPECT_EQ(sent.Outcome.Success, sent.Outcome.Cause.Text.empty());
        const auto printed = sink.Take(1, sent.Outcome.Success ? 5000ms : 300ms);
        EXPECT_TRUE(printed.empty() || printed.front() == ticket);
        EXPECT_TRUE(!printed.empty() || !sent.Outcome.Success);
        EXPECT_TRUE(printed.empty() || sent.Outcome.Success || sent.Outcome.Unknown);
        EXPECT_TRUE(sink.Take(1, 50ms).empty()) << "printed twice";
        for (int i = 0; i < 200 && OpenFiles() != open; ++i) // the sink's are among them
            std::this_thread::sleep_for(10ms);
        EXPECT_EQ(OpenFiles(), open);
        EXPECT_TRUE(send(*system, "ticket", "next").Outcome.Success) << "what failed once fails again";
        EXPECT_EQ(sink.Take(1, 5000ms), std::vector<std::string>{"next"});
    }
    EXPECT_GT(count, 5);
}
