#include <Zelmar01/printing/Ticket.h>

#include <gtest/gtest.h>

using namespace Zelmar01;

namespace {

struct TTicketCase
{
    std::string Ticket, Tail;
    std::size_t Limit;
    std::vector<std::string> Pieces;
};
const TTicketCase cases[] = {
    {"", "", 5, {""}},
    {"abcd\n", "", 5, {"abcd\n"}},
    {"ab\ncd\nef\n", "", 5, {"ab\n", "cd\n", "ef\n"}},
    {"ab\ncd\nef\n", "", 6, {"ab\ncd\n", "ef\n"}},
    {"abcdefgh\n", "", 5, {"abcde", "fgh\n"}},
    {"", "!", 5, {"!"}},
    {"ab\ncd\n", "!", 6, {"ab\n", "cd\n!"}}, // the last line stays with the drawer
    {"abcd\n", "!", 5, {"abcd\n", "!"}},     // and cannot here
    {"abcdef", "!?", 7, {"abcdef", "!?"}},   // a tail is not cut where it need not be
    {"a\nbcdef", "!?", 7, {"a\n", "bcdef!?"}},
    {"\n\n\n", "!", 2, {"\n\n", "\n!"}},
};

} // namespace

TEST(Ticket, isCutAtLineEndsAndKeepsItsTail)
{
    for (const auto &ticket : cases)
        EXPECT_EQ(SplitTicket(ticket.Ticket, ticket.Tail, ticket.Limit), ticket.Pieces) << ticket.Ticket;
}

TEST(Ticket, losesNothingWhateverItHolds)
{
    std::string ticket;
    for (unsigned i = 0; i < 20000; ++i)
        ticket += static_cast<char>(i * 7919U % 251);
    for (const std::size_t limit : {1U, 7U, 4085U, 19999U, 30000U}) {
        std::string joined;
        for (const auto &piece : SplitTicket(ticket, "tail", limit)) {
            EXPECT_LE(piece.size(), limit);
            EXPECT_FALSE(piece.empty());
            joined += piece;
        }
        EXPECT_EQ(joined, ticket + "tail");
    }
}
