// What real lines do when they fail and no pseudo terminal can be made to do: the system calls that the
// library makes on its device answer what a case has laid down for them.

#include "Sending.h"

#include "support/Pty.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdarg>
#include <deque>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/syscall.h>
#include <thread>

using namespace Zelmar01;
using namespace std::chrono_literals;

namespace {

constexpr int broken = -1;

// The answers to come, the last of which is given for ever. A negative one is that errno.
struct TScript
{
    std::deque<int> Answers;

    int Next()
    {
        const int answer = Answers.front();
        if (Answers.size() > 1)
            Answers.pop_front();
        if (answer >= 0)
            return answer;
        errno = -answer;
        return broken;
    }
};

struct TFaults
{
    dev_t Device = 0;
    TScript Write, Queue, Hardware;
    int Flushed = 0;
    TScript Poll; // the events that are seen
};
TFaults *faults = nullptr;

bool isScripted(int file)
{
    struct stat status = {};
    return faults && fstat(file, &status) == 0 && status.st_rdev == faults->Device;
}

} // namespace

extern "C" ssize_t write(int file, const void *bytes, std::size_t count)
{
    if (!isScripted(file) || faults->Write.Answers.empty())
        return syscall(SYS_write, file, bytes, count);
    const auto taken = faults->Write.Next();
    return taken < 0 ? taken : std::min(taken, static_cast<int>(count));
}

// The C library declares that poll() only writes to its first argument.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
extern "C" int poll(pollfd *files, nfds_t count, int timeout)
{
    if (count != 1 || !isScripted(files->fd) || faults->Poll.Answers.empty()) {
        const timespec time{timeout / 1000, timeout % 1000 * 1'000'000L};
        return static_cast<int>(syscall(SYS_ppoll, files, count, timeout < 0 ? nullptr : &time, nullptr, 0));
    }
    files->revents = static_cast<short>(faults->Poll.Next());
    if (files->revents == 0)
        std::this_thread::sleep_for(std::chrono::milliseconds(timeout));
    return files->revents != 0;
}
#pragma GCC diagnostic pop

extern "C" int ioctl(int file, unsigned long request, ...) noexcept
{
    va_list arguments;
    va_start(arguments, request);
    void *argument = va_arg(arguments, void *);
    va_end(arguments);
    auto *script = !isScripted(file)          ? nullptr
                   : request == TIOCOUTQ      ? &faults->Queue
                   : request == TIOCSERGETLSR ? &faults->Hardware
                                              : nullptr;
    if (!script || script->Answers.empty())
        return static_cast<int>(syscall(SYS_ioctl, file, request, argument));
    const int answer = script->Next();
    *static_cast<int *>(argument) = answer;
    return answer < 0 ? -1 : 0;
}

extern "C" int tcflush(int file, int queue) noexcept
{
    if (isScripted(file))
        ++faults->Flushed;
    return static_cast<int>(syscall(SYS_ioctl, file, TCFLSH, queue));
}

TEST(SerialPortFaults, whatCountsAsWritten)
{
    struct TCase
    {
        std::string Name;
        TScript Write, Queue, Hardware;
        std::size_t Accepted; // of 100
        int Code;
        std::chrono::milliseconds AtLeast{0}, AtMost{900};
    };
    const TCase cases[] = {
        {"bit by bit", {{30, -EINTR, 0, -EAGAIN, 50, 100}}, {{60, 20, 0}}, {}, 100, 0},
        {"interrupted for ever", {{-EINTR}}, {}, {}, 0, ETIMEDOUT, 1100ms, 1600ms},
        {"claims to have room and takes nothing", {{40, 0}}, {}, {}, 40, ETIMEDOUT, 1100ms, 1600ms},
        {"out of paper", {{20, -ENOSPC}}, {{0}}, {}, 20, ENOSPC},
        {"out of paper with a queue", {{60, -ENOSPC}}, {{25}}, {}, 35, ENOSPC},
        {"queue never empties", {{100}}, {{70, 40}}, {}, 60, ETIMEDOUT, 1100ms, 1600ms},
        {"unplugged with a queue", {{100}}, {{70, -EIO}}, {}, 0, EIO},
        {"does not count its queue", {{100}}, {{-ENOTTY}}, {}, 100, 0},
        {"hardware sends on", {{100}}, {{0}}, {{0, 0, 0, TIOCSER_TEMT}}, 100, 0},
        {"hardware held back", {{100}}, {{0}}, {{0}}, 100, 0, 1100ms, 1600ms},
    };
    for (const auto &wanted : cases) {
        SCOPED_TRACE(wanted.Name);
        Pty line;
        struct stat status = {};
        ASSERT_EQ(stat(line.Path().c_str(), &status), 0);
        TFaults script{status.st_rdev, wanted.Write, wanted.Queue, wanted.Hardware, 0, {}};
        TPrintSystemOptions options;
        options.Ports.Set("COM1:", {{line.Path()}, {9600, {}, {}, {}, {}}, {}});
        const auto system = PlatformPrintSystem(options);
        faults = &script;
        const auto sent =
            timed([&](TPrintOutcome &outcome) { SendToPort(*system, "COM1:", everyByte(100), outcome); });
        faults = nullptr;
        EXPECT_EQ(sent.Outcome.Success, wanted.Code == 0);
        EXPECT_EQ(sent.Outcome.Accepted, wanted.Accepted);
        EXPECT_EQ(sent.Outcome.Cause.Code, wanted.Code) << sent.Outcome.Cause.Words();
        EXPECT_GE(sent.Time, wanted.AtLeast);
        EXPECT_LE(sent.Time, wanted.AtMost);
        EXPECT_EQ(script.Flushed, wanted.Code == 0 ? 0 : 1) << "what remained was not thrown away";
    }
}

// A USB printer's device says at once that it has taken everything, and drops what is under way when it is
// closed.
TEST(PrinterDeviceFaults, isClosedOnceThePrinterHasTheBytes)
{
    struct TCase
    {
        std::string Name;
        TScript Poll;
        std::size_t Accepted;
        int Code;
    };
    for (const auto &[name, events, accepted, code] : {TCase{"late", {{0, 0, POLLOUT}}, 5, 0},
                                                       {"never", {{0}}, 0, ETIMEDOUT},
                                                       {"unplugged", {{0, POLLERR | POLLHUP}}, 0, EIO}}) {
        SCOPED_TRACE(name);
        struct stat status = {};
        ASSERT_EQ(stat("/dev/null", &status), 0);
        TFaults script{status.st_rdev, {}, {}, {}, 0, events};
        TPrintSystemOptions options;
        options.Ports.Set("LPT1:", {{"/dev/null"}, {}, {}});
        const auto system = PlatformPrintSystem(options);
        faults = &script;
        const auto sent =
            timed([&](TPrintOutcome &outcome) { SendToPort(*system, "LPT1:", "Total", outcome); });
        faults = nullptr;
        EXPECT_EQ(sent.Outcome.Accepted, accepted);
        EXPECT_EQ(sent.Outcome.Cause.Code, code);
        EXPECT_EQ(sent.Outcome.Success, code == 0);
        EXPECT_EQ(script.Poll.Answers.size(), 1U) << "the device was closed early";
    }
}
