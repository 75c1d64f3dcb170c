#pragma once

#include <QHash>

#include <cstdint>
#include <vector>

namespace Zelmar01 {

/// Finds nodes by the identifiers of their levels. Identifiers that lie close together are looked up in a
/// table, all others in a hash.
class TIdIndex
{
public:
    static constexpr std::uint32_t None = 0xFFFF'FFFF;

    /// Forgets everything and makes ready for `count` identifiers from `first` to `last`.
    void Reset(std::int32_t first, std::int32_t last, std::size_t count);

    /// False, without an effect, when the identifier is there already.
    bool Insert(std::int32_t id, std::uint32_t node);
    void Remove(std::int32_t id);
    std::uint32_t Find(std::int32_t id) const
    {
        const auto place = placeOf(id);
        return place < m_table.size() ? m_table[place] : m_hash.value(id, None);
    }

    /// The bytes taken, about.
    std::size_t Memory() const;

private:
    // Identifiers before the first wrap around to places far behind the table.
    std::uint32_t placeOf(std::int32_t id) const
    {
        return static_cast<std::uint32_t>(id) - static_cast<std::uint32_t>(m_first);
    }

    std::int32_t m_first = 0;
    std::vector<std::uint32_t> m_table;
    QHash<std::int32_t, std::uint32_t> m_hash;
};

} // namespace Zelmar01
