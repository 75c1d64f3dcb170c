#pragma once

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <iterator>
#include <poll.h>
#include <stdexcept>
#include <string>
#include <sys/file.h>
#include <termios.h>
#include <unistd.h>

/// A pseudo terminal in the place of a serial line: the printer's end is read by the test, the computer's end
/// is a device file. The device is held open, so that its settings outlive the library's use of it.
class Pty
{
public:
    Pty() : m_master(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC))
    {
        if (m_master < 0 || grantpt(m_master) != 0 || unlockpt(m_master) != 0)
            throw std::runtime_error("no pseudo terminal");
        m_path = ptsname(m_master);
        m_device = open(m_path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    }
    ~Pty()
    {
        HangUp();
        close(m_device);
    }
    Pty(const Pty &) = delete;
    Pty &operator=(const Pty &) = delete;

    const std::string &Path() const { return m_path; }

    /// The line's settings, as the printer's end sees them.
    termios Mode() const
    {
        termios mode = {};
        tcgetattr(m_master, &mode);
        return mode;
    }
    void SetMode(const termios &mode) { tcsetattr(m_device, TCSANOW, &mode); }

    /// The printer takes nothing any more, and again.
    void Hold() { tcflow(m_device, TCOOFF); }
    void Release() { tcflow(m_device, TCOON); }

    /// Writes to the line as another program would, until it is full. Returns what was written.
    std::string Fill()
    {
        auto raw = Mode();
        const auto found = raw;
        cfmakeraw(&raw);
        SetMode(raw);
        std::string written;
        for (char next = 'a'; write(m_device, &next, 1) == 1; next = next == 'z' ? 'a' : char(next + 1))
            written += next;
        SetMode(found);
        return written;
    }

    /// The lock that programs take on a line that they use.
    void Lock() { flock(m_device, LOCK_EX); }
    void Unlock() { flock(m_device, LOCK_UN); }

    /// Reads until `count` bytes have come or none has come for some time.
    std::string Read(std::size_t count, std::chrono::milliseconds patience = std::chrono::milliseconds(2000))
    {
        std::string bytes;
        char block[512];
        pollfd arrival{m_master, POLLIN, 0};
        while (bytes.size() < count && poll(&arrival, 1, static_cast<int>(patience.count())) == 1) {
            const auto got = read(m_master, block, std::min(sizeof block, count - bytes.size()));
            if (got <= 0)
                break;
            bytes.append(block, static_cast<std::size_t>(got));
        }
        return bytes;
    }

    /// The printer is unplugged.
    void HangUp()
    {
        if (m_master >= 0)
            close(m_master);
        m_master = -1;
    }

private:
    int m_master, m_device = -1;
    std::string m_path;
};

/// Whether two settings of a line are the same in all that a program can set.
inline bool operator==(const termios &a, const termios &b)
{
    return a.c_iflag == b.c_iflag && a.c_oflag == b.c_oflag && a.c_cflag == b.c_cflag &&
           a.c_lflag == b.c_lflag && std::equal(std::begin(a.c_cc), std::end(a.c_cc), std::begin(b.c_cc)) &&
           cfgetispeed(&a) == cfgetispeed(&b) && cfgetospeed(&a) == cfgetospeed(&b);
}
