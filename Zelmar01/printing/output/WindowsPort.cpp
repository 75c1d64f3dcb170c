#include "WindowsPort.h"

#include "PrintTexts.h"
#include "WindowsTexts.h"

#include <algorithm>
#include <thread>
#include <utility>

namespace Zelmar01 {

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds pollSlice = 10ms;

// A driver that keeps time-outs of its own knows best how much has left; it is given this much longer than
// they allow before its write is cancelled.
constexpr std::chrono::milliseconds driverGrace = 500ms;

bool isPortName(std::string_view name)
{
    if (name.size() < 4)
        return false;
    std::string prefix(name.substr(0, 3));
    for (auto &letter : prefix)
        letter = static_cast<char>(letter & ~0x20);
    return (prefix == "COM" || prefix == "LPT") &&
           name.find_first_not_of("0123456789", 3) == std::string_view::npos;
}

// The bare name of a port, as in "COM12" for "COM12", "COM12:" or "\\.\COM12"; empty for any other device.
std::string bareName(std::string_view device)
{
    if (device.starts_with(R"(\\.\)"))
        device.remove_prefix(4);
    if (device.ends_with(':'))
        device.remove_suffix(1);
    return isPortName(device) ? std::string(device) : std::string{};
}

// The form in which a device is opened. Beyond COM9 a port has no other name than that of the device.
std::string openedName(const std::string &device)
{
    const auto bare = bareName(device);
    return bare.size() > 4 || (!bare.empty() && device.front() == '\\') ? R"(\\.\)" + bare : device;
}

COMMTIMEOUTS windowsTimeouts(const TCommTimeouts &timeouts)
{
    return {timeouts.ReadInterval, timeouts.ReadMultiplier, timeouts.ReadConstant, timeouts.WriteMultiplier,
            timeouts.WriteConstant};
}

TCommTimeouts ourTimeouts(const COMMTIMEOUTS &timeouts)
{
    return {timeouts.ReadIntervalTimeout, timeouts.ReadTotalTimeoutMultiplier,
            timeouts.ReadTotalTimeoutConstant, timeouts.WriteTotalTimeoutMultiplier,
            timeouts.WriteTotalTimeoutConstant};
}

void applyLine(DCB &mode, const TLineSettings &line)
{
    if (line.Speed)
        mode.BaudRate = *line.Speed;
    if (line.Bits)
        mode.ByteSize = static_cast<BYTE>(*line.Bits);
    if (line.Parity) {
        mode.fParity = *line.Parity != TParity::None;
        mode.Parity = *line.Parity == TParity::None  ? NOPARITY
                      : *line.Parity == TParity::Odd ? ODDPARITY
                                                     : EVENPARITY;
    }
    if (line.StopBits)
        mode.StopBits = *line.StopBits == 2 ? TWOSTOPBITS : ONESTOPBIT;
    if (line.FlowControl) {
        const bool wires = *line.FlowControl == TFlowControl::RtsCts;
        const bool characters = *line.FlowControl == TFlowControl::XonXoff;
        mode.fOutxCtsFlow = wires;
        mode.fRtsControl = wires ? RTS_CONTROL_HANDSHAKE : RTS_CONTROL_ENABLE;
        mode.fOutxDsrFlow = FALSE;
        mode.fOutX = mode.fInX = characters;
    }
}

bool sameLine(const DCB &a, const DCB &b)
{
    return a.BaudRate == b.BaudRate && a.ByteSize == b.ByteSize && a.Parity == b.Parity &&
           a.StopBits == b.StopBits && a.fOutxCtsFlow == b.fOutxCtsFlow && a.fOutX == b.fOutX;
}

} // namespace

WindowsPort::WindowsPort(const TPortTarget &target, TSystemCause &cause)
{
    if (!open(target, cause))
        return;
    COMMTIMEOUTS timeouts = {};
    m_driverTimes = ::GetCommTimeouts(m_file, &timeouts) != FALSE;
    m_timeouts = ourTimeouts(timeouts);
    // This also clears an old error, at which a line takes nothing.
    DWORD errors = 0;
    m_isLine = ClearCommError(m_file, &errors, nullptr) != FALSE;
    if (target.Line != TLineSettings{})
        setUpLine(target.Line, cause);
}

WindowsPort::~WindowsPort()
{
    if (m_found)
        SetCommState(m_file, &*m_found);
    if (IsOpen())
        CloseHandle(m_file);
}

bool WindowsPort::GetTimeouts(TCommTimeouts &timeouts, TSystemCause &cause) const
{
    timeouts = m_timeouts;
    if (!m_driverTimes)
        return true;
    COMMTIMEOUTS kept = {};
    if (!::GetCommTimeouts(m_file, &kept)) {
        cause = CauseFromWindows(GetLastError(), m_device);
        return false;
    }
    timeouts = ourTimeouts(kept);
    return true;
}

bool WindowsPort::SetTimeouts(const TCommTimeouts &timeouts, TSystemCause &cause)
{
    m_timeouts = timeouts;
    auto wanted = windowsTimeouts(timeouts);
    if (!m_driverTimes || ::SetCommTimeouts(m_file, &wanted))
        return true;
    cause = CauseFromWindows(GetLastError(), m_device);
    return false;
}

bool WindowsPort::Exists(const std::string &device)
{
    char target[MAX_PATH];
    if (const auto bare = bareName(device); !bare.empty())
        return QueryDosDeviceA(bare.c_str(), target, MAX_PATH) != 0 ||
               GetLastError() == ERROR_INSUFFICIENT_BUFFER;
    const auto name = AnsiText(device);
    return name && GetFileAttributesA(name->c_str()) != INVALID_FILE_ATTRIBUTES;
}

std::string WindowsPort::ChosenDevice(const TPortTarget &target)
{
    const auto &devices = target.Devices;
    const auto found = std::find_if(devices.begin(), devices.end(), Exists);
    if (found != devices.end())
        return *found;
    return devices.empty() ? std::string{} : devices.front();
}

bool WindowsPort::open(const TPortTarget &target, TSystemCause &cause)
{
    m_device = ChosenDevice(target);
    const auto name = AnsiText(openedName(m_device));
    if (!name)
        return fail(UnspeakableName(m_device), cause);
    // Not every system shows a line's settings and queue without the right to read, and not every device
    // grants it.
    for (const DWORD rights : {DWORD{GENERIC_READ | GENERIC_WRITE}, DWORD{GENERIC_WRITE}}) {
        // Overlapped, because a device without time-outs of its own could otherwise block for ever.
        m_file = CreateFileA(name->c_str(), rights, 0, nullptr, OPEN_EXISTING, FILE_FLAG_OVERLAPPED, nullptr);
        if (IsOpen() || GetLastError() != ERROR_ACCESS_DENIED)
            break;
    }
    if (!IsOpen())
        return failWith(GetLastError(), cause);
    return GetFileType(m_file) != FILE_TYPE_DISK || takeFile(target.RegularFile, cause);
}

bool WindowsPort::takeFile(TRegularFile use, TSystemCause &cause)
{
    // A volume or a disk has no information of this kind.
    BY_HANDLE_FILE_INFORMATION information = {};
    m_isFile = use != TRegularFile::Refuse && GetFileInformationByHandle(m_file, &information);
    return m_isFile || fail({ERROR_BAD_DEVICE, m_device + " : " + PrintTexts::NoPrintingDevice(), {}}, cause);
}

bool WindowsPort::setUpLine(const TLineSettings &line, TSystemCause &cause)
{
    DCB found = {};
    found.DCBlength = sizeof found;
    if (!GetCommState(m_file, &found))
        return failWith(GetLastError(), cause);
    m_found = found;
    auto wanted = found;
    applyLine(wanted, line);
    DCB got = {};
    got.DCBlength = sizeof got;
    if (line.IsValid() && SetCommState(m_file, &wanted) && GetCommState(m_file, &got) &&
        sameLine(wanted, got))
        return true;
    SetCommState(m_file, &found);
    return fail({ERROR_INVALID_PARAMETER, m_device + " : " + PrintTexts::LineRefused(), {}}, cause);
}

bool WindowsPort::fail(TSystemCause reason, TSystemCause &cause)
{
    cause = std::move(reason);
    m_found.reset();
    if (IsOpen())
        CloseHandle(std::exchange(m_file, INVALID_HANDLE_VALUE));
    return false;
}

bool WindowsPort::failWith(DWORD error, TSystemCause &cause)
{
    return fail(CauseFromWindows(error, m_device), cause);
}

std::size_t WindowsPort::queued() const
{
    DWORD errors = 0;
    COMSTAT state = {};
    return m_isLine && ClearCommError(m_file, &errors, &state) ? state.cbOutQue : 0;
}

void WindowsPort::waitUntilSent(TClock::time_point deadline) const
{
    while (queued() > 0 && TClock::now() < deadline)
        std::this_thread::sleep_for(pollSlice);
}

std::size_t WindowsPort::writeUntil(TClock::time_point deadline, std::string_view bytes, DWORD &error)
{
    OVERLAPPED operation = {};
    operation.hEvent = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    if (m_isFile)
        operation.Offset = operation.OffsetHigh = MAXDWORD;
    const auto size = static_cast<DWORD>(std::min<std::size_t>(bytes.size(), MAXDWORD));
    DWORD written = 0;
    if (!WriteFile(m_file, bytes.data(), size, nullptr, &operation) && GetLastError() != ERROR_IO_PENDING) {
        error = GetLastError();
    } else {
        DWORD wait = INFINITE;
        if (deadline != TClock::time_point::max()) {
            const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - TClock::now());
            wait = static_cast<DWORD>(std::max(left + (m_driverTimes ? driverGrace : 0ms), 0ms).count());
        }
        if (WaitForSingleObject(operation.hEvent, wait) != WAIT_OBJECT_0)
            CancelIoEx(m_file, &operation);
        if (!GetOverlappedResult(m_file, &operation, &written, TRUE))
            error = GetLastError() == ERROR_OPERATION_ABORTED ? ERROR_TIMEOUT : GetLastError();
        else if (written < size)
            error = ERROR_TIMEOUT; // with time-outs of its own, a driver calls that a success
    }
    CloseHandle(operation.hEvent);
    return written;
}

std::size_t WindowsPort::Write(std::string_view bytes, TSystemCause &cause)
{
    if (bytes.empty())
        return 0;
    const bool bounded = m_timeouts.WriteConstant || m_timeouts.WriteMultiplier;
    const auto allowed = std::chrono::milliseconds(m_timeouts.WriteConstant +
                                                   std::uint64_t{m_timeouts.WriteMultiplier} * bytes.size());
    const auto deadline = bounded ? TClock::now() + allowed : TClock::time_point::max();

    DWORD error = ERROR_SUCCESS;
    auto written = writeUntil(deadline, bytes, error);
    if (!error)
        waitUntilSent(deadline);
    if (const auto left = queued(); left > 0) {
        written -= std::min(left, written);
        error = error ? error : ERROR_TIMEOUT;
    }
    if (error) {
        // Otherwise half a ticket would come later.
        if (m_isLine)
            PurgeComm(m_file, PURGE_TXABORT | PURGE_TXCLEAR);
        cause = CauseFromWindows(error, m_device);
    }
    return written;
}

} // namespace Zelmar01
