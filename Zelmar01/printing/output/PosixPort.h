#pragma once

#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/printing/output/PortMap.h>
#include <Zelmar01/printing/output/PrintSystem.h>

#include <termios.h>

#include <optional>

namespace Zelmar01 {

/// A port's device file, open for writing. A terminal device (a serial line) is in raw mode with the line
/// settings of its target, and is given back as it was found when it closes.
class PosixPort
{
public:
    /// Opens the first device of the target that exists. Without one the port is not open and `cause` tells
    /// why.
    PosixPort(const TPortTarget &target, TSystemCause &cause);
    ~PosixPort();
    PosixPort(const PosixPort &) = delete;
    PosixPort &operator=(const PosixPort &) = delete;

    bool IsOpen() const { return m_file >= 0; }

    TCommTimeouts Timeouts;

    /// See IPrintSystem::FileWrite.
    std::size_t Write(std::string_view bytes, TSystemCause &cause);

    /// Looks at the devices of the target without opening one. Tells which would be used, or the first one
    /// and why none can be.
    static bool IsUsable(const TPortTarget &target, std::string &device, TSystemCause &cause);

private:
    using TClock = std::chrono::steady_clock;

    PosixPort() = default;
    template<class Attempt>
    bool tryDevices(const TPortTarget &target, TSystemCause &cause, Attempt attempt);
    bool look(const TPortTarget &target, TSystemCause &cause);
    bool open(const TPortTarget &target, TSystemCause &cause);
    bool takeLine(const TLineSettings &line, TSystemCause &cause);
    bool setUpLine(const TLineSettings &line, TSystemCause &cause);
    bool fail(int error, TSystemCause &cause);
    bool failAsNoDevice(TSystemCause &cause);
    bool failAsRefused(TSystemCause &cause);
    TSystemCause causeOf(int error) const;
    std::optional<std::size_t> queued() const;
    bool waitForRoom(TClock::time_point deadline) const;
    int waitUntilTaken(TClock::time_point deadline) const;
    bool waitForQueue(TClock::time_point deadline) const;
    void waitForHardware(std::size_t bytes, TClock::time_point deadline) const;

    int m_file = -1;
    std::string m_device;
    bool m_isCharacterDevice = false;
    std::optional<termios> m_found; // what a terminal device is given back as
    termios m_used = {};            // what it is while it is open
};

} // namespace Zelmar01
