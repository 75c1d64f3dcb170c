#pragma once

#include <cstdint>
#include <optional>

namespace Zelmar01 {

/// The more significant half of the file version of the system's common controls, major number in the high
/// word, minor number in the low one. None where it cannot be read, and on systems that have no such library.
std::optional<std::uint32_t> ComCtlVersion();

/// Whether that version is newer than 4.48; not so without one.
constexpr bool IsNewComCtlVersion(std::optional<std::uint32_t> version)
{
    return version && *version > 0x00040030;
}

} // namespace Zelmar01
