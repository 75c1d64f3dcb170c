#include <Zelmar01/core/Windows1252Text.h>

#include <gtest/gtest.h>

using namespace Zelmar01;

TEST(Windows1252Text, accentsOfTheirOwnAreJoined)
{
    EXPECT_EQ(ToWindows1252(QStringLiteral("e\u0301tui, C\u0327a")).Bytes, "\xE9tui, \xC7"
                                                                           "a");
}

TEST(Windows1252Text, missingCharactersAreReportedOnceInOrder)
{
    const auto text = ToWindows1252(QStringLiteral("≤ 5 \U0001F48D ≤ 7 € \u202F"));
    EXPECT_EQ(text.Bytes, "? 5 ? ? 7 \x80 ?");
    EXPECT_EQ(text.Missing, QStringLiteral("≤\U0001F48D\u202F"));
}

TEST(Windows1252Text, anyBytesComeBack)
{
    std::string all;
    for (int byte = 0; byte < 256; ++byte)
        all += static_cast<char>(byte);
    const auto back = ToWindows1252(FromWindows1252(all));
    EXPECT_EQ(back.Bytes, all);
    EXPECT_TRUE(back.Missing.isEmpty());
}
