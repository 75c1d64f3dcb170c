#include <Zelmar01/tasks/service/Utf16.h>

#include <algorithm>

namespace Zelmar01 {

namespace {

constexpr char32_t replacement = U'\xFFFD';

bool isSurrogate(char32_t c)
{
    return c >= 0xD800 && c < 0xE000;
}

void appendUtf8(std::string &text, char32_t c)
{
    const auto byte = [&](char32_t value) { text += static_cast<char>(static_cast<unsigned char>(value)); };
    if (c < 0x80) {
        byte(c);
        return;
    }
    if (c < 0x800) {
        byte(0xC0 | c >> 6);
    } else if (c < 0x10000) {
        byte(0xE0 | c >> 12);
        byte(0x80 | (c >> 6 & 0x3F));
    } else {
        byte(0xF0 | c >> 18);
        byte(0x80 | (c >> 12 & 0x3F));
        byte(0x80 | (c >> 6 & 0x3F));
    }
    byte(0x80 | (c & 0x3F));
}

void appendUtf16(std::u16string &text, char32_t c)
{
    if (c >= 0x10000) {
        text += static_cast<char16_t>(0xD7C0 + (c >> 10));
        text += static_cast<char16_t>(0xDC00 + (c & 0x3FF));
    } else {
        text += static_cast<char16_t>(c);
    }
}

// The character at `at`, which moves behind it; what is not valid is passed over a byte at a time.
char32_t takeUtf8(std::string_view text, std::size_t &at)
{
    const auto lead = static_cast<unsigned char>(text[at++]);
    if (lead < 0x80)
        return lead;
    const std::size_t more = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
    if (lead < 0xC2 || lead > 0xF4 || at + more > text.size())
        return replacement;
    char32_t c = lead & (0x3FU >> more);
    for (std::size_t i = 0; i < more; ++i) {
        const auto next = static_cast<unsigned char>(text[at + i]);
        if ((next & 0xC0) != 0x80)
            return replacement;
        c = c << 6 | (next & 0x3F);
    }
    const bool tooShort = (more == 2 && c < 0x800) || (more == 3 && c < 0x10000);
    if (tooShort || c > 0x10FFFF || isSurrogate(c))
        return replacement;
    at += more;
    return c;
}

} // namespace

std::string Utf8FromUtf16(std::u16string_view text)
{
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t c = text[i];
        if (isSurrogate(c)) {
            const bool paired =
                c < 0xDC00 && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] < 0xE000;
            c = paired ? (c << 10) + text[++i] - 0x35FDC00 : replacement;
        }
        appendUtf8(result, c);
    }
    return result;
}

std::u16string Utf16FromUtf8(std::string_view text)
{
    const auto isAscii = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
    const auto ascii = static_cast<std::size_t>(std::ranges::find_if_not(text, isAscii) - text.begin());
    std::u16string result(text.begin(), text.begin() + ascii);
    for (std::size_t at = ascii; at < text.size();)
        appendUtf16(result, takeUtf8(text, at));
    return result;
}

} // namespace Zelmar01
