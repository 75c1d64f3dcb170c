#include "PosixPort.h"

#include "PrintTexts.h"
#include "SigPipeGuard.h"

#include <Zelmar01/core/Translation.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <fstream>
#include <grp.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <utility>

namespace Zelmar01 {

namespace {

using namespace std::chrono_literals;

// A device may tell only at its deadline that it has room again, so nothing is waited for longer than this.
constexpr std::chrono::milliseconds pollSlice = 50ms;
constexpr std::chrono::milliseconds queueSlice = 10ms;

// What the hardware of a line holds back at most where it does not tell.
constexpr std::size_t hardwareBuffer = 256;

// The system's constants for LineSpeeds, in the same order.
constexpr std::array<speed_t, LineSpeeds.size()> speedConstants{B1200,  B2400,  B4800,  B9600,
                                                                B19200, B38400, B57600, B115200};

std::string groupRemedy(const std::string &device)
{
    struct stat status = {};
    if (stat(device.c_str(), &status) != 0 || !(status.st_mode & S_IWGRP))
        return Translate("Zelmar01", "demander le droit d'écrire sur ce périphérique");
    const group *owner = getgrgid(status.st_gid);
    const std::string name = owner ? owner->gr_name : std::to_string(status.st_gid);
    return Filled(Translate("Zelmar01", "ajouter l'utilisateur au groupe « %1 » puis rouvrir la session"),
                  {name});
}

// A serial line of which the system knows that no hardware is behind it.
bool hasNoHardware(const std::string &device)
{
    std::ifstream file("/sys/class/tty/" + device.substr(device.rfind('/') + 1) + "/type");
    int type = -1;
    return file >> type && type == 0;
}

bool isAbsence(int error)
{
    return error == ENOENT || error == ENXIO || error == ENODEV || error == EIO;
}

bool isTarget(mode_t mode, const TPortTarget &target)
{
    return S_ISCHR(mode) || S_ISFIFO(mode) || (S_ISREG(mode) && target.RegularFile != TRegularFile::Refuse);
}

void applyLine(termios &mode, const TLineSettings &line)
{
    for (std::size_t i = 0; i < LineSpeeds.size(); ++i)
        if (LineSpeeds[i] == line.Speed)
            cfsetspeed(&mode, speedConstants[i]);
    if (line.Bits)
        mode.c_cflag = (mode.c_cflag & ~tcflag_t{CSIZE}) | (*line.Bits == 7 ? tcflag_t{CS7} : tcflag_t{CS8});
    if (line.Parity) {
        mode.c_cflag &= ~tcflag_t{PARENB | PARODD};
        if (*line.Parity != TParity::None)
            mode.c_cflag |= *line.Parity == TParity::Odd ? tcflag_t{PARENB | PARODD} : tcflag_t{PARENB};
    }
    if (line.StopBits)
        mode.c_cflag = *line.StopBits == 2 ? mode.c_cflag | CSTOPB : mode.c_cflag & ~tcflag_t{CSTOPB};
    if (line.FlowControl) {
        mode.c_cflag &= ~tcflag_t{CRTSCTS};
        mode.c_iflag &= ~tcflag_t{IXON | IXOFF | IXANY};
        if (*line.FlowControl == TFlowControl::RtsCts)
            mode.c_cflag |= CRTSCTS;
        if (*line.FlowControl == TFlowControl::XonXoff)
            mode.c_iflag |= IXON | IXOFF;
    }
}

unsigned bitsASecond(const termios &mode)
{
    for (std::size_t i = 0; i < LineSpeeds.size(); ++i)
        if (speedConstants[i] == cfgetospeed(&mode))
            return LineSpeeds[i];
    return LineSpeeds.back();
}

// Bytes go out as they are; character size, parity and flow control stay as they were found.
void makeRaw(termios &mode)
{
    constexpr tcflag_t keptControl = CSIZE | PARENB;
    const auto found = mode;
    cfmakeraw(&mode);
    mode.c_cflag = (mode.c_cflag & ~keptControl) | (found.c_cflag & keptControl) | CLOCAL;
    mode.c_iflag |= found.c_iflag & IXON;
}

bool sameLine(const termios &a, const termios &b)
{
    constexpr tcflag_t control = CSIZE | PARENB | PARODD | CSTOPB | CRTSCTS;
    constexpr tcflag_t input = IXON | IXOFF;
    return cfgetospeed(&a) == cfgetospeed(&b) && (a.c_cflag & control) == (b.c_cflag & control) &&
           (a.c_iflag & input) == (b.c_iflag & input);
}

} // namespace

PosixPort::PosixPort(const TPortTarget &target, TSystemCause &cause)
{
    tryDevices(target, cause,
               [&](TSystemCause &why) { return open(target, why) && takeLine(target.Line, why); });
}

PosixPort::~PosixPort()
{
    if (m_file < 0)
        return;
    if (m_found)
        tcsetattr(m_file, TCSANOW, &*m_found);
    close(m_file);
}

bool PosixPort::IsUsable(const TPortTarget &target, std::string &device, TSystemCause &cause)
{
    PosixPort port;
    const bool usable =
        port.tryDevices(target, cause, [&](TSystemCause &why) { return port.look(target, why); });
    device = usable || target.Devices.empty() ? port.m_device : target.Devices.front();
    return usable;
}

// Tries the devices in their order. One that is not there, or has nothing behind it, leaves the next one its
// turn; of several failures the first of a device that is there counts.
template<class Attempt>
bool PosixPort::tryDevices(const TPortTarget &target, TSystemCause &cause, Attempt attempt)
{
    cause = {ENOENT, PrintTexts::NoDeviceSet(), PrintTexts::SetPort()};
    for (const auto &device : target.Devices) {
        m_device = device;
        TSystemCause why;
        if (attempt(why))
            return true;
        if (cause.Code == ENOENT && (why.Code != ENOENT || device == target.Devices.front()))
            cause = why;
        if (!isAbsence(why.Code))
            break;
    }
    return false;
}

bool PosixPort::look(const TPortTarget &target, TSystemCause &cause)
{
    struct stat status = {};
    if (stat(m_device.c_str(), &status) != 0 || faccessat(AT_FDCWD, m_device.c_str(), W_OK, AT_EACCESS) != 0)
        return fail(errno, cause);
    if (hasNoHardware(m_device))
        return fail(ENXIO, cause);
    return isTarget(status.st_mode, target) || failAsNoDevice(cause);
}

bool PosixPort::open(const TPortTarget &target, TSystemCause &cause)
{
    const int append = target.RegularFile == TRegularFile::Append ? O_APPEND : 0;
    m_file = ::open(m_device.c_str(), O_WRONLY | O_NOCTTY | O_NONBLOCK | O_CLOEXEC | append);
    struct stat status = {};
    if (m_file < 0 || fstat(m_file, &status) != 0)
        return fail(errno, cause);
    m_isCharacterDevice = S_ISCHR(status.st_mode);
    return isTarget(status.st_mode, target) || failAsNoDevice(cause);
}

bool PosixPort::takeLine(const TLineSettings &line, TSystemCause &cause)
{
    termios mode = {};
    if (!m_isCharacterDevice)
        return true;
    if (tcgetattr(m_file, &mode) != 0)
        return errno == ENOTTY || errno == EINVAL || fail(errno, cause);
    // Two programs that write to one line at a time would print a mixture of two tickets.
    if (flock(m_file, LOCK_EX | LOCK_NB) != 0)
        return fail(errno == EWOULDBLOCK ? EBUSY : errno, cause);
    m_found = mode;
    return setUpLine(line, cause);
}

bool PosixPort::setUpLine(const TLineSettings &line, TSystemCause &cause)
{
    m_used = *m_found;
    makeRaw(m_used);
    applyLine(m_used, line);
    if (!line.IsValid())
        return failAsRefused(cause);
    if (tcsetattr(m_file, TCSANOW, &m_used) != 0)
        return fail(errno, cause);
    // The call succeeds when any of the settings could be made.
    termios got = {};
    if (line != TLineSettings{} && (tcgetattr(m_file, &got) != 0 || !sameLine(m_used, got))) {
        tcsetattr(m_file, TCSANOW, &*m_found);
        return failAsRefused(cause);
    }
    return true;
}

bool PosixPort::failAsRefused(TSystemCause &cause)
{
    fail(EINVAL, cause);
    cause.Text = m_device + " : " + PrintTexts::LineRefused();
    return false;
}

bool PosixPort::fail(int error, TSystemCause &cause)
{
    cause = causeOf(error);
    m_found.reset();
    if (m_file >= 0)
        close(std::exchange(m_file, -1));
    return false;
}

bool PosixPort::failAsNoDevice(TSystemCause &cause)
{
    fail(ENODEV, cause);
    cause.Text = m_device + " : " + PrintTexts::NoPrintingDevice();
    return false;
}

TSystemCause PosixPort::causeOf(int error) const
{
    auto cause = CauseFromErrno(error, m_device);
    if (error == EACCES || error == EPERM)
        cause.Remedy = groupRemedy(m_device);
    else if (error == ENOSPC)
        cause.Remedy = Translate("Zelmar01", "plus de papier, ou imprimante hors ligne");
    else if (error == EBUSY)
        cause.Remedy = PrintTexts::PortInUse();
    else if (error == ETIMEDOUT)
        cause.Remedy = PrintTexts::LookAtPrinter();
    else if (isAbsence(error) || error == EPIPE)
        cause.Remedy = Translate(
            "Zelmar01",
            "vérifier que l'imprimante est branchée et allumée, et le réglage du port (ZELMAR01_PORTS, "
            "ports.conf)");
    return cause;
}

// The bytes that the device has not taken yet; nothing when the line has gone away with them.
std::optional<std::size_t> PosixPort::queued() const
{
    int bytes = 0;
    if (!m_found || ioctl(m_file, TIOCOUTQ, &bytes) == 0)
        return static_cast<std::size_t>(std::max(bytes, 0));
    if (errno == EIO || errno == ENODEV || errno == ENXIO)
        return std::nullopt;
    return 0; // a device that does not count them
}

// False when the deadline has come.
bool PosixPort::waitForRoom(TClock::time_point deadline) const
{
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - TClock::now());
    if (left <= 0ms)
        return false;
    pollfd room{m_file, POLLOUT, 0};
    // Some devices always claim to have room and still take nothing: do not spin on them.
    if (poll(&room, 1, static_cast<int>(std::min(left, pollSlice).count())) > 0)
        std::this_thread::sleep_for(1ms);
    return true;
}

// A printer's device that does not wait takes the bytes over before the printer has them, and forgets them
// when it is closed then. It has room again when they have gone. Returns the error.
int PosixPort::waitUntilTaken(TClock::time_point deadline) const
{
    for (;;) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - TClock::now());
        pollfd room{m_file, POLLOUT, 0};
        if (poll(&room, 1, static_cast<int>(std::clamp(left, 0ms, pollSlice).count())) > 0) {
            if (room.revents & POLLOUT)
                return 0;
            if (room.revents & (POLLERR | POLLHUP | POLLNVAL))
                return EIO;
        }
        if (left <= 0ms)
            return ETIMEDOUT;
    }
}

// False when the deadline has come.
bool PosixPort::waitForQueue(TClock::time_point deadline) const
{
    if (TClock::now() >= deadline)
        return false;
    std::this_thread::sleep_for(queueSlice);
    return true;
}

// The last bytes are still in the line's hardware when the queue is empty, and going back to other settings
// would garble them. tcdrain() would wait for them without end where the printer holds the line back.
void PosixPort::waitForHardware(std::size_t bytes, TClock::time_point deadline) const
{
    if (!m_found || sameLine(*m_found, m_used))
        return;
#ifdef TIOCSERGETLSR
    int state = 0;
    while (ioctl(m_file, TIOCSERGETLSR, &state) == 0) {
        if ((state & TIOCSER_TEMT) || TClock::now() >= deadline)
            return;
        std::this_thread::sleep_for(1ms);
    }
#endif
    const auto bits = 12 * std::min(bytes, hardwareBuffer);
    const auto speed = bitsASecond(m_used);
    std::this_thread::sleep_until(
        std::min<TClock::time_point>(deadline, TClock::now() + 1us * (1000000 * bits / speed)));
}

std::size_t PosixPort::Write(std::string_view bytes, TSystemCause &cause)
{
    SigPipeGuard guard;
    const bool bounded = Timeouts.WriteConstant || Timeouts.WriteMultiplier;
    const auto allowed = std::chrono::milliseconds(Timeouts.WriteConstant +
                                                   std::uint64_t{Timeouts.WriteMultiplier} * bytes.size());
    const auto deadline = bounded ? TClock::now() + allowed : TClock::time_point::max();

    std::size_t written = 0;
    int error = 0;
    while (written < bytes.size() && !error) {
        const auto count = ::write(m_file, bytes.data() + written, bytes.size() - written);
        if (count > 0)
            written += static_cast<std::size_t>(count);
        else if (count < 0 && errno != EAGAIN && errno != EINTR)
            error = errno;
        else if (!waitForRoom(deadline))
            error = ETIMEDOUT;
    }
    if (error == EPIPE)
        guard.Raised();
    auto left = queued();
    while (!error && left.value_or(0) > 0) {
        if (waitForQueue(deadline))
            left = queued();
        else
            error = ETIMEDOUT;
    }
    if (!error && !left)
        error = EIO;
    if (!error && m_isCharacterDevice && !m_found) {
        error = waitUntilTaken(deadline);
        if (error)
            left = written;
    }
    if (!error) {
        waitForHardware(written, deadline);
        return written;
    }
    // Otherwise the closing would wait for a device that takes nothing, and half a ticket would come later.
    if (m_found)
        tcflush(m_file, TCOFLUSH);
    cause = causeOf(error);
    return written - std::min(left.value_or(written), written);
}

} // namespace Zelmar01
