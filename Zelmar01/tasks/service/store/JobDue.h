#pragma once

#include <Zelmar01/tasks/service/TimeZone.h>
#include <Zelmar01/tasks/service/store/JobFile.h>

#include <optional>

namespace Zelmar01 {

/// How late a start is at most made up for. Later ones are reported as missed.
inline constexpr TSeconds MaxLateness = 600;

/// How many starts are counted: a week of every minute, and more.
inline constexpr unsigned MaxDueCount = 20'000;

/// The starts of a job that came due in a stretch of time.
struct TDueStarts
{
    /// Of more than MaxDueCount ones it is exact when it is not too late; else it is the last one counted.
    TSeconds Last = 0;
    unsigned Count = 0; ///< of all of them, MaxDueCount at most
};

/// The starts after the instant `after` and up to `now`; none when there is none.
std::optional<TDueStarts> StartsDue(const TJob &job, TSeconds after, TSeconds now, const TTimeZone &zone);

/// Whether there is one of them.
bool IsStartDue(const TJob &job, TSeconds after, TSeconds now, const TTimeZone &zone);

/// Whether a job starts with the computer, on the day of the local time `now`.
bool StartsWithSystem(const TJob &job, TSeconds localNow);

/// When a run that began at the instant `start` must end because of a trigger that ends its job with its
/// duration; none when there is no such trigger.
std::optional<TSeconds> EndOfDuration(const TJob &job, TSeconds start, const TTimeZone &zone);

} // namespace Zelmar01
