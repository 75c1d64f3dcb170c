#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace Zelmar01 {

/// A unit of a package: what is done before its first use and after its last one. Either may be empty.
struct TUnit
{
    std::string Name;
    std::function<void()> Start, Finish;
};

/// The units of a package in the order in which they start, each with a counter of how often it was asked
/// for. A unit starts when its counter leaves 0 and finishes when it is back at 0.
class TStartUp
{
public:
    explicit TStartUp(std::vector<TUnit> units);

    /// Starts the units in their order; those that are started already are only counted. When one of them
    /// raises, those before it are given back in reverse order, and the exception goes to the caller.
    void Load();
    /// Gives the units back, in reverse order. An exception of one goes to the exception display, and the
    /// others are given back all the same. Without a Load() before it does nothing.
    void Unload() noexcept;

    const std::vector<TUnit> &Units() const { return m_units; }
    /// How often the unit at a place was asked for and not yet given back.
    int Count(std::size_t unit) const { return m_counts.at(unit); }

private:
    void giveBack(std::size_t firstUnits) noexcept;

    std::vector<TUnit> m_units;
    std::vector<int> m_counts;
};

} // namespace Zelmar01
