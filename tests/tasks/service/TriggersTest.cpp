#include "Samples.h"

#include <Zelmar01/tasks/service/TaskAllocator.h>
#include <Zelmar01/tasks/service/TriggerText.h>
#include <Zelmar01/tasks/service/Triggers.h>
#include <Zelmar01/tasks/service/Utf16.h>

#include <gtest/gtest.h>

#include <string>

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
    {byDate("2001-12-14 15:52", bit(3), 0b1000), "À 15:52 le 3 d'avr, à partir du 14/12/2001"},
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

} // namespace

TEST(Triggers, theirTexts)
{
    for (const auto &row : texts)
        EXPECT_EQ(Utf8FromUtf16(TriggerText(row.Trigger)), row.Text);
}

// The rest of what a trigger may be is among the cases that hold for every service.
TEST(Triggers, haveLimitsThatNoOtherServiceTells)
{
    auto early = daily("1601-01-01 00:00"), unknown = daily("2027-02-28 23:59");
    EXPECT_EQ(CheckTrigger(&early), TaskResult::Ok);
    early.wBeginYear = 1600;
    EXPECT_EQ(CheckTrigger(&early), TaskResult::InvalidArgument);
    unknown.TriggerType = static_cast<TASK_TRIGGER_TYPE>(8);
    EXPECT_EQ(CheckTrigger(&unknown), TaskResult::InvalidArgument);
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
    allocator.Free(nullptr);
}
