#include <Zelmar01/tasks/service/TimeZone.h>

#include <algorithm>

namespace Zelmar01 {

namespace {

// The calendar and its days of the week come back after this time.
constexpr int cycleYears = 400;
constexpr TSeconds cycle = 146097 * SecondsADay;

// Two changes a year leave one or two in a stretch of 194 days.
constexpr int stretchBits = 24;

constexpr TSeconds beginning = INT64_MIN;

TSeconds startOfYear(int year)
{
    return DayFromCivil({year, 1, 1}) * SecondsADay;
}

} // namespace

TTimeZone::TTimeZone(std::int32_t offset) : TTimeZone(offset, {}, std::nullopt) {}

TTimeZone::TTimeZone(const TZoneRule &rule) : TTimeZone(rule.StandardOffset, {}, rule) {}

TTimeZone::TTimeZone(std::int32_t firstOffset, std::vector<TOffsetChange> changes,
                     const std::optional<TZoneRule> &rule)
    : m_spans{{beginning, beginning, firstOffset}}
{
    if (rule && rule->HasSummer) {
        const auto last =
            changes.empty() ? startOfYear(FirstYear) : std::max(changes.back().Utc, startOfYear(FirstYear));
        const auto year = CivilFromDay(static_cast<TDay>(last / SecondsADay)).Year;
        const auto given = changes.size();
        for (int i = 0; i <= cycleYears + 1; ++i)
            rule->AddChanges(year + i, changes);
        changes.erase(std::remove_if(changes.begin() + static_cast<std::ptrdiff_t>(given), changes.end(),
                                     [&](const auto &change) { return change.Utc <= last; }),
                      changes.end());
        m_cycleEnd = startOfYear(year + cycleYears + 1);
    }
    for (const auto &change : changes)
        addSpan(change);
    makeIndex();
}

void TTimeZone::addSpan(const TOffsetChange &change)
{
    if (change.Utc < startOfYear(FirstYear)) {
        m_spans.front().Offset = change.Offset;
        return;
    }
    if (change.Utc <= m_spans.back().Utc)
        m_spans.pop_back();
    const auto &before = m_spans.back();
    if (change.Offset != before.Offset)
        m_spans.push_back({change.Utc, std::max(before.Local, change.Utc + before.Offset), change.Offset});
}

void TTimeZone::makeIndex()
{
    std::uint32_t span = 0;
    const auto end = m_spans.back().Utc + SecondsADay;
    for (auto start = m_spans.size() > 1 ? m_spans[1].Utc : end; start < end;
         start += TSeconds{1} << stretchBits) {
        while (span + 1 < m_spans.size() && std::max(m_spans[span + 1].Utc, m_spans[span + 1].Local) <= start)
            ++span;
        m_index.push_back(span);
    }
}

TSeconds TTimeZone::cyclesBefore(TSeconds time) const
{
    return time < m_cycleEnd ? 0 : ((time - m_cycleEnd) / cycle + 1) * cycle;
}

template<TSeconds TTimeZone::TSpan::*Start>
const TTimeZone::TSpan &TTimeZone::spanOf(TSeconds time) const
{
    std::size_t span = 0;
    if (!m_index.empty() && time > m_spans[1].Utc) {
        const auto stretch = static_cast<std::size_t>((time - m_spans[1].Utc) >> stretchBits);
        span = m_index[std::min(stretch, m_index.size() - 1)];
    }
    while (span + 1 < m_spans.size() && m_spans[span + 1].*Start <= time)
        ++span;
    return m_spans[span];
}

TSeconds TTimeZone::ToLocal(TSeconds utc) const
{
    return utc + spanOf<&TSpan::Utc>(utc - cyclesBefore(utc)).Offset;
}

TSeconds TTimeZone::ToUtc(TSeconds local) const
{
    const auto shift = cyclesBefore(local);
    const auto &span = spanOf<&TSpan::Local>(local - shift);
    return std::max(span.Utc, local - shift - span.Offset) + shift;
}

TSeconds TTimeZone::FirstLocal(TSeconds utc) const
{
    const auto shift = cyclesBefore(utc);
    const auto time = utc - shift;
    const auto &span = spanOf<&TSpan::Utc>(time);
    return (time == span.Utc ? span.Local : std::max(span.Local, time + span.Offset)) + shift;
}

} // namespace Zelmar01
