#pragma once

#include "Sending.h"

#include "support/CupsServer.h"
#include "support/Environment.h"
#include "support/TcpSink.h"

#include <gtest/gtest.h>

#include <csignal>
#include <optional>

/// Prints on a server of its own, away from the settings of whoever runs the test, and sees that a test
/// leaves the handling of SIGPIPE as it was.
class SpoolerFixture : public testing::Test
{
protected:
    void SetUp() override { signal(SIGPIPE, SIG_DFL); }
    void TearDown() override
    {
        struct sigaction now = {};
        sigaction(SIGPIPE, nullptr, &now);
        EXPECT_EQ(now.sa_handler, SIG_DFL);
        sigset_t blocked;
        pthread_sigmask(SIG_SETMASK, nullptr, &blocked);
        EXPECT_EQ(sigismember(&blocked, SIGPIPE), 0);
    }

    static std::shared_ptr<Zelmar01::IPrintSystem>
    printSystem(const std::string &server,
                std::chrono::milliseconds reply = std::chrono::milliseconds(10'000))
    {
        Zelmar01::TPrintSystemOptions options;
        options.Server = server;
        options.ConnectTimeout = std::chrono::milliseconds(1000);
        options.ReplyTimeout = reply;
        return Zelmar01::PlatformPrintSystem(options);
    }

    static TSent send(Zelmar01::IPrintSystem &system, const std::string &printer, std::string_view data)
    {
        return timed([&](Zelmar01::TPrintOutcome &outcome) {
            Zelmar01::SendToSpooler(system, printer, data, outcome);
        });
    }

    TempFolder m_home;

private:
    EnvironmentSetting m_homeSetting{"HOME", m_home.Path().string()};
    EnvironmentSetting m_lpdest{"LPDEST", std::nullopt};
    EnvironmentSetting m_printer{"PRINTER", std::nullopt};
};
