#include <Zelmar01/core/Windows1252.h>

#include <gtest/gtest.h>

#include <set>

using namespace Zelmar01;

TEST(Windows1252, every256ValuesMakeTheRoundTrip)
{
    std::set<char32_t> characters;
    for (unsigned byte = 0; byte < 256; ++byte) {
        const auto character = CharFromWindows1252(static_cast<unsigned char>(byte));
        characters.insert(character);
        EXPECT_EQ(CharToWindows1252(character), static_cast<unsigned char>(byte)) << byte;
    }
    EXPECT_EQ(characters.size(), 256U);
}

TEST(Windows1252, unassignedBytesAreControlsAndOthersAreMissing)
{
    for (const char32_t control : {U'\x81', U'\x8D', U'\x8F', U'\x90', U'\x9D'})
        EXPECT_EQ(CharFromWindows1252(static_cast<unsigned char>(control)), control);
    for (const char32_t missing : {U'\x80', U'\x85', U'\x9F', U'\u0100', U'\u202F', U'\u2264', U'\U0001F48D'})
        EXPECT_EQ(CharToWindows1252(missing), std::nullopt) << static_cast<unsigned>(missing);
}

TEST(Windows1252, toUtf8)
{
    EXPECT_EQ(Utf8FromWindows1252("Bague \xE9toil\xE9"
                                  "e 1 250 \x80 \x9C"),
              "Bague étoilée 1 250 € œ");
}
