#pragma once

#include <array>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Zelmar01 {

/// The names of local ports that a printer name is compared with. A name is that of a local port only when it
/// is equal to one of them, letter case and colon included.
inline constexpr std::array<std::string_view, 6> LocalPortNames{
    "LPT1:", "LPT2:", "COM1:", "COM2:", "COM3:", "COM4:"};

bool IsLocalPortName(std::string_view name);

enum class TParity { None, Even, Odd };
enum class TFlowControl { None, RtsCts, XonXoff };

/// The speeds that a serial line can be set to, in bits a second. The time that a write may take (see
/// SendToPort()) includes the line's own: at 9600 and above any call's bytes fit into it, at 4800 some 900
/// do, at 2400 some 300 and at 1200 some 130.
inline constexpr std::array<unsigned, 8> LineSpeeds{1200, 2400, 4800, 9600, 19200, 38400, 57600, 115200};

/// How a serial line is set while a ticket is written. What is unset stays as the device is configured.
struct TLineSettings
{
    std::optional<unsigned> Speed; ///< one of LineSpeeds
    std::optional<int> Bits;       ///< data bits, 7 or 8
    std::optional<TParity> Parity;
    std::optional<int> StopBits; ///< 1 or 2
    std::optional<TFlowControl> FlowControl;

    /// Whether all that is set has one of the values named above. A port refuses other settings.
    bool IsValid() const;

    bool operator==(const TLineSettings &) const = default;
};

/// What is done when the device of a port turns out to be a regular file.
enum class TRegularFile {
    Refuse, ///< the port cannot be opened
    Append, ///< the bytes are put behind what the file holds
};

/// What a port name stands for.
struct TPortTarget
{
    /// Devices in order of preference, UTF-8; the first one that is there, with something behind it, is used.
    std::vector<std::string> Devices;
    TLineSettings Line;
    /// Only a host can allow regular files; no setting of a user does. A file is never created.
    TRegularFile RegularFile = TRegularFile::Refuse;

    bool operator==(const TPortTarget &) const = default;
};

/// The devices behind the local port names, on systems where a port is a device file; on Windows the names
/// are the system's own and a target set here takes the place of one.
///
/// A user sets ports one a line in /etc/zelmar01/ports.conf and in zelmar01/ports.conf below $XDG_CONFIG_HOME
/// (else ~/.config), or separated by ";" in the environment variable ZELMAR01_PORTS:
///
///     COM1: = /dev/ttyUSB0, speed=9600, bits=8, parity=none, stop=1, flow=rtscts
///
/// with parity none, even or odd and flow none, rtscts or xonxoff. Lines that begin with "#" are comments.
/// The later of these sources wins: the defaults, the two files in the order above, the environment, the
/// host.
class TPortMap
{
public:
    /// The system's usual places: parallel ports, then USB printers, for LPT1: and LPT2:, serial ports, then
    /// USB serial adapters, for COM1: to COM4:. Nothing on Windows.
    static TPortMap Defaults();

    /// The defaults with the user's files and environment over them. Raises EConvertError naming the file and
    /// line of a setting that cannot be understood, or a file that cannot be read.
    static TPortMap FromUser();

    /// What is in force: the host's ports over the user's. Raises like FromUser().
    static TPortMap InForce(const TPortMap &host);

    /// What a name stands for; null when nothing was set.
    const TPortTarget *Find(std::string_view name) const;

    void Set(std::string_view name, TPortTarget target);

    /// Sets a port from a text such as "COM1:=/dev/ttyUSB0,speed=9600". `place` names the text's origin in
    /// errors. Raises EConvertError.
    void Set(std::string_view setting, std::string_view place);

    /// Sets what another map sets.
    void Overlay(const TPortMap &other);

    const std::map<std::string, TPortTarget, std::less<>> &Ports() const { return m_ports; }

private:
    void readFile(const std::string &file);

    std::map<std::string, TPortTarget, std::less<>> m_ports;
};

} // namespace Zelmar01
