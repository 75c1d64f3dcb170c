#include "Samples.h"

#include <Zelmar01/tasks/service/CommandLine.h>
#include <Zelmar01/tasks/service/TaskAllocator.h>
#include <Zelmar01/tasks/service/TriggerText.h>
#include <Zelmar01/tasks/service/Triggers.h>
#include <Zelmar01/tasks/service/Utf16.h>

#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <vector>

using namespace Zelmar01;

namespace {

struct TText
{
    TASK_TRIGGER Trigger;
    const char *Text;
};

const TText texts[] = {
    {once("2011-05-05 05:00"), "À 05:00 le 05/05/2011"},
    {daily("2011-05-05 05:00"), "À 05:00 tous les jours, à partir du 05/05/2011"},
    {daily("2011-05-05 05:00", 3), "À 05:00 tous les 3 jours, à partir du 05/05/2011"},
    {ending(daily("2011-05-05 05:00"), "2012-02-29"),
     "À 05:00 tous les jours, à partir du 05/05/2011 et jusqu'au 29/02/2012"},
    {repeated(daily("2011-02-16 21:32"), 60, 1440),
     "Toutes les heures à partir de 21:32 pendant 24 heures tous les jours, à partir du 16/02/2011"},
    {repeated(once("2011-02-16 21:32"), 15, 90),
     "Toutes les 15 minutes à partir de 21:32 pendant 90 minutes le 16/02/2011"},
    {repeated(once("2011-02-16 21:32"), 1, 60),
     "Toutes les minutes à partir de 21:32 pendant 1 heure le 16/02/2011"},
    {weekly("2010-05-26 04:00", 1, Sun), "À 04:00 chaque dim de chaque semaine, à partir du 26/05/2010"},
    {weekly("2010-05-26 04:00", 2, Mon | Fri),
     "À 04:00 chaque lun, ven toutes les 2 semaines, à partir du 26/05/2010"},
    {byDate("2001-12-14 15:52", bit(31)), "À 15:52 le 31 de chaque mois, à partir du 14/12/2001"},
    {byDate("2001-12-14 15:52", bit(1) | bit(15), 0b100010001010),
     "À 15:52 le 1er, 15 de févr, avr, août, déc, à partir du 14/12/2001"},
    {byWeekday("2001-03-24 04:00", 5, Fri), "À 04:00 le dernier ven de chaque mois, à partir du 24/03/2001"},
    {byWeekday("2001-03-24 04:00", 2, Tue | Sat, 1),
     "À 04:00 le deuxième mar, sam de janv, à partir du 24/03/2001"},
    {starting("2001-03-24 04:00", TASK_EVENT_TRIGGER_ON_IDLE), "Quand l'ordinateur est inactif"},
    {starting("2001-03-24 04:00", TASK_EVENT_TRIGGER_AT_SYSTEMSTART), "Au démarrage du système"},
    {starting("2001-03-24 04:00", TASK_EVENT_TRIGGER_AT_LOGON), "À l'ouverture de session"},
    {byDate("2001-12-14 15:52", bit(31), 2), "Jamais : aucun des mois choisis n'a ce jour"},
    {byDate("2001-12-14 15:52", bit(31), 0), "Jamais : aucun mois n'est choisi"},
    {weekly("2010-05-26 04:00", 1, 0), "Jamais : aucun jour n'est choisi"},
    {daily("2010-05-26 04:00", 0), "Jamais : l'intervalle est nul"},
    {byWeekday("2001-03-24 04:00", 6, Fri), "Jamais : la semaine du mois n'existe pas"},
    {TASK_TRIGGER{}, "Jamais : la date ou l'heure de début n'existe pas"},
    {starting("2001-03-24 04:00", static_cast<TASK_TRIGGER_TYPE>(8)),
     "Jamais : ce type de déclencheur est inconnu"},
};

std::vector<std::string> split(const std::string &parameters)
{
    std::vector<std::string> arguments;
    for (const auto &argument : SplitParameters(Utf16FromUtf8(parameters)))
        arguments.push_back(Utf8FromUtf16(argument));
    return arguments;
}

} // namespace

TEST(Triggers, theirTexts)
{
    for (const auto &row : texts)
        EXPECT_EQ(Utf8FromUtf16(TriggerText(row.Trigger)), row.Text);
}

TEST(Triggers, whatMayBeSet)
{
    const auto changed = [](const std::function<void(TASK_TRIGGER &)> &change) {
        auto trigger = daily("2027-02-28 23:59");
        change(trigger);
        return trigger;
    };
    const std::function<void(TASK_TRIGGER &)> refused[] = {
        [](auto &trigger) { trigger.cbTriggerSize = 47; },
        [](auto &trigger) { trigger.wBeginMonth = 13; },
        [](auto &trigger) { trigger.wBeginDay = 29; },
        [](auto &trigger) { trigger.wBeginYear = 1600; },
        [](auto &trigger) { trigger.wStartHour = 24; },
        [](auto &trigger) { trigger.wStartMinute = 60; },
        [](auto &trigger) { trigger.rgFlags = TriggerFlag::HasEndDate; },
        [](auto &trigger) { trigger = repeated(trigger, 10, 10); },
        [](auto &trigger) { trigger.TriggerType = static_cast<TASK_TRIGGER_TYPE>(8); },
    };
    for (const auto &change : refused) {
        const auto trigger = changed(change);
        EXPECT_EQ(CheckTrigger(&trigger), TaskResult::InvalidArgument) << &change - refused;
    }
    EXPECT_EQ(CheckTrigger(nullptr), TaskResult::InvalidArgument);
    const std::function<void(TASK_TRIGGER &)> accepted[] = {
        [](auto &) {},
        [](auto &trigger) { trigger.wEndMonth = 77; },
        [](auto &trigger) { trigger = ending(trigger, "2001-01-01"); },
        [](auto &trigger) { trigger = repeated(trigger, 0, 30); },
        [](auto &trigger) { trigger = repeated(trigger, 10, 11); },
        [](auto &trigger) { trigger.Type.Daily.DaysInterval = 0; },
        [](auto &trigger) { trigger = NewTrigger(SystemTimeFromSeconds(at("2027-02-28 10:10"))); },
    };
    for (const auto &change : accepted) {
        const auto trigger = changed(change);
        EXPECT_EQ(CheckTrigger(&trigger), TaskResult::Ok) << &change - accepted;
    }
}

TEST(Triggers, areHandedOutWithoutTouchingWhatTheirKindLacks)
{
    auto given = weekly("2027-02-28 10:10", 2, Mon);
    given.Type.Words[2] = given.Type.Words[3] = 7;
    given.Reserved1 = given.Reserved2 = given.wRandomMinutesInterval = 9;
    const auto stored = StoredTrigger(given);
    EXPECT_EQ(stored.Type.Words, (std::array<std::uint16_t, 4>{2, Mon, 0, 0}));
    EXPECT_EQ(stored.Reserved1 + stored.Reserved2 + stored.wRandomMinutesInterval, 0);
    TASK_TRIGGER target;
    target.cbTriggerSize = 3;
    target.Type.Words = {5, 5, 5, 5};
    HandOutTrigger(stored, target);
    EXPECT_EQ(target.Type.Words, (std::array<std::uint16_t, 4>{2, Mon, 5, 5}));
    EXPECT_EQ(target.cbTriggerSize, 48);
    EXPECT_EQ(target.wStartMinute, 10);
}

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

TEST(Utf16, textsAndWhatIsNone)
{
    const std::pair<const char *, std::u16string> valid[] = {{"", u""},
                                                             {"é€", u"\xE9\x20AC"},
                                                             {"\xF0\x9F\x92\x8E", u"\xD83D\xDC8E"},
                                                             {"\xF4\x8F\xBF\xBF", u"\xDBFF\xDFFF"}};
    for (const auto &[utf8, utf16] : valid) {
        EXPECT_EQ(Utf16FromUtf8(utf8), utf16);
        EXPECT_EQ(Utf8FromUtf16(utf16), utf8);
    }
    EXPECT_EQ(Utf8FromUtf16(u"a\xD83D"
                            u"b\xDC8E"),
              "a\xEF\xBF\xBD"
              "b\xEF\xBF\xBD");
    for (const auto *bad :
         {"\x80", "\xC0\x80", "\xE0\x80\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xFF", "\xE2\x82"})
        EXPECT_EQ(Utf16FromUtf8(bad).front(), u'\xFFFD') << bad;
    EXPECT_EQ(Utf16FromUtf8("\xE2\x82"
                            "a"),
              u"\xFFFD\xFFFD"
              u"a");
}

TEST(TaskAllocator, freesWhatIsLeft)
{
    TTaskAllocator allocator;
    auto *const kept = AllocText(allocator, u"gardé");
    EXPECT_EQ(TakeText(allocator, AllocText(allocator, u"rendu")), u"rendu");
    EXPECT_EQ(TakeText(allocator, nullptr), u"");
    EXPECT_EQ(allocator.BlockCount(), 1U);
    EXPECT_EQ(std::u16string(kept), u"gardé"); // the sanitizers see whether it goes with the allocator
    int foreign = 0;
    allocator.Free(&foreign);
    allocator.Free(nullptr);
}
