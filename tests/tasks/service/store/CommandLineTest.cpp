#include <Zelmar01/tasks/service/Utf16.h>
#include <Zelmar01/tasks/service/store/CommandLine.h>

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

using namespace Zelmar01;

namespace {

std::vector<std::string> split(const std::string &parameters)
{
    std::vector<std::string> arguments;
    for (const auto &argument : SplitParameters(Utf16FromUtf8(parameters)))
        arguments.push_back(Utf8FromUtf16(argument));
    return arguments;
}

} // namespace

TEST(CommandLine, quotingRules)
{
    using TArguments = std::vector<std::string>;
    const std::pair<const char *, TArguments> rows[] = {
        {"", {}},
        {" \t ", {}},
        {"a  b\tc", {"a", "b", "c"}},
        {R"("a b" c)", {"a b", "c"}},
        {R"(a" b "c)", {"a b c"}},
        {R"("" a "")", {"", "a", ""}},
        {R"(C:\Caisse\ "D:\Mes documents\\" x)", {R"(C:\Caisse\)", R"(D:\Mes documents\)", "x"}},
        {R"(a\\\"b c\\d)", {R"(a\"b)", R"(c\\d)"}},
        {R"("il dit ""oui""" x)", {R"(il dit "oui")", "x"}},
        {R"("jamais fermé x)", {"jamais fermé x"}},
        {R"(l'or d'Alice)", {"l'or", "d'Alice"}},
        {R"($HOME `id` *.txt ; rm > x | y & z)",
         {"$HOME", "`id`", "*.txt", ";", "rm", ">", "x", "|", "y", "&", "z"}},
    };
    for (const auto &[parameters, arguments] : rows)
        EXPECT_EQ(split(parameters), arguments) << parameters;
}

TEST(CommandLine, whatWasJoinedIsSplitAgain)
{
    std::mt19937 random(11);
    for (int round = 0; round < 5000; ++round) {
        std::vector<std::u16string> arguments(random() % 4);
        for (auto &argument : arguments)
            for (auto length = random() % 7; length > 0; --length)
                argument += u"a\\\" \t'"[random() % 6];
        const auto joined = JoinParameters(arguments);
        ASSERT_EQ(SplitParameters(joined), arguments) << Utf8FromUtf16(joined);
    }
}
