#include <Zelmar01/printing/output/PortMap.h>

#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/core/Translation.h>

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace Zelmar01 {

namespace {

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view blanks = " \t\r";
    const auto first = std::min(text.find_first_not_of(blanks), text.size());
    return text.substr(first, text.find_last_not_of(blanks) + 1 - first);
}

// Takes the text up to a separator off the front of `rest`.
std::string_view nextField(std::string_view &rest, char separator)
{
    const auto end = std::min(rest.find(separator), rest.size());
    const auto field = trimmed(rest.substr(0, end));
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return field;
}

template<class Value, std::size_t N>
Value oneOf(std::string_view text, const std::array<std::pair<std::string_view, Value>, N> &choices)
{
    for (const auto &[name, value] : choices)
        if (name == text)
            return value;
    throw EConvertError(Filled(Translate("Zelmar01", "valeur inconnue « %1 »"), {text}));
}

template<std::size_t N>
unsigned numberOf(std::string_view text, const std::array<unsigned, N> &choices)
{
    unsigned value = 0;
    const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || stop != text.data() + text.size() ||
        std::find(choices.begin(), choices.end(), value) == choices.end())
        throw EConvertError(Filled(Translate("Zelmar01", "valeur inconnue « %1 »"), {text}));
    return value;
}

void setLine(TLineSettings &line, std::string_view key, std::string_view value)
{
    constexpr std::array<std::pair<std::string_view, TParity>, 3> parities{
        {{"none", TParity::None}, {"even", TParity::Even}, {"odd", TParity::Odd}}};
    constexpr std::array<std::pair<std::string_view, TFlowControl>, 3> flows{
        {{"none", TFlowControl::None}, {"rtscts", TFlowControl::RtsCts}, {"xonxoff", TFlowControl::XonXoff}}};
    if (key == "speed")
        line.Speed = numberOf(value, LineSpeeds);
    else if (key == "bits")
        line.Bits = static_cast<int>(numberOf(value, std::array{7U, 8U}));
    else if (key == "parity")
        line.Parity = oneOf(value, parities);
    else if (key == "stop")
        line.StopBits = static_cast<int>(numberOf(value, std::array{1U, 2U}));
    else if (key == "flow")
        line.FlowControl = oneOf(value, flows);
    else
        throw EConvertError(Filled(Translate("Zelmar01", "réglage inconnu « %1 »"), {key}));
}

std::string environment(const char *name)
{
    const char *value = std::getenv(name);
    return value ? value : "";
}

} // namespace

bool IsLocalPortName(std::string_view name)
{
    return std::find(LocalPortNames.begin(), LocalPortNames.end(), name) != LocalPortNames.end();
}

bool TLineSettings::IsValid() const
{
    return (!Speed || std::find(LineSpeeds.begin(), LineSpeeds.end(), *Speed) != LineSpeeds.end()) &&
           (!Bits || *Bits == 7 || *Bits == 8) && (!StopBits || *StopBits == 1 || *StopBits == 2);
}

TPortMap TPortMap::Defaults()
{
    TPortMap map;
#ifndef _WIN32
    for (const char digit : {'0', '1'})
        map.Set(std::string("LPT") + char(digit + 1) + ":",
                {{std::string("/dev/lp") + digit, std::string("/dev/usb/lp") + digit}, {}, {}});
    for (const char digit : {'0', '1', '2', '3'})
        map.Set(std::string("COM") + char(digit + 1) + ":",
                {{std::string("/dev/ttyS") + digit, std::string("/dev/ttyUSB") + digit,
                  std::string("/dev/ttyACM") + digit},
                 {},
                 {}});
#endif
    return map;
}

TPortMap TPortMap::FromUser()
{
    auto map = Defaults();
#ifndef _WIN32
    map.readFile("/etc/zelmar01/ports.conf");
    if (const auto directory = environment("XDG_CONFIG_HOME"); !directory.empty())
        map.readFile(directory + "/zelmar01/ports.conf");
    else if (const auto home = environment("HOME"); !home.empty())
        map.readFile(home + "/.config/zelmar01/ports.conf");
#endif
    const auto variable = environment("ZELMAR01_PORTS");
    for (std::string_view rest = variable; !rest.empty();)
        if (const auto setting = nextField(rest, ';'); !setting.empty())
            map.Set(setting, "ZELMAR01_PORTS");
    return map;
}

TPortMap TPortMap::InForce(const TPortMap &host)
{
    auto ports = FromUser();
    ports.Overlay(host);
    return ports;
}

const TPortTarget *TPortMap::Find(std::string_view name) const
{
    const auto found = m_ports.find(name);
    return found == m_ports.end() ? nullptr : &found->second;
}

void TPortMap::Set(std::string_view name, TPortTarget target)
{
    m_ports.insert_or_assign(std::string(name), std::move(target));
}

void TPortMap::Set(std::string_view setting, std::string_view place)
{
    try {
        auto rest = setting;
        const auto name = nextField(rest, '=');
        if (!IsLocalPortName(name))
            throw EConvertError(Filled(Translate("Zelmar01", "port inconnu « %1 »"), {name}));
        TPortTarget target{{std::string(nextField(rest, ','))}, {}, {}};
        if (target.Devices.front().empty())
            throw EConvertError(Translate("Zelmar01", "périphérique manquant"));
        while (!rest.empty()) {
            auto value = nextField(rest, ',');
            const auto key = nextField(value, '=');
            setLine(target.Line, key, trimmed(value));
        }
        Set(name, std::move(target));
    } catch (const EConvertError &error) {
        throw EConvertError(
            Filled(Translate("Zelmar01", "%1 : %2 dans « %3 »"), {place, error.what(), setting}));
    }
}

void TPortMap::Overlay(const TPortMap &other)
{
    for (const auto &[name, target] : other.m_ports)
        Set(name, target);
}

void TPortMap::readFile(const std::string &file)
{
    std::ifstream lines(file);
    std::error_code none;
    if (!lines && std::filesystem::exists(file, none))
        throw EConvertError(file + " : " + Translate("Zelmar01", "illisible"));
    std::string line;
    for (int number = 1; std::getline(lines, line); ++number)
        if (const auto setting = trimmed(line); !setting.empty() && setting.front() != '#')
            Set(setting, Filled(Translate("Zelmar01", "%1 : ligne %2"), {file, std::to_string(number)}));
}

} // namespace Zelmar01
