#include <Zelmar01/printing/Conversions.h>

#include <gtest/gtest.h>

using namespace Zelmar01;

namespace {

std::string bytes(unsigned first, unsigned last)
{
    std::string all;
    for (unsigned byte = first; byte <= last; ++byte)
        all += static_cast<char>(byte);
    return all;
}

// A sum over the positions as well, so that two entries that have changed places show.
unsigned checksum(const std::string &text)
{
    unsigned a = 1, b = 0;
    for (const char c : text) {
        a = (a + static_cast<unsigned char>(c)) % 65521;
        b = (b + a) % 65521;
    }
    return b << 16U | a;
}

} // namespace

TEST(Conversions, toTheDosCodePage)
{
    EXPECT_EQ(fWinToPrn(bytes(0, 127)), bytes(0, 127));
    // Bijou étoilé, çà et là; then the odd entries: A0, C0 and C4, F5 and F6, F8, and the euro sign.
    EXPECT_EQ(fWinToPrn("Bijou \xE9toil\xE9, \xE7\xE0 et l\xE0"), "Bijou \x82toil\x82, \x87\x85 et l\x85");
    EXPECT_EQ(fWinToPrn("\xA0\xC0\xC4\xF5\xF6\xF8\x80\xFF"), "\x8D\x8E\x8E\x94\x94\xE8\xE4\x98");
    EXPECT_EQ(checksum(fWinToPrn(bytes(128, 255))), 0x687A4101U);
}

TEST(Conversions, toTheFrenchSet)
{
    EXPECT_EQ(fWinToCitizen("Bijou \xE9toil\xE9, \xE7\xE0 et o\xF9, \xA7 2"), "Bijou {toil{, \\@ et o|, ] 2");
    EXPECT_EQ(fWinToCitizen("@[\\]{|}~ \xC9t\xE9 na\xEFve \x80"),
              "\xA3\xDF\x82\xDF(\xE1)\xBF Et{ naIve \x80");
    EXPECT_EQ(checksum(fWinToCitizen(bytes(0, 255))), 0xE1A86D24U);
}

TEST(Conversions, byNumber)
{
    const std::string text = "\xE9@";
    EXPECT_EQ(ConvertText(0, text), text);
    EXPECT_EQ(ConvertText(1, text), "\x82@");
    EXPECT_EQ(ConvertText(2, text), "{\xA3");
    for (const int other : {-1, 3, 7})
        EXPECT_EQ(ConvertText(other, text), "");
    for (int number = 0; number < 3; ++number)
        EXPECT_EQ(ConvertText(number, ""), "");
}
