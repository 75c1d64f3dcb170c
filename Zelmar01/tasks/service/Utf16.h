#pragma once

#include <string>
#include <string_view>

namespace Zelmar01 {

/// The texts of the task service are UTF-16, those of the system and of exceptions UTF-8. What is not valid
/// in the one becomes U+FFFD in the other.
std::string Utf8FromUtf16(std::u16string_view text);
std::u16string Utf16FromUtf8(std::string_view text);

} // namespace Zelmar01
