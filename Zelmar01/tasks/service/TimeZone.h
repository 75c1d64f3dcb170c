#pragma once

#include <Zelmar01/tasks/service/Calendar.h>
#include <Zelmar01/tasks/service/ZoneRule.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Zelmar01 {

/// A time zone: which local time clocks show at an instant, and which instant a local time stands for.
/// Instants are seconds since 1 January 1970 in UTC, local times seconds since that midnight on the wall.
///
/// A local time that clocks skip stands for the first instant after the skipped ones, one that they show
/// twice for the first of its two instants. So a later local time never stands for an earlier instant.
class TTimeZone
{
public:
    /// A zone whose clocks are never changed; UTC without an argument.
    explicit TTimeZone(std::int32_t offset = 0);

    /// A zone that follows one rule in every year.
    explicit TTimeZone(const TZoneRule &rule);

    /// A zone whose clocks showed `firstOffset` before the first of `changes` and follow `rule`, if there is
    /// one, after the last.
    TTimeZone(std::int32_t firstOffset, std::vector<TOffsetChange> changes,
              const std::optional<TZoneRule> &rule);

    /// The zone of this machine, read anew with each call: on POSIX that of the variable TZ, else that of
    /// /etc/localtime; on Windows that of the user's settings. UTC when none is set.
    static TTimeZone System();

    /// A zone by its name in the system's zone database, such as "Europe/Paris". None when it is not there;
    /// Windows has no such database.
    static std::optional<TTimeZone> Named(const std::string &name);

    /// A zone out of the bytes of a compiled zone file (TZif); none when they are not one.
    static std::optional<TTimeZone> FromZoneFile(std::string_view bytes);

    TSeconds ToLocal(TSeconds utc) const;
    TSeconds ToUtc(TSeconds local) const;

    /// The earliest local time that stands for `utc` or for a later instant.
    TSeconds FirstLocal(TSeconds utc) const;

private:
    // A stretch of time with one offset.
    struct TSpan
    {
        TSeconds Utc;   // its first instant
        TSeconds Local; // the first local time that stands for an instant of it
        TSeconds Offset;
    };

    void addSpan(const TOffsetChange &change);
    void makeIndex();
    // How much later than a time that has the same place in the kept changes.
    TSeconds cyclesBefore(TSeconds time) const;
    template<TSeconds TSpan::*Start>
    const TSpan &spanOf(TSeconds time) const;

    std::vector<TSpan> m_spans;
    std::vector<std::uint32_t> m_index; // the span at the start of each of many stretches of equal length
    TSeconds m_cycleEnd = INT64_MAX;
};

} // namespace Zelmar01
