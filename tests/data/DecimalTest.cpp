#include <Zelmar01/data/Decimal.h>

#include <gtest/gtest.h>

#include <limits>

using namespace Zelmar01;

TEST(Decimal, textsComeBackAsTheyAre)
{
    for (const auto *text :
         {"0", "0.00", "-0.05", "1250.00", "999999999999999999", "-0.000000000000000001", "17"})
        EXPECT_EQ(TDecimal::FromText(QString::fromLatin1(text)).value().ToText().toStdString(), text);
    EXPECT_EQ(TDecimal::FromText(u"+.5").value().ToText(), QStringLiteral("0.5"));
    EXPECT_EQ(TDecimal::FromText(u"007.").value().ToText(), QStringLiteral("7"));
}

TEST(Decimal, otherFormsAreRefused)
{
    for (const auto *text : {"", "-", ".", "1,5", "1e3", "1.2.3", "--1", "1 ", "1000000000000000000",
                             "0.0000000000000000001", "12345678901234567890", "NaN", "0x10"})
        EXPECT_FALSE(TDecimal::FromText(QString::fromLatin1(text))) << text;
}

TEST(Decimal, roundsHalvesAwayFromZero)
{
    struct TCase
    {
        const char *From;
        int Decimals;
        const char *To; // null: does not fit
    };
    for (const auto &c : {TCase{"1.005", 2, "1.01"},
                          {"-1.005", 2, "-1.01"},
                          {"1.004", 2, "1.00"},
                          {"0.5", 0, "1"},
                          {"2", 3, "2.000"},
                          {"99999999999999999.9", 0, "100000000000000000"},
                          {"999999999999999999", 1, nullptr},
                          {"-999999999999999999", 1, nullptr},
                          {"1", 19, nullptr}}) {
        const auto rounded = TDecimal::FromText(QString::fromLatin1(c.From)).value().Rounded(c.Decimals);
        ASSERT_EQ(rounded.has_value(), c.To != nullptr) << c.From;
        if (c.To) {
            EXPECT_EQ(rounded->ToText().toStdString(), c.To);
        }
    }
}

TEST(Decimal, comparesWithoutOverflow)
{
    const char *ascending[] = {"-999999999999999999",
                               "-1.50000000000000001",
                               "-1.5",
                               "-0.01",
                               "0.000",
                               "0.01",
                               "1.4999999999999999",
                               "1.5",
                               "999999999999999998",
                               "999999999999999999"};
    for (std::size_t i = 0; i < std::size(ascending); ++i)
        for (std::size_t j = 0; j < std::size(ascending); ++j) {
            const auto a = TDecimal::FromText(QString::fromLatin1(ascending[i]));
            const auto b = TDecimal::FromText(QString::fromLatin1(ascending[j]));
            ASSERT_TRUE(a && b);
            EXPECT_EQ(*a <=> *b, i <=> j) << ascending[i] << ' ' << ascending[j];
        }
    EXPECT_EQ(TDecimal(150, 2), TDecimal(15, 1));
}

TEST(Decimal, readsTheFractionThatStandsForIt)
{
    const auto text = [](double fraction, int decimals) {
        const auto decimal = TDecimal::FromFraction(fraction, decimals);
        return decimal ? decimal->ToText().toStdString() : std::string("none");
    };
    EXPECT_EQ(text(0.1, 2), "0.10");
    EXPECT_EQ(text(-1234567890123.45, 2), "-1234567890123.45");
    EXPECT_EQ(text(80, 0), "80");
    EXPECT_EQ(text(0.1 + 0.2, 2), "none") << "not the fraction of 0.30";
    EXPECT_EQ(text(12345678901234.56, 2), "none") << "16 digits";
    EXPECT_EQ(text(0.005, 2), "none");
    EXPECT_EQ(text(std::numeric_limits<double>::quiet_NaN(), 2), "none");
}
