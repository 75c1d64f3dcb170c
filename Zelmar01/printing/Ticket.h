#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Zelmar01 {

/// Cuts the bytes of a ticket into pieces of up to `limit` bytes (at least 1), what one call to the printer
/// takes, behind the last line feed that fits, or where the piece is full when a line is longer than that.
/// `tail` (a cut, the drawer code) is put behind the last piece and never cut off from the line before it
/// where both fit. There is always at least one piece, an empty one for an empty ticket.
std::vector<std::string> SplitTicket(std::string_view ticket, std::string_view tail, std::size_t limit);

} // namespace Zelmar01
