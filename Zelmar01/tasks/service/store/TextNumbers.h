#pragma once

#include <charconv>
#include <optional>
#include <string_view>

namespace Zelmar01 {

/// The number that a text is, as a whole; none for any other text.
template<class T>
std::optional<T> NumberFromText(std::string_view text)
{
    T number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

} // namespace Zelmar01
