#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace Zelmar01 {

/// Windows-1252, the 8-bit code page of all texts that leave the library as bytes. The five bytes to which
/// the published code page gives no character (81, 8D, 8F, 90, 9D hex) stand for the control characters
/// U+0081 and so on, so that each of the 256 values makes the round trip.

/// The character that a byte stands for.
char32_t CharFromWindows1252(unsigned char byte);

/// The byte that stands for a character; none when the code page lacks it.
std::optional<unsigned char> CharToWindows1252(char32_t character);

/// A text in Windows-1252, brought to UTF-8.
std::string Utf8FromWindows1252(std::string_view text);

} // namespace Zelmar01
