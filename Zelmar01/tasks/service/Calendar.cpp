#include <Zelmar01/tasks/service/Calendar.h>

namespace Zelmar01 {

std::optional<TDay> ValidDay(unsigned year, unsigned month, unsigned day)
{
    if (year < unsigned{FirstYear} || year > unsigned{LastYear})
        return std::nullopt;
    const auto wanted = static_cast<int>(year);
    if (month < 1 || month > 12 || day < 1 || day > DaysInMonth(wanted, month))
        return std::nullopt;
    return DayFromCivil({wanted, month, day});
}

std::optional<TSeconds> SecondsFromSystemTime(const SYSTEMTIME &time)
{
    const auto date = ValidDay(time.wYear, time.wMonth, time.wDay);
    if (!date || time.wHour > 23 || time.wMinute > 59 || time.wSecond > 59 || time.wMilliseconds > 999)
        return std::nullopt;
    return *date * SecondsADay + time.wHour * SecondsAnHour + time.wMinute * SecondsAMinute + time.wSecond;
}

SYSTEMTIME SystemTimeFromSeconds(TSeconds seconds)
{
    const auto midnight = std::chrono::floor<std::chrono::days>(std::chrono::seconds{seconds});
    const auto day = static_cast<TDay>(midnight.count());
    const auto rest = static_cast<unsigned>((std::chrono::seconds{seconds} - midnight).count());
    const auto civil = CivilFromDay(day);
    const auto word = [](auto value) { return static_cast<std::uint16_t>(value); };
    return {word(civil.Year),  word(civil.Month),    word(WeekdayOf(day)), word(civil.Day),
            word(rest / 3600), word(rest / 60 % 60), word(rest % 60),      0};
}

} // namespace Zelmar01
