#include <Zelmar01/printing/Notations.h>

#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/core/Messages.h>
#include <Zelmar01/core/Windows1252.h>

#include <algorithm>
#include <charconv>
#include <optional>

namespace Zelmar01 {

namespace {

std::string decimal(char byte)
{
    return std::to_string(static_cast<unsigned char>(byte));
}

std::string hexadecimal(char byte)
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    const auto value = static_cast<unsigned char>(byte);
    return {digits[value >> 4U], digits[value & 15U]};
}

template<class Format>
std::string joined(std::string_view bytes, Format format)
{
    std::string list;
    for (const char byte : bytes) {
        if (!list.empty())
            list += ',';
        list += format(byte);
    }
    return list;
}

// An integer in the form that forms and settings take: a sign, then decimal digits or "$" and hexadecimal
// ones.
std::optional<int> integer(std::string_view text)
{
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+'))
        text.remove_prefix(1);
    const bool hexadecimalDigits = text.starts_with('$');
    if (hexadecimalDigits)
        text.remove_prefix(1);
    unsigned value = 0;
    const auto *end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value, hexadecimalDigits ? 16 : 10);
    if (error != std::errc{} || stop != end || value > 255)
        return std::nullopt;
    return negative ? -static_cast<int>(value) : static_cast<int>(value);
}

std::optional<unsigned char> byteOf(std::string_view item)
{
    const auto value = integer(item);
    if (!value || *value < 0)
        return std::nullopt;
    return static_cast<unsigned char>(*value);
}

// Reads a list. `byteOfItem` gives an item's byte and may rewrite the item as it shall appear in the error.
template<class ByteOfItem>
std::string bytesOfList(std::string_view list, ByteOfItem byteOfItem)
{
    std::string rest(list);
    std::erase(rest, ' ');
    rest.erase(std::min(rest.find_last_not_of(',') + 1, rest.size()));

    std::string bytes;
    for (std::size_t at = 0; at < rest.size();) {
        if (rest[at] == ',')
            ++at;
        const auto comma = std::min(rest.find(',', at), rest.size());
        std::string item = rest.substr(at, comma - at);
        at = comma + 1;
        const std::optional<unsigned char> byte = byteOfItem(item);
        if (!byte)
            throw EConvertError(MessageText(TMessage::InvalidCode) + Utf8FromWindows1252(item));
        bytes += static_cast<char>(*byte);
    }
    return bytes;
}

} // namespace

std::string StrToASCIIList(std::string_view bytes)
{
    return joined(bytes, decimal);
}

std::string StrToAsciiH(std::string_view bytes)
{
    return joined(bytes, hexadecimal);
}

std::string ASCIIListToStr(std::string_view list)
{
    return bytesOfList(list, [](const std::string &item) { return byteOf(item); });
}

std::string AsciiHToStr(std::string_view list)
{
    return bytesOfList(list,
                       [](std::string &item) { return StrHexToInt(item) ? byteOf(item) : std::nullopt; });
}

bool StrHexToInt(std::string &digits)
{
    if (digits.size() != 2)
        return false;
    unsigned value = 0;
    bool valid = true;
    for (char &digit : digits) {
        if (digit >= 'a' && digit <= 'z')
            digit = static_cast<char>(digit - 'a' + 'A');
        const bool isDecimal = digit >= '0' && digit <= '9';
        valid = valid && (isDecimal || (digit >= 'A' && digit <= 'F'));
        value = value * 16 + static_cast<unsigned>(isDecimal ? digit - '0' : digit - 'A' + 10);
    }
    if (valid)
        digits = std::to_string(value);
    return valid;
}

} // namespace Zelmar01
