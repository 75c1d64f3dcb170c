#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/data/binding/DateText.h>
#include <Zelmar01/data/binding/FieldText.h>

#include <gtest/gtest.h>

using namespace Zelmar01;

namespace {

const QLocale french(QLocale::French, QLocale::France), english(QLocale::English, QLocale::UnitedStates);
const QDate today(2026, 3, 15);

std::string read(const char *text, const QString &pattern)
{
    const auto date = ParseDate(QString::fromUtf8(text), pattern, today);
    return date ? date->toString(Qt::ISODate).toStdString() : "none";
}

} // namespace

TEST(DateText, readsWhatPeopleTypeInEachOrder)
{
    EXPECT_EQ(DatePattern(french), QStringLiteral("dd/MM/yyyy"));
    EXPECT_EQ(DatePattern(english), QStringLiteral("MM/dd/yyyy"));
    const struct
    {
        const char *Text, *French, *English;
    } cases[] = {
        {"28/02/2026", "2026-02-28", "none"},
        {"02/28/2026", "none", "2026-02-28"},
        {"3/4/26", "2026-04-03", "2026-03-04"},
        {"03.04.2026", "2026-04-03", "2026-03-04"},
        {"3-4-2026", "2026-04-03", "2026-03-04"},
        {" 3 4 2026 ", "2026-04-03", "2026-03-04"},
        {"3/4", "2026-04-03", "2026-03-04"},
        {"3/4/", "2026-04-03", "2026-03-04"}, // a mask with the year left out
        {"030426", "2026-04-03", "2026-03-04"},
        {"03042026", "2026-04-03", "2026-03-04"},
        {"0304", "2026-04-03", "2026-03-04"},
        {"2026-04-03", "2026-04-03", "2026-04-03"},
        {"2026/4/3", "2026-04-03", "2026-04-03"},
        {"1/1/75", "2075-01-01", "2075-01-01"}, // 50 years before today to 49 after
        {"1/1/76", "1976-01-01", "1976-01-01"},
        {"29/02/2024", "2024-02-29", "none"},
        {"29/02/2026", "none", "none"},
        {"31/04/2026", "none", "none"},
        {"0/1/2026", "none", "none"},
        {"1/1/0000", "none", "none"},
        {"1/1/202", "none", "none"},
        {"001/1/2026", "none", "none"},
        {"1/1/2026/1", "none", "none"},
        {"12", "none", "none"},
        {"", "none", "none"},
        {"hier", "none", "none"},
        {"1/2/2026 10:00", "none", "none"},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(read(c.Text, DatePattern(french)), c.French) << c.Text;
        EXPECT_EQ(read(c.Text, DatePattern(english)), c.English) << c.Text;
    }
}

TEST(DateText, readsADayAndAMonth)
{
    const auto pattern = DatePatternOfMask(QStringLiteral("jj/MM"));
    EXPECT_EQ(pattern, QStringLiteral("dd/MM"));
    for (const auto &[text, wanted] :
         std::initializer_list<std::pair<const char *, const char *>>{{"29/02", "2024-02-29"},
                                                                      {"2902", "2024-02-29"},
                                                                      {"1.3", "2026-03-01"},
                                                                      {"31/12", "2026-12-31"},
                                                                      {"30/02", "none"},
                                                                      {"31/04", "none"},
                                                                      {"1/13", "none"},
                                                                      {"1", "none"},
                                                                      {"1/3/2026", "none"}})
        EXPECT_EQ(read(text, pattern), wanted) << text;
}

TEST(DateText, readsTimes)
{
    for (const auto &[text, wanted] :
         std::initializer_list<std::pair<const char *, QTime>>{{"13:45", {13, 45}},
                                                               {"7:05:09", {7, 5, 9}},
                                                               {"13h45", {13, 45}},
                                                               {"13H", {13, 0}},
                                                               {"24:00", {}},
                                                               {"12:60", {}},
                                                               {"1345", {}},
                                                               {"", {}},
                                                               {"1:2:3:4", {}},
                                                               {"12:-1", {}},
                                                               {"+1:30", {}}})
        EXPECT_EQ(ParseTime(QString::fromLatin1(text)).value_or(QTime()), wanted) << text;
}

TEST(FieldText, givesBackWhatItShows)
{
    const struct
    {
        TFieldType Type;
        QVariant Value;
        const char *French, *English;
    } cases[] = {
        {ftString, QStringLiteral("Étui"), "Étui", "Étui"},
        {ftInteger, qlonglong(-1234567), "-1234567", "-1234567"},
        {ftFloat, 1234.25, "1234,25", "1234.25"},
        {ftBCD, QVariant::fromValue(TDecimal(123450, 2)), "1234,50", "1234.50"},
        {ftDate, QDate(2026, 2, 28), "28/02/2026", "02/28/2026"},
        {ftTime, QTime(13, 45), "13:45", "13:45"},
        {ftDateTime, QDateTime(QDate(2026, 2, 28), QTime(13, 45, 10)), "28/02/2026 13:45:10",
         "02/28/2026 13:45:10"},
        {ftBoolean, true, "Oui", "Oui"},
        {ftInteger, {}, "", ""},
    };
    for (const auto &c : cases)
        for (const auto &[locale, wanted] : {std::pair(french, c.French), {english, c.English}}) {
            const auto text = FieldTextOf(c.Value, c.Type, locale);
            EXPECT_EQ(text, QString::fromUtf8(wanted));
            EXPECT_EQ(FieldValueOf(text, c.Type, locale), c.Value) << wanted;
        }
    for (const auto &[type, text] : {std::pair(ftInteger, "1,5"), {ftDate, "30/02/2026"}, {ftBCD, "cher"}})
        EXPECT_THROW(FieldValueOf(QString::fromLatin1(text), type, french), EConvertError) << text;
}
