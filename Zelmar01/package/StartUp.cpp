#include <Zelmar01/package/StartUp.h>

#include <Zelmar01/core/ExceptionDisplay.h>

#include <utility>

namespace Zelmar01 {

TStartUp::TStartUp(std::vector<TUnit> units) : m_units(std::move(units)), m_counts(m_units.size()) {}

void TStartUp::Load()
{
    for (std::size_t unit = 0; unit < m_units.size(); ++unit) {
        try {
            if (m_counts[unit] == 0 && m_units[unit].Start)
                m_units[unit].Start();
        } catch (...) {
            giveBack(unit);
            throw;
        }
        ++m_counts[unit];
    }
}

void TStartUp::Unload() noexcept
{
    giveBack(m_units.size());
}

void TStartUp::giveBack(std::size_t firstUnits) noexcept
{
    for (auto unit = firstUnits; unit-- > 0;) {
        if (m_counts[unit] == 0)
            continue;
        if (--m_counts[unit] == 0 && m_units[unit].Finish)
            ShowingExceptions(m_units[unit].Finish);
    }
}

} // namespace Zelmar01
