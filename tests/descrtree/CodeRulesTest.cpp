#include <Zelmar01/descrtree/CodeRules.h>

#include <gtest/gtest.h>

using namespace Zelmar01;

namespace {

// The codes from `first` to `last` under a parent, in upper case.
QStringList codes(const QString &parent, char first, char last)
{
    QStringList list;
    for (char c = first; c <= last; ++c)
        list << parent + QLatin1Char(c);
    return list;
}

} // namespace

TEST(CodeRules, nextFreeCode)
{
    const struct
    {
        TParentCode Parent;
        QStringList Codes;
        const char *Expected;
    } cases[] = {
        {{}, {}, "1"},
        {{}, {"1", "2", "4"}, "3"},
        {{}, {"2"}, "1"},
        {{}, codes("", '1', '9'), ""},
        {{}, codes("", '1', '9') << "C", "A"}, // a gap is not tested further
        {{}, codes("", '1', '9') << "A", ""},
        {"3", {}, "30"},
        {"3", codes("3", '0', '9'), "3A"},
        {"3", codes("3", '0', '9') + codes("3", 'A', 'Y'), "3Z"},
        {"3", codes("3", '0', '9') + codes("3", 'A', 'Z'), ""},
        {"3", codes("3", '0', '9') + codes("3", 'a', 'z'), ""},
        {"3", codes("3", '0', '9') + codes("3", 'A', 'Z') << "3}", "3{"},
        {"1", {"10", "12"}, "11"},
        {"1", {"10", "10", "11"}, "11"}, // a code that is there twice looks like a gap
        {"1", {""}, "10"},
        {"2a", {}, "2a0"},
        {"2a", {"2A0"}, "2A1"},
        {"", {"0"}, "1"}, // a level without a code may have children too
    };
    for (const auto &c : cases)
        EXPECT_EQ(NextFreeCode(c.Parent, c.Codes), QLatin1String(c.Expected))
            << c.Parent.value_or("department").toStdString() << " " << c.Codes.join(u' ').toStdString();
}

TEST(CodeRules, formOfACode)
{
    const struct
    {
        TParentCode Parent;
        const char *Code;
        bool Expected;
    } cases[] = {
        {{}, "", false},     {{}, "0", false},        {{}, "1", true},    {{}, "9", true},
        {{}, "A", false},    {{}, "11", false},       {{}, "é", false},   {"1", "1", false},
        {"1", "1A", true},   {"1", "1z", true},       {"1", "10", true},  {"1", "1é", false},
        {"1", "1{", false},  {"1", "1'", false},      {"1", "1 ", false}, {"1", "XY", true},
        {"1", "'A", true},   {"1", "1AB", false},     {"", "a", true},    {"", "", false},
        {"1A", "1A0", true}, {"1", "1\u212A", false}, // the Kelvin sign is no letter of ours
    };
    for (const auto &c : cases)
        EXPECT_EQ(IsCodeForm(c.Parent, QString::fromUtf8(c.Code)), c.Expected)
            << c.Parent.value_or("department").toStdString() << " " << c.Code;
    EXPECT_FALSE(MayBeQueried("'A"));
    EXPECT_TRUE(MayBeQueried("1A"));
}

TEST(CodeRules, caseKeepsTheLength)
{
    EXPECT_EQ(UpperCode("1aéœßÿµƒ"), "1AÉŒßŸµƒ");
    EXPECT_EQ(LowerCode("1AÉŒŸ\u212A"), "1aéœÿ\u212A");
}
