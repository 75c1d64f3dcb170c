#include <Zelmar01/tasks/service/TriggerText.h>

#include <Zelmar01/core/Translation.h>
#include <Zelmar01/tasks/service/Calendar.h>
#include <Zelmar01/tasks/service/TriggerTimes.h>
#include <Zelmar01/tasks/service/Utf16.h>

#include <array>
#include <cstdint>
#include <cstdio>

namespace Zelmar01 {

namespace {

constexpr std::array<const char *, 7> weekdayNames{
    Translatable("Zelmar01", "dim"), Translatable("Zelmar01", "lun"), Translatable("Zelmar01", "mar"),
    Translatable("Zelmar01", "mer"), Translatable("Zelmar01", "jeu"), Translatable("Zelmar01", "ven"),
    Translatable("Zelmar01", "sam")};
constexpr std::array<const char *, 12> monthNames{
    Translatable("Zelmar01", "janv"), Translatable("Zelmar01", "févr"), Translatable("Zelmar01", "mars"),
    Translatable("Zelmar01", "avr"),  Translatable("Zelmar01", "mai"),  Translatable("Zelmar01", "juin"),
    Translatable("Zelmar01", "juil"), Translatable("Zelmar01", "août"), Translatable("Zelmar01", "sept"),
    Translatable("Zelmar01", "oct"),  Translatable("Zelmar01", "nov"),  Translatable("Zelmar01", "déc")};
constexpr std::array<const char *, 5> weekNames{
    Translatable("Zelmar01", "premier"), Translatable("Zelmar01", "deuxième"),
    Translatable("Zelmar01", "troisième"), Translatable("Zelmar01", "quatrième"),
    Translatable("Zelmar01", "dernier")};

std::string formatted(const char *format, unsigned a, unsigned b, unsigned c = 0)
{
    char text[40];
    std::snprintf(text, sizeof text, format, a, b, c);
    return text;
}

std::string startTime(const TASK_TRIGGER &trigger)
{
    return formatted("%02u:%02u", trigger.wStartHour, trigger.wStartMinute);
}

std::string beginDate(const TASK_TRIGGER &trigger)
{
    return formatted("%02u/%02u/%04u", trigger.wBeginDay, trigger.wBeginMonth, trigger.wBeginYear);
}

// The names, or numbers from 1, of the bits that are set.
template<class TName>
std::string listed(std::uint32_t bits, unsigned count, TName name)
{
    std::string list;
    for (unsigned i = 0; i < count; ++i)
        if (bits >> i & 1)
            list += (list.empty() ? "" : ", ") + name(i);
    return list;
}

std::string weekdays(std::uint32_t bits)
{
    return listed(bits, 7, [](unsigned i) { return Translate("Zelmar01", weekdayNames[i]); });
}

std::string ofMonths(std::uint32_t bits)
{
    if ((bits & TriggerMask::AllMonths) == TriggerMask::AllMonths)
        return Translate("Zelmar01", "de chaque mois");
    const auto names = listed(bits, 12, [](unsigned i) { return Translate("Zelmar01", monthNames[i]); });
    return Filled(names.starts_with('a') || names.starts_with('o') ? Translate("Zelmar01", "d'%1")
                                                                   : Translate("Zelmar01", "de %1"),
                  {names});
}

std::string monthDays(std::uint32_t bits)
{
    return listed(bits, 31,
                  [](unsigned i) { return i == 0 ? Translate("Zelmar01", "1er") : std::to_string(i + 1); });
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

    std::string Each() const
    {
        if (Count == 1)
            return Hours ? Translate("Zelmar01", "Toutes les heures")
                         : Translate("Zelmar01", "Toutes les minutes");
        return Filled(Hours ? Translate("Zelmar01", "Toutes les %1 heures")
                            : Translate("Zelmar01", "Toutes les %1 minutes"),
                      {std::to_string(Count)});
    }

    std::string Words() const
    {
        if (Count > 1)
            return Filled(Hours ? Translate("Zelmar01", "%1 heures") : Translate("Zelmar01", "%1 minutes"),
                          {std::to_string(Count)});
        return Filled(Hours ? Translate("Zelmar01", "%1 heure") : Translate("Zelmar01", "%1 minute"),
                      {std::to_string(Count)});
    }
};

// At what time of its days, and how it is repeated.
std::string timeWords(const TASK_TRIGGER &trigger)
{
    if (trigger.MinutesInterval == 0)
        return Filled(Translate("Zelmar01", "À %1"), {startTime(trigger)});
    return Filled(Translate("Zelmar01", "%1 à partir de %2 pendant %3"),
                  {TLength(trigger.MinutesInterval).Each(), startTime(trigger),
                   TLength(trigger.MinutesDuration).Words()});
}

// On which days.
std::string dayWords(const TASK_TRIGGER &trigger)
{
    const auto &type = trigger.Type;
    switch (trigger.TriggerType) {
    case TASK_TIME_TRIGGER_ONCE:
        return Filled(Translate("Zelmar01", "le %1"), {beginDate(trigger)});
    case TASK_TIME_TRIGGER_DAILY:
        if (type.Daily.DaysInterval == 1)
            return Translate("Zelmar01", "tous les jours");
        return Filled(Translate("Zelmar01", "tous les %1 jours"), {std::to_string(type.Daily.DaysInterval)});
    case TASK_TIME_TRIGGER_WEEKLY:
        return Filled(type.Weekly.WeeksInterval == 1
                          ? Translate("Zelmar01", "chaque %1 de chaque semaine")
                          : Translate("Zelmar01", "chaque %1 toutes les %2 semaines"),
                      {weekdays(type.Weekly.rgfDaysOfTheWeek), std::to_string(type.Weekly.WeeksInterval)});
    case TASK_TIME_TRIGGER_MONTHLYDATE:
        return Filled(Translate("Zelmar01", "le %1 %2"),
                      {monthDays(type.MonthlyDate.rgfDays), ofMonths(type.MonthlyDate.rgfMonths)});
    case TASK_TIME_TRIGGER_MONTHLYDOW:
        return Filled(Translate("Zelmar01", "le %1 %2 %3"),
                      {Translate("Zelmar01", weekNames[type.MonthlyDOW.wWhichWeek - 1]),
                       weekdays(type.MonthlyDOW.rgfDaysOfTheWeek), ofMonths(type.MonthlyDOW.rgfMonths)});
    default:
        return {};
    }
}

std::string dateWords(const TASK_TRIGGER &trigger)
{
    if (trigger.TriggerType == TASK_TIME_TRIGGER_ONCE)
        return {};
    auto words = Filled(Translate("Zelmar01", ", à partir du %1"), {beginDate(trigger)});
    if (trigger.rgFlags & TriggerFlag::HasEndDate)
        words += Filled(Translate("Zelmar01", " et jusqu'au %1"),
                        {formatted("%02u/%02u/%04u", trigger.wEndDay, trigger.wEndMonth, trigger.wEndYear)});
    return words;
}

// Why a trigger has no start at all.
std::string neverWords(const TASK_TRIGGER &trigger)
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
            return Translate("Zelmar01", "Jamais : la semaine du mois n'existe pas");
        break;
    default:
        return Translate("Zelmar01", "Jamais : ce type de déclencheur est inconnu");
    }
    if (!interval)
        return Translate("Zelmar01", "Jamais : l'intervalle est nul");
    if (!day)
        return Translate("Zelmar01", "Jamais : aucun jour n'est choisi");
    if (!month)
        return Translate("Zelmar01", "Jamais : aucun mois n'est choisi");
    if (!ValidDay(trigger.wBeginYear, trigger.wBeginMonth, trigger.wBeginDay) || trigger.wStartHour > 23 ||
        trigger.wStartMinute > 59)
        return Translate("Zelmar01", "Jamais : la date ou l'heure de début n'existe pas");
    if (trigger.rgFlags & TriggerFlag::HasEndDate &&
        !ValidDay(trigger.wEndYear, trigger.wEndMonth, trigger.wEndDay))
        return Translate("Zelmar01", "Jamais : la date de fin n'existe pas");
    return Translate("Zelmar01", "Jamais : aucun des mois choisis n'a ce jour");
}

std::string words(const TASK_TRIGGER &trigger)
{
    switch (trigger.TriggerType) {
    case TASK_EVENT_TRIGGER_ON_IDLE:
        return Translate("Zelmar01", "Quand l'ordinateur est inactif");
    case TASK_EVENT_TRIGGER_AT_SYSTEMSTART:
        return Translate("Zelmar01", "Au démarrage du système");
    case TASK_EVENT_TRIGGER_AT_LOGON:
        return Translate("Zelmar01", "À l'ouverture de session");
    default:
        break;
    }
    if (!TTriggerTimes(trigger).CanStart())
        return neverWords(trigger);
    return timeWords(trigger) + " " + dayWords(trigger) + dateWords(trigger);
}

} // namespace

std::u16string TriggerText(const TASK_TRIGGER &trigger)
{
    return Utf16FromUtf8(words(trigger));
}

} // namespace Zelmar01
