#pragma once

#include <cstdint>
#include <string>

namespace Zelmar01 {

/// A text of the system's message table in UTF-8, as it is, with its line end; empty when there is none.
/// `flags` are those of FormatMessage, `language` 0 is the user's own.
std::string SystemMessage(std::uint32_t code, std::uint32_t flags, std::uint32_t language = 0);

} // namespace Zelmar01
