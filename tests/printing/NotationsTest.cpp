#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/printing/Notations.h>

#include <gtest/gtest.h>

using namespace Zelmar01;
using namespace std::string_literals;

namespace {

std::string allBytes()
{
    std::string all;
    for (int byte = 0; byte < 256; ++byte)
        all += static_cast<char>(byte);
    return all;
}

std::string errorOf(std::string (*read)(std::string_view), std::string_view list)
{
    try {
        read(list);
    } catch (const EConvertError &error) {
        return error.what();
    }
    return "no error";
}

struct TGoodList
{
    std::string List, Bytes;
};
const TGoodList decimalLists[] = {
    {"", ""},
    {"    ", ""},
    {",,,", ""},
    {" 27 , 64 ,, ", "\x1b@"},
    {",27", "\x1b"},
    {"27,,64", "\x1b@"},
    {"2 7", "\x1b"},
    {"0,255", "\0\xff"s},
    {"007,+8,-0", "\a\b\0"s},
    {"$1B,$ff", "\x1b\xff"},
};
const TGoodList hexLists[] = {
    {"", ""},
    {"1b,40", "\x1b@"},
    {"1B,,fF,", "\x1b\xff"},
    {",0A", "\n"},
};

struct TBadList
{
    std::string List, Item;
};
const TBadList badDecimalLists[] = {
    {"27,256", "256"},
    {"27,x", "x"},
    {"-1", "-1"},
    {",,27", ""},
    {"27,,,64", ""},
    {"$", "$"},
    {"$100", "$100"},
    {"1B", "1B"},
    {"+-3", "+-3"},
    {"27;64", "27;64"},
    {"99999999999999", "99999999999999"},
    {"1,\xE9", "é"},
    {"1.5", "1.5"},
    {"- 1 , 2", "-1"},
};
const TBadList badHexLists[] = {
    {"1B4", "1B4"}, {"1g", "1G"}, {"1G", "1G"},   {"f", "f"},
    {"$1B", "$1B"}, {",,1B", ""}, {"1b4", "1b4"}, {"-1", "-1"},
};

} // namespace

TEST(Notations, writesLists)
{
    EXPECT_EQ(StrToASCIIList("\x1b@\x1b!"), "27,64,27,33");
    EXPECT_EQ(StrToASCIIList("\0\xff"s), "0,255");
    EXPECT_EQ(StrToASCIIList(""), "");
    EXPECT_EQ(StrToAsciiH("\x0a\x1b\xff\0"s), "0A,1B,FF,00");
    EXPECT_EQ(StrToAsciiH(""), "");
}

TEST(Notations, allBytesComeBack)
{
    EXPECT_EQ(ASCIIListToStr(StrToASCIIList(allBytes())), allBytes());
    EXPECT_EQ(AsciiHToStr(StrToAsciiH(allBytes())), allBytes());
}

TEST(Notations, readsWhatPeopleType)
{
    for (const auto &good : decimalLists)
        EXPECT_EQ(ASCIIListToStr(good.List), good.Bytes) << good.List;
    for (const auto &good : hexLists)
        EXPECT_EQ(AsciiHToStr(good.List), good.Bytes) << good.List;
}

TEST(Notations, namesTheBadItem)
{
    for (const auto &bad : badDecimalLists)
        EXPECT_EQ(errorOf(ASCIIListToStr, bad.List), "Code invalide : " + bad.Item) << bad.List;
    for (const auto &bad : badHexLists)
        EXPECT_EQ(errorOf(AsciiHToStr, bad.List), "Code invalide : " + bad.Item) << bad.List;
}

TEST(Notations, hexDigitsBecomeTheirDecimalText)
{
    struct TDigits
    {
        std::string Before, After;
        bool Valid;
    };
    for (const auto &digits : {TDigits{"ff", "255", true},
                               {"1B", "27", true},
                               {"00", "0", true},
                               {"f", "f", false},
                               {"", "", false},
                               {"abc", "abc", false},
                               {"1g", "1G", false},
                               {"g1", "G1", false}}) {
        auto text = digits.Before;
        EXPECT_EQ(StrHexToInt(text), digits.Valid) << digits.Before;
        EXPECT_EQ(text, digits.After);
    }
}
