#include <Zelmar01/printing/Ticket.h>

#include <algorithm>

namespace Zelmar01 {

std::vector<std::string> SplitTicket(std::string_view ticket, std::string_view tail, std::size_t limit)
{
    std::string rest = std::string(ticket) + std::string(tail);
    std::vector<std::string> pieces;
    while (rest.size() > limit) {
        // Where the tail begins; the line feed before it stays with the last piece.
        const auto tailAt = rest.size() - tail.size();
        const auto lineFeed =
            tailAt < 2 ? std::string::npos : rest.rfind('\n', std::min(limit - 1, tailAt - 2));
        const auto cut = lineFeed != std::string::npos ? lineFeed + 1
                         : tailAt > 0                  ? std::min(limit, tailAt)
                                                       : limit;
        pieces.push_back(rest.substr(0, cut));
        rest.erase(0, cut);
    }
    pieces.push_back(std::move(rest));
    return pieces;
}

} // namespace Zelmar01
