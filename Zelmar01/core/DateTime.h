#pragma once

namespace Zelmar01 {

/// A moment of local civil time: days since 30 December 1899, the fraction being the time of day. Before that
/// day the fraction still counts forward from midnight, so -1.25 is 29 December 1899, 6 in the morning.
using TDateTime = double;

/// A civil date and time of day in its parts.
struct TDateTimeParts
{
    int Year = 1899, Month = 12, Day = 30; ///< years 1 to 9999, months and days from 1
    int Hour = 0, Minute = 0, Second = 0, Millisecond = 0;

    bool operator==(const TDateTimeParts &) const = default;
};

/// Midnight at the start of a day of the proleptic Gregorian calendar. Raises EConvertError when there is no
/// such day in the years 1 to 9999.
TDateTime EncodeDate(int year, int month, int day);

/// A time of day as a fraction. Raises EConvertError for a time outside 00:00:00.000 to 23:59:59.999.
TDateTime EncodeTime(int hour, int minute, int second, int millisecond);

/// The same as EncodeDate and EncodeTime, with false in place of an exception.
bool TryEncodeDate(int year, int month, int day, TDateTime &date) noexcept;
bool TryEncodeTime(int hour, int minute, int second, int millisecond, TDateTime &time) noexcept;

/// The parts of a moment, to the nearest millisecond. Raises EConvertError outside the years 1 to 9999.
TDateTimeParts DecodeDateTime(TDateTime moment);

} // namespace Zelmar01
