#include <Zelmar01/printing/ControlCodes.h>

#include <Zelmar01/printing/Notations.h>

#include <array>

namespace Zelmar01 {

namespace {

constexpr unsigned char blank = 0x20, del = 0x7F;

std::string mnemonic(char c)
{
    const auto byte = static_cast<unsigned char>(c);
    if (const auto name = ControlCodeName(byte); !name.empty())
        return std::string(name);
    if (byte == blank)
        return "SP";
    return byte > del ? '$' + StrToAsciiH({&c, 1}) : std::string(1, c);
}

} // namespace

std::string_view ControlCodeName(unsigned char byte)
{
    static constexpr std::array<std::string_view, blank> names{
        "NUL", "SOH", "STX", "ETX", "EOT", "ENQ", "ACK", "BEL", "BS",  "HT",  "LF",
        "VT",  "FF",  "CR",  "SO",  "SI",  "DLE", "DC1", "DC2", "DC3", "DC4", "NAK",
        "SYN", "ETB", "CAN", "EM",  "SUB", "ESC", "FS",  "GS",  "RS",  "US"};
    if (byte < names.size())
        return names[byte];
    return byte == del ? "DEL" : std::string_view();
}

std::string CodeMnemonics(std::string_view bytes)
{
    std::string text;
    for (const char c : bytes) {
        if (!text.empty())
            text += ' ';
        text += mnemonic(c);
    }
    return text;
}

} // namespace Zelmar01
