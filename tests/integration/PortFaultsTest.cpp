// What real lines do when they fail and no pseudo terminal can be made to do: the system calls that the
// library makes on its device answer what a case has laid down for them.

#include "Sending.h"

#include "support/Pty.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdarg>
#include <deque>
#include <map>
#include <sys/ioctl.h>
#include <sys/syscall.h>

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
        TFaults script{status.st_rdev, wanted.Write, wanted.Queue, wanted.Hardware, 0};
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
