#include "Sending.h"

#include "support/Environment.h"
#include "support/Fifo.h"
#include "support/Pty.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <fstream>
#include <functional>
#include <future>
#include <grp.h>
#include <sstream>
#include <thread>

using namespace Zelmar01;
using namespace std::chrono_literals;

namespace {

const std::string notFound = "Port de l'imprimante ticket non trouvé";
const std::string writeFailed = "Problème d'écriture sur l'imprimante ticket !";

TSent sendTo(const TPortTarget &target, std::string_view data)
{
    TPrintSystemOptions options;
    options.Ports.Set("COM1:", target);
    const auto system = PlatformPrintSystem(options);
    return timed([&](TPrintOutcome &outcome) { SendToPort(*system, "COM1:", data, outcome); });
}

TSent sendTo(const std::string &device, std::string_view data)
{
    return sendTo(TPortTarget{{device}, {}, {}}, data);
}

std::string contents(const std::filesystem::path &file)
{
    std::ostringstream text;
    text << std::ifstream(file).rdbuf();
    return text.str();
}

// Lets something happen at the other end while a ticket is being written.
std::future<void> after(std::chrono::milliseconds delay, std::function<void()> event)
{
    return std::async(std::launch::async, [delay, event = std::move(event)] {
        std::this_thread::sleep_for(delay);
        event();
    });
}

} // namespace

TEST(SerialPort, everyByteArrivesUnchangedUpToTheLimit)
{
    Pty line; // as it is made, it turns LF into CR LF
    const auto found = line.Mode();
    for (const std::size_t size : {0U, 1U, 256U, 4086U, 5000U}) {
        const auto ticket = everyByte(size);
        const auto limit = std::min<std::size_t>(size, 4086);
        const auto sent = sendTo(line.Path(), ticket);
        EXPECT_TRUE(sent.Outcome.Success) << size;
        EXPECT_EQ(sent.Outcome.Accepted, limit);
        EXPECT_EQ(sent.Outcome.Cut, size - limit);
        EXPECT_TRUE(line.Read(limit) == ticket.substr(0, limit)) << size;
        EXPECT_EQ(line.Read(1, 20ms), "");
        EXPECT_TRUE(line.Mode() == found);
    }
}

TEST(SerialPort, aSlowPrinterGetsTheWholeTicket)
{
    Pty line;
    const auto found = line.Mode();
    const auto queued = line.Fill();
    const auto ticket = everyByte(4086);
    std::string arrived;
    auto printer = after(200ms, [&] {
        while (arrived.size() < queued.size() + ticket.size()) {
            arrived += line.Read(100);
            std::this_thread::sleep_for(5ms);
        }
    });
    const auto sent = sendTo(line.Path(), ticket);
    printer.get();
    EXPECT_TRUE(sent.Outcome.Success) << sent.Outcome.Cause.Words();
    EXPECT_TRUE(arrived == queued + ticket);
    EXPECT_TRUE(line.Mode() == found);
}

TEST(SerialPort, aStuckPrinterEndsTheCallAtItsTimeOut)
{
    for (const std::size_t size : {1U, 400U}) {
        Pty line;
        line.Hold();
        const auto found = line.Mode();
        const auto sent = sendTo(line.Path(), everyByte(size));
        EXPECT_EQ(sent.Message, writeFailed);
        EXPECT_EQ(sent.Outcome.Cause.Code, ETIMEDOUT) << sent.Outcome.Cause.Words();
        EXPECT_FALSE(sent.Outcome.Success);
        EXPECT_EQ(sent.Outcome.Accepted, 0U);
        EXPECT_GE(sent.Time, 1000ms + std::chrono::milliseconds(size));
        EXPECT_LE(sent.Time, 1500ms + std::chrono::milliseconds(size));
        EXPECT_TRUE(line.Mode() == found);
        line.Release();
        EXPECT_EQ(line.Read(1, 50ms), "") << "half a ticket came later";
    }
}

TEST(SerialPort, aPrinterThatGoesAway)
{
    Pty during;
    during.Hold();
    auto unplugging = after(100ms, [&] { during.HangUp(); });
    auto sent = sendTo(during.Path(), "Total");
    unplugging.get();
    EXPECT_EQ(sent.Message, writeFailed);
    EXPECT_EQ(sent.Outcome.Cause.Code, EIO) << sent.Outcome.Cause.Words();
    EXPECT_LE(sent.Time, 900ms);

    sent = sendTo(during.Path(), "Total");
    EXPECT_EQ(sent.Message, notFound);
    EXPECT_NE(sent.Outcome.Cause.Text.find(during.Path()), std::string::npos) << sent.Outcome.Cause.Text;
}

TEST(SerialPort, lineSettingsHoldWhileTheTicketIsWritten)
{
    struct TCase
    {
        TLineSettings Line;
        speed_t Speed;
        tcflag_t Control, Input; // of the bits that settings touch
    };
    constexpr tcflag_t control = CSIZE | PARENB | PARODD | CSTOPB | CRTSCTS;
    constexpr tcflag_t input = IXON | IXOFF;
    const TCase cases[] = {
        // What is unset stays as the device is configured.
        {{}, B4800, CS8 | CSTOPB | CRTSCTS, IXON},
        {{115200, 8, TParity::None, 1, TFlowControl::None}, B115200, CS8, 0},
        {{1200, {}, {}, {}, TFlowControl::XonXoff}, B1200, CS8 | CSTOPB, IXON | IXOFF},
        {{{}, {}, {}, 1, TFlowControl::RtsCts}, B4800, CS8 | CRTSCTS, 0},
        {{{}, {}, {}, 2, {}}, B4800, CS8 | CSTOPB | CRTSCTS, IXON},
    };
    for (const auto &wanted : cases) {
        Pty line;
        auto found = line.Mode();
        found.c_cflag |= CSTOPB | CRTSCTS;
        cfsetspeed(&found, B4800);
        line.SetMode(found);
        line.Hold();
        termios used = {};
        auto printer = after(150ms, [&] {
            used = line.Mode();
            line.Release();
        });
        const auto sent = sendTo({{line.Path()}, wanted.Line, {}}, "\nTotal\n");
        printer.get();
        EXPECT_TRUE(sent.Outcome.Success) << sent.Outcome.Cause.Words();
        EXPECT_EQ(line.Read(7), "\nTotal\n");
        EXPECT_EQ(cfgetospeed(&used), wanted.Speed);
        EXPECT_EQ(used.c_cflag & control, wanted.Control);
        EXPECT_EQ(used.c_iflag & input, wanted.Input);
        EXPECT_FALSE(used.c_oflag & OPOST);
        EXPECT_TRUE(line.Mode() == found);
    }
}

TEST(SerialPort, saysWhenTheDeviceRefusesItsSettings)
{
    for (const auto &line :
         {TLineSettings{{}, 7, {}, {}, {}}, TLineSettings{9600, {}, TParity::Even, {}, {}}}) {
        Pty device; // has 8 bits without parity and no other
        const auto found = device.Mode();
        const auto sent = sendTo({{device.Path()}, line, {}}, "Total");
        EXPECT_EQ(sent.Message, notFound);
        EXPECT_EQ(sent.Outcome.Cause.Text,
                  device.Path() + " : le périphérique refuse les réglages de ligne demandés");
        EXPECT_TRUE(device.Mode() == found);
        EXPECT_EQ(device.Read(1, 20ms), "");
    }
}

TEST(SerialPort, isNotSharedWithAnotherTicket)
{
    Pty line;
    line.Lock();
    const auto sent = sendTo(line.Path(), "Total");
    EXPECT_EQ(sent.Message, notFound);
    EXPECT_EQ(sent.Outcome.Cause.Remedy, "un autre programme utilise ce port");
    line.Unlock();
    EXPECT_TRUE(sendTo(line.Path(), "Total").Outcome.Success);
    EXPECT_TRUE(sendTo(line.Path(), "Total").Outcome.Success) << "the first ticket kept the lock";
}

TEST(ParallelPort, aReaderGetsEveryByteAndWithoutOneNothingIsLost)
{
    const TempFolder folder;
    {
        Fifo printer(folder / "lp");
        const auto ticket = everyByte(4086);
        EXPECT_TRUE(sendTo(printer.Path(), ticket).Outcome.Success);
        EXPECT_TRUE(printer.Received() == ticket);

        const std::string queued(static_cast<std::size_t>(fcntl(printer.Reader(), F_GETPIPE_SZ)), '.');
        const int other = open(printer.Path().c_str(), O_WRONLY | O_CLOEXEC);
        ASSERT_EQ(write(other, queued.data(), queued.size()), static_cast<ssize_t>(queued.size()));
        close(other);
        std::string arrived;
        auto reader = after(200ms, [&] { arrived = printer.Received(); });
        EXPECT_TRUE(sendTo(printer.Path(), ticket).Outcome.Success);
        reader.get();
        EXPECT_TRUE(arrived + printer.Received() == queued + ticket);
    }
    const auto sent = sendTo(folder / "lp", "Total");
    EXPECT_EQ(sent.Message, notFound);
    EXPECT_EQ(sent.Outcome.Cause.Code, ENXIO);
}

namespace {

volatile std::sig_atomic_t caught = 0;

} // namespace

TEST(ParallelPort, aReaderThatGoesAwayRaisesNoSignal)
{
    for (auto *const handler : {SIG_DFL, SIG_IGN, +[](int) { caught = caught + 1; }}) {
        struct sigaction mine = {}, before = {}, now = {};
        mine.sa_handler = handler;
        sigaction(SIGPIPE, &mine, &before);
        sigset_t blocked;
        const TempFolder folder;
        auto printer = std::make_unique<Fifo>(folder / "lp");
        const int other = open(printer->Path().c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
        while (write(other, "....", 4) == 4) {
        }
        auto leaving = after(100ms, [&] { printer.reset(); });
        const auto sent = sendTo(folder / "lp", "Total");
        leaving.get();
        close(other);
        EXPECT_EQ(sent.Message, writeFailed);
        EXPECT_EQ(sent.Outcome.Cause.Code, EPIPE);
        EXPECT_LE(sent.Time, 900ms);

        sigaction(SIGPIPE, &before, &now);
        EXPECT_EQ(now.sa_handler, handler);
        pthread_sigmask(SIG_SETMASK, nullptr, &blocked);
        EXPECT_EQ(sigismember(&blocked, SIGPIPE), 0);
    }
    EXPECT_EQ(caught, 0);
}

TEST(DeviceFile, whatMayStandBehindAPort)
{
    const TempFolder folder;
    std::filesystem::create_directory(folder / "directory");
    struct TCase
    {
        std::string Device;
        TRegularFile RegularFile;
        std::string Message; // of the failure, empty for success
        int Code;
        std::string Words; // in the cause
        std::string After; // what a file holds then
    };
    const std::string none = "vérifier que l'imprimante est branchée";
    const auto file = (folder / "file").string(), absent = (folder / "absent").string();
    for (const auto &[device, allowed, message, code, words, left] :
         {TCase{"/dev/null", TRegularFile::Refuse, "", 0, "", ""},
          {"/dev/full", TRegularFile::Refuse, writeFailed, ENOSPC, "plus de papier", ""},
          {(folder / "directory").string(), TRegularFile::Append, notFound, EISDIR, "est un dossier", ""},
          {file, TRegularFile::Refuse, notFound, ENODEV, "file : n'est pas un périphérique", "before"},
          {file, TRegularFile::Append, "", 0, "", "beforeTotal"},
          {absent, TRegularFile::Refuse, notFound, ENOENT, absent, ""},
          {absent, TRegularFile::Append, notFound, ENOENT, none, ""}}) {
        std::ofstream(file) << "before";
        const TPortTarget target{{device}, {}, allowed};
        TPortMap ports;
        ports.Set("LPT1:", target);
        EXPECT_EQ(LookAtPorts(ports).front().Usable, message != notFound) << device;
        EXPECT_EQ(contents(file), "before") << "looking at a port wrote to it";
        const auto sent = sendTo(target, "Total");
        EXPECT_EQ(sent.Message, message) << device;
        EXPECT_EQ(sent.Outcome.Success, message.empty());
        EXPECT_EQ(sent.Outcome.Cause.Code, code) << device;
        EXPECT_NE(sent.Outcome.Cause.Words().find(words), std::string::npos) << sent.Outcome.Cause.Words();
        EXPECT_EQ(contents(file), device == file ? left : "before");
        EXPECT_FALSE(std::filesystem::exists(absent));
    }
    // The first device that is there is the port's, and one without anything behind it is not.
    EXPECT_TRUE(sendTo({{absent, file, "/dev/full"}, {}, TRegularFile::Append}, "Total").Outcome.Success);
    const auto unread = (folder / "unread").string();
    ASSERT_EQ(mkfifo(unread.c_str(), 0600), 0);
    EXPECT_TRUE(sendTo({{unread, "/dev/null"}, {}, {}}, "Total").Outcome.Success);
    EXPECT_EQ(sendTo({{absent, unread}, {}, {}}, "Total").Outcome.Cause.Code, ENXIO);
    EXPECT_EQ(sendTo(TPortTarget{}, "Total").Message, notFound);
}

TEST(DeviceFile, namesTheGroupWhoseMembersMayPrint)
{
    const TempFolder folder;
    std::filesystem::permissions(folder.Path(), std::filesystem::perms(0755));
    const auto device = folder / "lp";
    Fifo printer(device);
    std::filesystem::permissions(device, std::filesystem::perms(0060)); // nothing for the owner either
    struct stat status = {};
    ASSERT_EQ(stat(device.c_str(), &status), 0);
    const auto *owner = getgrgid(status.st_gid);
    ASSERT_NE(owner, nullptr);
    EXPECT_EXIT(
        {
            // Root is never refused.
            if (getuid() == 0 && (setgroups(0, nullptr) != 0 || setgid(65534) != 0 || setuid(65534) != 0))
                std::_Exit(2);
            const auto sent = sendTo(device, "Total");
            std::cerr << sent.Message << sent.Outcome.Cause.Words();
            std::_Exit(sent.Outcome.Cause.Code == EACCES ? 0 : 1);
        },
        testing::ExitedWithCode(0),
        notFound + ".*ajouter l'utilisateur au groupe « " + owner->gr_name + " »");
}

TEST(PortSettings, theUsersSettingsReachTheDevice)
{
    const TempFolder folder;
    const EnvironmentSetting config("XDG_CONFIG_HOME", folder.Path().string());
    std::filesystem::create_directory(folder / "zelmar01");
    const auto file = folder / "zelmar01/ports.conf";
    Fifo first(folder / "first"), second(folder / "second"), third(folder / "third");
    const auto send = [](const TPortMap &host) {
        TPrintSystemOptions options;
        options.Ports = host;
        const auto system = PlatformPrintSystem(options);
        return timed([&](TPrintOutcome &outcome) { SendToPort(*system, "LPT1:", "Total", outcome); });
    };

    std::ofstream(file) << "# the till\n\nLPT1: = " << first.Path().string() << "\r\n";
    EXPECT_EQ(send({}).Message, "");
    EXPECT_EQ(first.Received(), "Total");

    const EnvironmentSetting ports("ZELMAR01_PORTS", "COM1:=/dev/null;;LPT1:=" + second.Path().string());
    EXPECT_EQ(send({}).Message, "");
    EXPECT_EQ(second.Received(), "Total");

    TPortMap host;
    host.Set("LPT1:", {{third.Path()}, {}, {}});
    EXPECT_EQ(send(host).Message, "");
    EXPECT_EQ(third.Received(), "Total");
    EXPECT_EQ(first.Received() + second.Received(), "");

    std::ofstream(file) << "LPT1: = /dev/null\nCOM1: = /dev/null, speed=fast\n";
    auto sent = send({});
    EXPECT_EQ(sent.Message, notFound);
    EXPECT_NE(sent.Outcome.Cause.Text.find(file.string() + " : ligne 2 : valeur inconnue « fast »"),
              std::string::npos)
        << sent.Outcome.Cause.Text;

    std::ofstream(file) << "";
    const EnvironmentSetting wrong("ZELMAR01_PORTS", "LPT9:=/dev/null");
    sent = send({});
    EXPECT_EQ(sent.Message, notFound);
    EXPECT_EQ(sent.Outcome.Cause.Text.find("ZELMAR01_PORTS : port inconnu « LPT9: »"), 0U)
        << sent.Outcome.Cause.Text;
}
