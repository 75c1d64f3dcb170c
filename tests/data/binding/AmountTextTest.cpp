#include <Zelmar01/data/binding/AmountText.h>

#include <gtest/gtest.h>

using namespace Zelmar01;

namespace {

const QLocale french(QLocale::French, QLocale::France), english(QLocale::English, QLocale::UnitedStates),
    german(QLocale::German, QLocale::Germany);

std::string read(const char16_t *text, const QLocale &locale)
{
    const auto amount = ParseAmount(text, locale);
    return amount ? amount->ToText().toStdString() : "none";
}

} // namespace

TEST(AmountText, readsWhatPeopleTypeAndPaste)
{
    const struct
    {
        const char16_t *Text;
        const char *French, *English;
    } cases[] = {
        {u"1 234,50", "1234.50", "1234.50"},
        {u"1\u00A0234,50", "1234.50", "1234.50"},
        {u"1\u202F234,50", "1234.50", "1234.50"},
        {u"1\u2009234\u202F567,5", "1234567.5", "1234567.5"},
        {u"1234.50", "1234.50", "1234.50"},
        {u"1234,50", "1234.50", "1234.50"},
        {u"1,234.50", "1234.50", "1234.50"},
        {u"1.234,50", "1234.50", "1234.50"},
        {u"1'234.50", "1234.50", "1234.50"},
        {u"1,234,567", "1234567", "1234567"},
        {u"1,234", "1.234", "1234"}, // the one text that means two amounts
        {u"1.234", "1.234", "1.234"},
        {u"12,50", "12.50", "12.50"},
        {u"0,125", "0.125", "0.125"},
        {u"-0,05", "-0.05", "-0.05"},
        {u"−12,5", "-12.5", "-12.5"},
        {u"+3", "3", "3"},
        {u"  7  ", "7", "7"},
        {u",5", "0.5", "0.5"},
        {u"5,", "5", "5"},
        {u"12,50 €", "12.50", "12.50"},
        {u"€1,234.50", "1234.50", "1234.50"},
        {u"-12,50\u00A0EUR", "-12.50", "-12.50"},
        // 0.1 + 0.2, and the most that an exact amount holds.
        {u"9 999 999 999 999 999,99", "9999999999999999.99", "9999999999999999.99"},
        {u"99999999999999999999", "none", "none"},
        {u"", "none", "none"},
        {u"-", "none", "none"},
        {u",", "none", "none"},
        {u"12 34", "none", "none"},
        {u"1234 567", "none", "none"},
        {u"1,2,3", "none", "none"},
        {u"1.2,345,678", "none", "none"},
        {u"1,5.2,5", "none", "none"},
        {u"12-", "none", "none"},
        {u"--5", "none", "none"},
        {u"+-5", "none", "none"},
        {u"1e3", "none", "none"},
        {u"0x10", "none", "none"},
        {u"douze", "none", "none"},
        {u"١٢", "none", "none"},
    };
    for (const auto &c : cases) {
        const auto name = QString::fromUtf16(c.Text).toStdString();
        EXPECT_EQ(read(c.Text, french), c.French) << name;
        EXPECT_EQ(read(c.Text, english), c.English) << name;
    }
    EXPECT_EQ(read(u"1.234", german), "1234");
}

TEST(AmountText, showsAmountsInTheirFormat)
{
    const auto usual = u",0.00;-,0.00";
    const struct
    {
        const char *Amount;
        const char16_t *Format, *French, *English;
    } cases[] = {
        {"1234.5", usual, u"1\u202F234,50", u"1,234.50"},
        {"-1234567.89", usual, u"-1\u202F234\u202F567,89", u"-1,234,567.89"},
        {"0", usual, u"0,00", u"0.00"},
        {"0.005", usual, u"0,01", u"0.01"},
        {"1.005", usual, u"1,01", u"1.01"}, // a binary fraction would give 1.00
        {"-0.004", usual, u"0,00", u"0.00"},
        {"999.995", usual, u"1\u202F000,00", u"1,000.00"},
        {"9999999999999999.99", usual, u"9\u202F999\u202F999\u202F999\u202F999\u202F999,99",
         u"9,999,999,999,999,999.99"},
        {"1234.5", u"0.00", u"1234,50", u"1234.50"},
        {"-12", u"0.00", u"-12,00", u"-12.00"},
        {"-12", u",0.00 €;(,0.00 €)", u"(12,00 €)", u"(12.00 €)"},
        {"0", u"0.00;-0.00;'néant'", u"néant", u"néant"},
        {"-0.001", u"0.00;-0.00;'néant'", u"néant", u"néant"},
        {"1.5", u"#,##0.###", u"1,5", u"1.5"},
        {"0.5", u"#.##", u",5", u".5"},
        {"7", u"000", u"007", u"007"},
        {"3", u"'0.00 ;'0", u"0.00 ;3", u"0.00 ;3"},
        {"-1234.500", u"", u"-1234,500", u"-1234.500"},
    };
    for (const auto &c : cases) {
        const auto amount = TDecimal::FromText(QString::fromLatin1(c.Amount)).value();
        const auto format = QString::fromUtf16(c.Format);
        EXPECT_EQ(FormatAmount(amount, format, french), QString::fromUtf16(c.French))
            << c.Amount << " " << format.toStdString();
        EXPECT_EQ(FormatAmount(amount, format, english), QString::fromUtf16(c.English))
            << c.Amount << " " << format.toStdString();
    }
}

TEST(AmountText, readsWhatItShows)
{
    for (const auto *text : {"0", "-0.01", "999.99", "1000", "-1234567.89", "9999999999999999.99"})
        for (const auto &locale : {french, english, german}) {
            const auto amount = TDecimal::FromText(QString::fromLatin1(text));
            EXPECT_EQ(ParseAmount(FormatAmount(*amount, QStringLiteral(",0.00"), locale), locale), amount)
                << text << locale.name().toStdString();
        }
}
