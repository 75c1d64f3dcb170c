#include <Zelmar01/tasks/service/TriggerText.h>

#include <Zelmar01/tasks/service/Calendar.h>
#include <Zelmar01/tasks/service/TriggerTimes.h>
#include <Zelmar01/tasks/service/Utf16.h>

#include <array>
#include <cstdint>
#include <cstdio>

namespace Zelmar01 {

namespace {

const std::array<const char16_t *, 7> weekdayNames{u"dim", u"lun", u"mar", u"mer", u"jeu", u"ven", u"sam"};
const std::array<const char16_t *, 12> monthNames{u"janv", u"févr", u"mars", u"avr", u"mai", u"juin",
                                                  u"juil", u"août", u"sept", u"oct", u"nov", u"déc"};
const std::array<const char16_t *, 5> weekNames{u"premier", u"deuxième", u"troisième", u"quatrième",
                                                u"dernier"};

std::u16string number(unsigned value)
{
    return Utf16FromUtf8(std::to_string(value));
}

std::u16string formatted(const char *format, unsigned a, unsigned b, unsigned c = 0)
{
    char text[40];
    std::snprintf(text, sizeof text, format, a, b, c);
    return Utf16FromUtf8(text);
}

std::u16string startTime(const TASK_TRIGGER &trigger)
{
    return formatted("%02u:%02u", trigger.wStartHour, trigger.wStartMinute);
}

std::u16string beginDate(const TASK_TRIGGER &trigger)
{
    return formatted("%02u/%02u/%04u", trigger.wBeginDay, trigger.wBeginMonth, trigger.wBeginYear);
}

// The names, or numbers from 1, of the bits that are set.
template<class TName>
std::u16string listed(std::uint32_t bits, unsigned count, TName name)
{
    std::u16string list;
    for (unsigned i = 0; i < count; ++i)
        if (bits >> i & 1)
            list += (list.empty() ? u"" : u", ") + std::u16string(name(i));
    return list;
}

std::u16string weekdays(std::uint32_t bits)
{
    return listed(bits, 7, [](unsigned i) { return weekdayNames[i]; });
}

std::u16string ofMonths(std::uint32_t bits)
{
    if ((bits & TriggerMask::AllMonths) == TriggerMask::AllMonths)
        return u"de chaque mois";
    const auto names = listed(bits, 12, [](unsigned i) { return monthNames[i]; });
    return (names.starts_with(u'a') || names.starts_with(u'o') ? u"d'" : u"de ") + names;
}

std::u16string monthDays(std::uint32_t bits)
{
    return listed(bits, 31, [](unsigned i) { return i == 0 ? u"1er" : number(i + 1); });
}

// A length of time in whole hours where it is one.
struct TLength
{
    unsigned Count;
    bool Hours;

    explicit TLength(std::uint32_t minutes)
        : Count(minutes % 60 == 0 ? minutes / 60 : minutes), Hours(minutes % 60 == 0)
    {
    }

    std::u16string Unit() const
    {
        return std::u16string(Hours ? u"heure" : u"minute") + (Count > 1 ? u"s" : u"");
    }
};

// At what time of its days, and how it is repeated.
std::u16string timeWords(const TASK_TRIGGER &trigger)
{
    if (trigger.MinutesInterval == 0)
        return u"À " + startTime(trigger);
    const TLength interval(trigger.MinutesInterval), duration(trigger.MinutesDuration);
    const auto each = interval.Count == 1 ? u"Toutes les " + interval.Unit() + u"s"
                                          : u"Toutes les " + number(interval.Count) + u" " + interval.Unit();
    return each + u" à partir de " + startTime(trigger) + u" pendant " + number(duration.Count) + u" " +
           duration.Unit();
}

// On which days.
std::u16string dayWords(const TASK_TRIGGER &trigger)
{
    const auto &type = trigger.Type;
    switch (trigger.TriggerType) {
    case TASK_TIME_TRIGGER_ONCE:
        return u"le " + beginDate(trigger);
    case TASK_TIME_TRIGGER_DAILY:
        if (type.Daily.DaysInterval == 1)
            return u"tous les jours";
        return u"tous les " + number(type.Daily.DaysInterval) + u" jours";
    case TASK_TIME_TRIGGER_WEEKLY:
        return u"chaque " + weekdays(type.Weekly.rgfDaysOfTheWeek) +
               (type.Weekly.WeeksInterval == 1
                    ? u" de chaque semaine"
                    : u" toutes les " + number(type.Weekly.WeeksInterval) + u" semaines");
    case TASK_TIME_TRIGGER_MONTHLYDATE:
        return u"le " + monthDays(type.MonthlyDate.rgfDays) + u" " + ofMonths(type.MonthlyDate.rgfMonths);
    case TASK_TIME_TRIGGER_MONTHLYDOW:
        return std::u16string(u"le ") + weekNames[type.MonthlyDOW.wWhichWeek - 1] + u" " +
               weekdays(type.MonthlyDOW.rgfDaysOfTheWeek) + u" " + ofMonths(type.MonthlyDOW.rgfMonths);
    default:
        return {};
    }
}

std::u16string dateWords(const TASK_TRIGGER &trigger)
{
    if (trigger.TriggerType == TASK_TIME_TRIGGER_ONCE)
        return {};
    auto words = u", à partir du " + beginDate(trigger);
    if (trigger.rgFlags & TriggerFlag::HasEndDate)
        words += u" et jusqu'au " +
                 formatted("%02u/%02u/%04u", trigger.wEndDay, trigger.wEndMonth, trigger.wEndYear);
    return words;
}

// Why a trigger has no start at all.
std::u16string neverWords(const TASK_TRIGGER &trigger)
{
    const auto &type = trigger.Type;
    bool day = true, month = true, interval = true;
    switch (trigger.TriggerType) {
    case TASK_TIME_TRIGGER_ONCE:
        break;
    case TASK_TIME_TRIGGER_DAILY:
        interval = type.Daily.DaysInterval != 0;
        break;
    case TASK_TIME_TRIGGER_WEEKLY:
        interval = type.Weekly.WeeksInterval != 0;
        day = (type.Weekly.rgfDaysOfTheWeek & TriggerMask::AllWeekdays) != 0;
        break;
    case TASK_TIME_TRIGGER_MONTHLYDATE:
        day = (type.MonthlyDate.rgfDays & TriggerMask::AllMonthDays) != 0;
        month = (type.MonthlyDate.rgfMonths & TriggerMask::AllMonths) != 0;
        break;
    case TASK_TIME_TRIGGER_MONTHLYDOW:
        day = (type.MonthlyDOW.rgfDaysOfTheWeek & TriggerMask::AllWeekdays) != 0;
        month = (type.MonthlyDOW.rgfMonths & TriggerMask::AllMonths) != 0;
        if (type.MonthlyDOW.wWhichWeek < 1 || type.MonthlyDOW.wWhichWeek > weekNames.size())
            return u"Jamais : la semaine du mois n'existe pas";
        break;
    default:
        return u"Jamais : ce type de déclencheur est inconnu";
    }
    if (!interval)
        return u"Jamais : l'intervalle est nul";
    if (!day)
        return u"Jamais : aucun jour n'est choisi";
    if (!month)
        return u"Jamais : aucun mois n'est choisi";
    if (!ValidDay(trigger.wBeginYear, trigger.wBeginMonth, trigger.wBeginDay) || trigger.wStartHour > 23 ||
        trigger.wStartMinute > 59)
        return u"Jamais : la date ou l'heure de début n'existe pas";
    if (trigger.rgFlags & TriggerFlag::HasEndDate &&
        !ValidDay(trigger.wEndYear, trigger.wEndMonth, trigger.wEndDay))
        return u"Jamais : la date de fin n'existe pas";
    return u"Jamais : aucun des mois choisis n'a ce jour";
}

} // namespace

std::u16string TriggerText(const TASK_TRIGGER &trigger)
{
    switch (trigger.TriggerType) {
    case TASK_EVENT_TRIGGER_ON_IDLE:
        return u"Quand l'ordinateur est inactif";
    case TASK_EVENT_TRIGGER_AT_SYSTEMSTART:
        return u"Au démarrage du système";
    case TASK_EVENT_TRIGGER_AT_LOGON:
        return u"À l'ouverture de session";
    default:
        break;
    }
    if (!TTriggerTimes(trigger).CanStart())
        return neverWords(trigger);
    return timeWords(trigger) + u" " + dayWords(trigger) + dateWords(trigger);
}

} // namespace Zelmar01
