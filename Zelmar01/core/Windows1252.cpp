#include <Zelmar01/core/Windows1252.h>

#include <algorithm>
#include <array>

namespace Zelmar01 {

namespace {

// Bytes 80 to 9F hex; all others are equal to their character.
constexpr std::array<char16_t, 32> highControls{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

} // namespace

char32_t CharFromWindows1252(unsigned char byte)
{
    return byte >= 0x80 && byte < 0xA0 ? highControls[byte - 0x80U] : byte;
}

std::optional<unsigned char> CharToWindows1252(char32_t character)
{
    if (character < 0x80 || (character >= 0xA0 && character <= 0xFF))
        return static_cast<unsigned char>(character);
    const auto *found = std::find(highControls.begin(), highControls.end(), character);
    if (found == highControls.end())
        return std::nullopt;
    return static_cast<unsigned char>(0x80 + (found - highControls.begin()));
}

std::string Utf8FromWindows1252(std::string_view text)
{
    std::string utf8;
    utf8.reserve(text.size());
    for (const char c : text) {
        const char32_t character = CharFromWindows1252(static_cast<unsigned char>(c));
        if (character < 0x80) {
            utf8 += static_cast<char>(character);
        } else if (character < 0x800) {
            utf8 += static_cast<char>(0xC0 | (character >> 6));
            utf8 += static_cast<char>(0x80 | (character & 0x3F));
        } else {
            utf8 += static_cast<char>(0xE0 | (character >> 12));
            utf8 += static_cast<char>(0x80 | ((character >> 6) & 0x3F));
            utf8 += static_cast<char>(0x80 | (character & 0x3F));
        }
    }
    return utf8;
}

} // namespace Zelmar01
