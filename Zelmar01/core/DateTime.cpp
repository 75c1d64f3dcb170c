#include <Zelmar01/core/DateTime.h>

#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/core/Messages.h>

#include <chrono>
#include <cmath>
#include <cstdint>

namespace Zelmar01 {

namespace {

using namespace std::chrono;

constexpr sys_days dayZero = year{1899} / December / 30;
constexpr std::int64_t millisecondsADay = 86'400'000;
constexpr double firstDay = (sys_days{year{1} / January / 1} - dayZero).count();
constexpr double lastDay = (sys_days{year{9999} / December / 31} - dayZero).count();

} // namespace

bool TryEncodeDate(int year, int month, int day, TDateTime &date) noexcept
{
    if (year < 1 || year > 9999 || month < 1 || month > 12 || day < 1 || day > 31)
        return false;
    const year_month_day civil{std::chrono::year{year}, std::chrono::month{static_cast<unsigned>(month)},
                               std::chrono::day{static_cast<unsigned>(day)}};
    if (!civil.ok())
        return false;
    date = static_cast<TDateTime>((sys_days{civil} - dayZero).count());
    return true;
}

bool TryEncodeTime(int hour, int minute, int second, int millisecond, TDateTime &time) noexcept
{
    if (hour < 0 || hour > 23 || minute < 0 || minute > 59 || second < 0 || second > 59 || millisecond < 0 ||
        millisecond > 999)
        return false;
    time = (((hour * 60 + minute) * 60 + second) * 1000 + millisecond) / double(millisecondsADay);
    return true;
}

TDateTime EncodeDate(int year, int month, int day)
{
    TDateTime date = 0;
    if (!TryEncodeDate(year, month, day, date))
        throw EConvertError(MessageText(TMessage::InvalidDate));
    return date;
}

TDateTime EncodeTime(int hour, int minute, int second, int millisecond)
{
    TDateTime time = 0;
    if (!TryEncodeTime(hour, minute, second, millisecond, time))
        throw EConvertError(MessageText(TMessage::InvalidTime));
    return time;
}

TDateTimeParts DecodeDateTime(TDateTime moment)
{
    // The first and the last day of the calendar; the comparison is false for what is not a number.
    if (!(moment > firstDay - 1 && moment < lastDay + 1))
        throw EConvertError(MessageText(TMessage::InvalidDate));
    const double wholeDays = std::trunc(moment);
    auto days = static_cast<std::int64_t>(wholeDays);
    auto rest = std::llround(std::abs(moment - wholeDays) * double(millisecondsADay));
    if (rest == millisecondsADay) {
        rest = 0;
        ++days;
    }
    if (double(days) > lastDay)
        throw EConvertError(MessageText(TMessage::InvalidDate));
    const year_month_day civil{dayZero + std::chrono::days{days}};
    return {static_cast<int>(civil.year()),
            static_cast<int>(static_cast<unsigned>(civil.month())),
            static_cast<int>(static_cast<unsigned>(civil.day())),
            static_cast<int>(rest / 3'600'000),
            static_cast<int>(rest / 60'000 % 60),
            static_cast<int>(rest / 1000 % 60),
            static_cast<int>(rest % 1000)};
}

} // namespace Zelmar01
