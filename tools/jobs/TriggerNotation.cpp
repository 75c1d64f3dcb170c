#include "TriggerNotation.h"

#include "Options.h"

#include <Zelmar01/tasks/service/TriggerTimes.h>
#include <Zelmar01/tasks/service/Triggers.h>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace Zelmar01 {

namespace {

constexpr std::array<const char *, 7> days{"sun", "mon", "tue", "wed", "thu", "fri", "sat"};
constexpr std::array<const char *, 5> weeks{"first", "second", "third", "fourth", "last"};

// Two digits or more.
QString padded(unsigned number)
{
    return QString::number(number).rightJustified(2, u'0');
}

QString isoDate(unsigned year, unsigned month, unsigned day)
{
    return QString::number(year) + u'-' + padded(month) + u'-' + padded(day);
}

QString namesOf(const std::array<const char *, 7> &names, unsigned bits)
{
    QStringList set;
    for (std::size_t i = 0; i < names.size(); ++i)
        if (bits >> i & 1)
            set << QString::fromLatin1(names[i]);
    return set.join(u',');
}

// The places of the bits that are set, counted from 1.
QString numbersOf(unsigned bits, unsigned count)
{
    QStringList set;
    for (unsigned i = 0; i < count; ++i)
        if (bits >> i & 1)
            set << QString::number(i + 1);
    return set.join(u',');
}

class TNotationReader
{
public:
    TNotationReader(const QString &text, const QDateTime &now) : m_text(text)
    {
        setBegin(now.date());
        m_trigger.wStartHour = static_cast<std::uint16_t>(now.time().hour());
        m_trigger.wStartMinute = static_cast<std::uint16_t>(now.time().minute());
    }

    TASK_TRIGGER Read()
    {
        auto words = m_text.split(u' ', Qt::SkipEmptyParts);
        if (words.isEmpty())
            refuse(u"déclencheur vide"_s);
        m_kind = words.takeFirst();
        readKind(words);
        for (const auto &word : words)
            readSetting(word.section(u'=', 0, 0), word.contains(u'=') ? word.section(u'=', 1) : QString());
        setDetails();
        if (CheckTrigger(&m_trigger) != TaskResult::Ok)
            refuse(u"la durée de répétition (for=) doit dépasser l'intervalle (repeat=)"_s);
        return m_trigger;
    }

private:
    [[noreturn]] void refuse(const QString &why) const
    {
        throw EUsage(u"Déclencheur « %1 » : %2."_s.arg(m_text, why).toStdString());
    }

    void setBegin(QDate date)
    {
        m_trigger.wBeginYear = static_cast<std::uint16_t>(date.year());
        m_trigger.wBeginMonth = static_cast<std::uint16_t>(date.month());
        m_trigger.wBeginDay = static_cast<std::uint16_t>(date.day());
    }

    void setTime(const QString &text)
    {
        const auto time = QTime::fromString(text, u"HH:mm"_s);
        if (!time.isValid())
            refuse(u"heure « %1 » incorrecte, attendue comme 04:30"_s.arg(text));
        m_trigger.wStartHour = static_cast<std::uint16_t>(time.hour());
        m_trigger.wStartMinute = static_cast<std::uint16_t>(time.minute());
    }

    QDate dateOf(const QString &text) const
    {
        const auto date = QDate::fromString(text, Qt::ISODate);
        if (!date.isValid() || date.year() < 1601 || date.year() > 30827)
            refuse(u"date « %1 » incorrecte, attendue comme 2027-01-31"_s.arg(text));
        return date;
    }

    void readKind(QStringList &words)
    {
        const auto next = [&] { return words.isEmpty() ? QString() : words.takeFirst(); };
        if (m_kind == "once"_L1) {
            m_trigger.TriggerType = TASK_TIME_TRIGGER_ONCE;
            const auto moment = next();
            setBegin(dateOf(moment.section(u'T', 0, 0)));
            setTime(moment.section(u'T', 1));
        } else if (m_kind == "idle"_L1 || m_kind == "startup"_L1 || m_kind == "logon"_L1) {
            m_trigger.TriggerType = m_kind == "idle"_L1      ? TASK_EVENT_TRIGGER_ON_IDLE
                                    : m_kind == "startup"_L1 ? TASK_EVENT_TRIGGER_AT_SYSTEMSTART
                                                             : TASK_EVENT_TRIGGER_AT_LOGON;
        } else if (m_kind == "daily"_L1 || m_kind == "weekly"_L1 || m_kind == "monthly"_L1) {
            setTime(next());
        } else {
            refuse(
                u"genre « %1 » inconnu : once, daily, weekly, monthly, idle, startup ou logon"_s.arg(m_kind));
        }
    }

    void readSetting(const QString &key, const QString &value)
    {
        if (key == "from"_L1) {
            setBegin(dateOf(value));
        } else if (key == "to"_L1) {
            const auto date = dateOf(value);
            m_trigger.wEndYear = static_cast<std::uint16_t>(date.year());
            m_trigger.wEndMonth = static_cast<std::uint16_t>(date.month());
            m_trigger.wEndDay = static_cast<std::uint16_t>(date.day());
            m_trigger.rgFlags |= TriggerFlag::HasEndDate;
        } else if (key == "repeat"_L1) {
            m_trigger.MinutesInterval = static_cast<std::uint32_t>(numberOf(value, 1, 1 << 20));
        } else if (key == "for"_L1) {
            m_trigger.MinutesDuration = static_cast<std::uint32_t>(numberOf(value, 1, 1 << 20));
        } else if (key == "kill"_L1 && value.isNull()) {
            m_trigger.rgFlags |= TriggerFlag::KillAtDurationEnd;
        } else if (key == "off"_L1 && value.isNull()) {
            m_trigger.rgFlags |= TriggerFlag::Disabled;
        } else if (key == "every"_L1 && (m_kind == "daily"_L1 || m_kind == "weekly"_L1)) {
            m_every = static_cast<std::uint16_t>(numberOf(value, 1, 65535));
        } else if (key == "days"_L1 && (m_kind == "weekly"_L1 || m_kind == "monthly"_L1)) {
            m_days = value.split(u',');
        } else if (key == "week"_L1 && m_kind == "monthly"_L1) {
            m_week = static_cast<std::uint16_t>(placeIn(weeks, value) + 1);
        } else if (key == "months"_L1 && m_kind == "monthly"_L1) {
            m_months = 0;
            for (const auto &month : value.split(u','))
                m_months |= static_cast<std::uint16_t>(1 << (numberOf(month, 1, 12) - 1));
        } else {
            refuse(u"réglage « %1 » inconnu pour ce genre"_s.arg(key));
        }
    }

    void setDetails()
    {
        auto &type = m_trigger.Type;
        if (m_kind == "daily"_L1) {
            m_trigger.TriggerType = TASK_TIME_TRIGGER_DAILY;
            type.Daily = {m_every};
        } else if (m_kind == "weekly"_L1) {
            m_trigger.TriggerType = TASK_TIME_TRIGGER_WEEKLY;
            type.Weekly = {m_every, weekdays()};
        } else if (m_kind == "monthly"_L1 && m_week != 0) {
            m_trigger.TriggerType = TASK_TIME_TRIGGER_MONTHLYDOW;
            type.MonthlyDOW = {m_week, weekdays(), m_months};
        } else if (m_kind == "monthly"_L1) {
            m_trigger.TriggerType = TASK_TIME_TRIGGER_MONTHLYDATE;
            std::uint32_t bits = 0;
            for (const auto &day : m_days)
                bits |= 1U << (numberOf(day, 1, 31) - 1);
            if (bits == 0)
                refuse(u"days= manque"_s);
            type.MonthlyDate = {bits, m_months};
        }
    }

    std::uint16_t weekdays() const
    {
        if (m_days.isEmpty())
            refuse(u"days= manque"_s);
        unsigned bits = 0;
        for (const auto &day : m_days)
            bits |= 1U << placeIn(days, day);
        return static_cast<std::uint16_t>(bits);
    }

    template<std::size_t Size>
    unsigned placeIn(const std::array<const char *, Size> &names, const QString &name) const
    {
        const auto found = std::ranges::find_if(
            names, [&](const char *known) { return name.compare(QLatin1StringView(known)) == 0; });
        if (found == names.end())
            refuse(u"« %1 » inconnu"_s.arg(name));
        return static_cast<unsigned>(found - names.begin());
    }

    int numberOf(const QString &text, int least, int most) const
    {
        bool isNumber = false;
        const int number = text.toInt(&isNumber);
        if (!isNumber || number < least || number > most)
            refuse(u"« %1 » n'est pas un nombre de %2 à %3"_s.arg(text).arg(least).arg(most));
        return number;
    }

    const QString m_text;
    QString m_kind;
    TASK_TRIGGER m_trigger;
    std::uint16_t m_every = 1, m_week = 0, m_months = TriggerMask::AllMonths;
    QStringList m_days;
};

} // namespace

TASK_TRIGGER ParseTrigger(const QString &text, const QDateTime &now)
{
    return TNotationReader(text, now).Read();
}

QString NotationOf(const TASK_TRIGGER &trigger)
{
    const auto &type = trigger.Type;
    const auto time = padded(trigger.wStartHour) + u':' + padded(trigger.wStartMinute);
    const auto begin = isoDate(trigger.wBeginYear, trigger.wBeginMonth, trigger.wBeginDay);
    if (!IsEventTrigger(trigger) && !TTriggerTimes(trigger).CanStart())
        return {};
    QStringList words;
    switch (trigger.TriggerType) {
    case TASK_TIME_TRIGGER_ONCE:
        words << u"once"_s << begin + u'T' + time;
        break;
    case TASK_TIME_TRIGGER_DAILY:
        words << u"daily"_s << time << u"every=%1"_s.arg(type.Daily.DaysInterval);
        break;
    case TASK_TIME_TRIGGER_WEEKLY:
        words << u"weekly"_s << time << u"days="_s + namesOf(days, type.Weekly.rgfDaysOfTheWeek)
              << u"every=%1"_s.arg(type.Weekly.WeeksInterval);
        break;
    case TASK_TIME_TRIGGER_MONTHLYDATE:
        words << u"monthly"_s << time << u"days="_s + numbersOf(type.MonthlyDate.rgfDays, 31)
              << u"months="_s + numbersOf(type.MonthlyDate.rgfMonths, 12);
        break;
    case TASK_TIME_TRIGGER_MONTHLYDOW:
        words << u"monthly"_s << time
              << u"week="_s + QLatin1StringView(weeks[type.MonthlyDOW.wWhichWeek - 1U])
              << u"days="_s + namesOf(days, type.MonthlyDOW.rgfDaysOfTheWeek)
              << u"months="_s + numbersOf(type.MonthlyDOW.rgfMonths, 12);
        break;
    case TASK_EVENT_TRIGGER_ON_IDLE:
        words << u"idle"_s;
        break;
    case TASK_EVENT_TRIGGER_AT_SYSTEMSTART:
        words << u"startup"_s;
        break;
    case TASK_EVENT_TRIGGER_AT_LOGON:
        words << u"logon"_s;
        break;
    }
    if (trigger.TriggerType != TASK_TIME_TRIGGER_ONCE)
        words << u"from="_s + begin;
    if (trigger.rgFlags & TriggerFlag::HasEndDate)
        words << u"to="_s + isoDate(trigger.wEndYear, trigger.wEndMonth, trigger.wEndDay);
    if (trigger.MinutesInterval != 0)
        words << u"repeat=%1"_s.arg(trigger.MinutesInterval);
    if (trigger.MinutesDuration != 0)
        words << u"for=%1"_s.arg(trigger.MinutesDuration);
    if (trigger.rgFlags & TriggerFlag::KillAtDurationEnd)
        words << u"kill"_s;
    if (trigger.rgFlags & TriggerFlag::Disabled)
        words << u"off"_s;
    return words.join(u' ');
}

QString TriggerNotationHelp()
{
    return uR"(Déclencheurs (--trigger, peut être répétée) ; les heures sont locales :
  once 2027-01-31T04:30          une seule fois
  daily 04:30 every=2            tous les 2 jours
  weekly 04:30 days=mon,fri      le lundi et le vendredi ; every=2 : une semaine sur 2
  monthly 04:30 days=1,15        le 1er et le 15 ; months=1,7 : en janvier et juillet
  monthly 04:30 week=last days=fri   le dernier vendredi (first, second, third, fourth)
  startup, idle, logon           au démarrage, à l'inactivité, à l'ouverture de session
Réglages de tous :
  from=2027-01-01 to=2027-12-31  premier et dernier jour
  repeat=15 for=480              répété toutes les 15 minutes pendant 480 minutes
  kill                           la tâche est arrêtée à la fin de cette durée
  off                            désactivé
)"_s;
}

} // namespace Zelmar01
