#pragma once

#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/printing/output/PortMap.h>
#include <Zelmar01/printing/output/PrintSystem.h>

#include <windows.h>

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace Zelmar01 {

/// A port of Windows, open for writing. A serial line has the line settings of its target and is given back
/// as it was found when it closes.
class WindowsPort
{
public:
    /// Opens the first device of the target that exists. Without one the port is not open and `cause` tells
    /// why.
    WindowsPort(const TPortTarget &target, TSystemCause &cause);
    ~WindowsPort();
    WindowsPort(const WindowsPort &) = delete;
    WindowsPort &operator=(const WindowsPort &) = delete;

    bool IsOpen() const { return m_file != INVALID_HANDLE_VALUE; }

    /// The time-outs that the driver keeps, or those of the last SetTimeouts where a device has none of its
    /// own.
    bool GetTimeouts(TCommTimeouts &timeouts, TSystemCause &cause) const;
    bool SetTimeouts(const TCommTimeouts &timeouts, TSystemCause &cause);

    /// See IPrintSystem::FileWrite.
    std::size_t Write(std::string_view bytes, TSystemCause &cause);

    /// The first device of the target that exists, or the first one when none does.
    static std::string ChosenDevice(const TPortTarget &target);

    /// Whether a device exists, without opening it: opening a serial line raises its signals.
    static bool Exists(const std::string &device);

private:
    using TClock = std::chrono::steady_clock;

    bool open(const TPortTarget &target, TSystemCause &cause);
    bool takeFile(TRegularFile use, TSystemCause &cause);
    bool setUpLine(const TLineSettings &line, TSystemCause &cause);
    bool fail(TSystemCause reason, TSystemCause &cause);
    bool failWith(DWORD error, TSystemCause &cause);
    std::size_t writeUntil(TClock::time_point deadline, std::string_view bytes, DWORD &error);
    std::size_t queued() const;
    void waitUntilSent(TClock::time_point deadline) const;

    HANDLE m_file = INVALID_HANDLE_VALUE;
    std::string m_device;
    bool m_driverTimes = false; // the driver bounds a write by time-outs of its own
    bool m_isLine = false;      // the driver tells what is queued
    TCommTimeouts m_timeouts;
    bool m_isFile = false;      // a regular file, written at its end
    std::optional<DCB> m_found; // what a serial line is given back as
};

} // namespace Zelmar01
