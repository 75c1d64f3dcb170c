// Every system call that is made on a port's device file fails in turn. Whatever fails: a ticket that counts
// as printed has arrived whole, any other is told with the device and the reason, and the port is as it was.

#include "../Sending.h"
#include "FaultyCalls.h"

#include <support/Pty.h>

#include <gtest/gtest.h>

using namespace Zelmar01;

TEST(PortFaults, eachCallFails)
{
    const auto ticket = everyByte(300);
    for (const auto fault : {TFault::Refused, TFault::Lasting, TFault::Short, TFault::DiskFull}) {
        int count = 1;
        for (int number = 1; number <= count; ++number) {
            Pty line;
            const auto found = line.Mode();
            const auto open = OpenFiles();
            TPrintSystemOptions options;
            options.Ports.Set("COM1:", {{line.Path()}, {9600, {}, {}, {}, {}}, {}});
            const auto system = PlatformPrintSystem(options);
            const auto send = [&](TPrintOutcome &outcome) { SendToPort(*system, "COM1:", ticket, outcome); };
            TSent sent;
            std::string met;
            {
                const FaultyCalls calls(line.Path(), fault, number);
                sent = timed(send);
                met = calls.Met();
                count = calls.Count();
            }
            SCOPED_TRACE(met + ": " + sent.Message + ' ' + sent.Outcome.Cause.Words());
            EXPECT_EQ(sent.Outcome.Success, sent.Message.empty());
            EXPECT_EQ(sent.Outcome.Success, sent.Outcome.Cause.Text.empty());
            EXPECT_TRUE(sent.Outcome.Success ||
                        sent.Outcome.Cause.Text.find(line.Path()) != std::string::npos);
            const auto arrived =
                line.Read(ticket.size(), std::chrono::milliseconds(sent.Outcome.Success ? 1000 : 20));
            EXPECT_TRUE(ticket.starts_with(arrived));
            EXPECT_TRUE(arrived == ticket || !sent.Outcome.Success);
            EXPECT_TRUE(line.Mode() == found);
            EXPECT_EQ(OpenFiles(), open);
            EXPECT_TRUE(timed(send).Outcome.Success) << "what failed once fails again";
        }
    }
}
