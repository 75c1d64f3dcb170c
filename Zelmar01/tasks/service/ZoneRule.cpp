#include <Zelmar01/tasks/service/ZoneRule.h>

#include <algorithm>
#include <cctype>

namespace Zelmar01 {

namespace {

// Reads the notation from left to right. A part that is not as it must be makes the whole one invalid.
class TRuleReader
{
public:
    explicit TRuleReader(std::string_view text) : m_text(text) {}

    bool AtEnd() const { return m_text.empty(); }

    bool Skip(char c)
    {
        const bool there = m_text.starts_with(c);
        if (there)
            m_text.remove_prefix(1);
        return there;
    }

    bool ReadName()
    {
        const bool bracketed = Skip('<');
        std::size_t length = 0;
        while (length < m_text.size() && (bracketed ? m_text[length] != '>' : isLetter(m_text[length])))
            ++length;
        m_text.remove_prefix(length);
        return length >= 3 && (!bracketed || Skip('>'));
    }

    bool ReadNumber(unsigned &value, unsigned least, unsigned most)
    {
        std::size_t digits = 0;
        for (value = 0; digits < std::min<std::size_t>(m_text.size(), 3) && isDigit(m_text[digits]); ++digits)
            value = value * 10 + static_cast<unsigned>(m_text[digits] - '0');
        m_text.remove_prefix(digits);
        return digits > 0 && value >= least && value <= most;
    }

    // Hours, and perhaps minutes and seconds.
    bool ReadTime(std::int32_t &seconds, unsigned mostHours)
    {
        const bool negative = Skip('-');
        if (!negative)
            Skip('+');
        unsigned hours = 0, minutes = 0, rest = 0;
        if (!ReadNumber(hours, 0, mostHours))
            return false;
        if (Skip(':') && (!ReadNumber(minutes, 0, 59) || (Skip(':') && !ReadNumber(rest, 0, 59))))
            return false;
        seconds = static_cast<std::int32_t>((hours * 60 + minutes) * 60 + rest);
        if (negative)
            seconds = -seconds;
        return true;
    }

    // How far UTC is ahead: the sign is the reverse of an offset's.
    bool ReadOffset(std::int32_t &offset)
    {
        if (!ReadTime(offset, 24))
            return false;
        offset = -offset;
        return true;
    }

    bool ReadDay(TZoneDay &day)
    {
        bool good = false;
        if (Skip('M')) {
            day.Kind = TZoneDay::MonthWeekDay;
            good = ReadNumber(day.Month, 1, 12) && Skip('.') && ReadNumber(day.Week, 1, 5) && Skip('.') &&
                   ReadNumber(day.Weekday, 0, 6);
        } else if (Skip('J')) {
            day.Kind = TZoneDay::DayWithoutLeap;
            good = ReadNumber(day.Day, 1, 365);
        } else {
            day.Kind = TZoneDay::DayFromZero;
            good = ReadNumber(day.Day, 0, 365);
        }
        return good && (!Skip('/') || ReadTime(day.Seconds, 167));
    }

private:
    static bool isLetter(char c) { return std::isalpha(static_cast<unsigned char>(c)) != 0; }
    static bool isDigit(char c) { return c >= '0' && c <= '9'; }

    std::string_view m_text;
};

} // namespace

TSeconds TZoneDay::Of(int year) const
{
    TDay day = 0;
    switch (Kind) {
    case MonthWeekDay: {
        const auto first = DayFromCivil({year, Month, 1});
        auto inMonth = (7 + Weekday - WeekdayOf(first)) % 7 + (Week - 1) * 7;
        if (inMonth >= DaysInMonth(year, Month))
            inMonth -= 7;
        day = first + static_cast<TDay>(inMonth);
        break;
    }
    case DayWithoutLeap:
        day = DayFromCivil({year, 1, 1}) + static_cast<TDay>(Day) - 1;
        if (Day >= 60 && DaysInMonth(year, 2) == 29)
            ++day;
        break;
    case DayFromZero:
        day = DayFromCivil({year, 1, 1}) + static_cast<TDay>(Day);
        break;
    }
    return day * SecondsADay + Seconds;
}

void TZoneRule::AddChanges(int year, std::vector<TOffsetChange> &changes) const
{
    if (!HasSummer)
        return;
    const TOffsetChange start{SummerStart.Of(year) - StandardOffset, SummerOffset};
    const TOffsetChange end{SummerEnd.Of(year) - SummerOffset, StandardOffset};
    // South of the equator summer ends first.
    changes.push_back(start.Utc <= end.Utc ? start : end);
    changes.push_back(start.Utc <= end.Utc ? end : start);
}

std::optional<TZoneRule> ParseZoneRule(std::string_view text)
{
    TRuleReader reader(text);
    TZoneRule rule;
    if (!reader.ReadName() || !reader.ReadOffset(rule.StandardOffset))
        return std::nullopt;
    if (reader.AtEnd())
        return rule;
    rule.HasSummer = true;
    rule.SummerOffset = rule.StandardOffset + 3600;
    if (!reader.ReadName())
        return std::nullopt;
    bool hasDays = reader.Skip(',');
    if (!hasDays && !reader.AtEnd()) {
        if (!reader.ReadOffset(rule.SummerOffset))
            return std::nullopt;
        hasDays = reader.Skip(',');
    }
    if (!hasDays && reader.AtEnd()) {
        // Without days of their own such zones have those of the United States.
        rule.SummerStart = {TZoneDay::MonthWeekDay, 3, 2, 0, 0, 7200};
        rule.SummerEnd = {TZoneDay::MonthWeekDay, 11, 1, 0, 0, 7200};
        return rule;
    }
    if (!hasDays || !reader.ReadDay(rule.SummerStart) || !reader.Skip(',') ||
        !reader.ReadDay(rule.SummerEnd) || !reader.AtEnd())
        return std::nullopt;
    return rule;
}

} // namespace Zelmar01
