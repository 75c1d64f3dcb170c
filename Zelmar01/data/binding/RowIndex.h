#pragma once

#include <QString>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <vector>

namespace Zelmar01 {

/// Finds, among many rows, the first one with a given value. It holds hashes and row numbers only; the values
/// stay where they are, and whoever changes them builds it anew.
class TRowIndex
{
public:
    /// Takes the rows 0 to count - 1. `hash(row)` is the hash of a row's value, `same(a, b)` whether two rows
    /// have equal values.
    template<class Hash, class Same>
    void Build(int count, Hash hash, Same same)
    {
        m_slots.assign(std::bit_ceil(static_cast<std::size_t>(count) * 2 + 1), {});
        for (int row = 0; row < count; ++row) {
            const std::uint32_t value = hash(row);
            auto &slot = find(value, [&](int other) { return same(other, row); });
            if (slot.Row < 0)
                slot = {value, row};
        }
    }
    void Clear() { m_slots.clear(); }
    bool IsBuilt() const { return !m_slots.empty(); }

    /// The first row of that hash for which `is(row)` holds; -1 when there is none.
    template<class Is>
    int Find(std::uint32_t hash, Is is) const
    {
        return const_cast<TRowIndex *>(this)->find(hash, is).Row;
    }

private:
    struct TSlot
    {
        std::uint32_t Hash = 0;
        int Row = -1;
    };

    // The slot of such a row, or the free one where it would stand.
    template<class Is>
    TSlot &find(std::uint32_t hash, Is is)
    {
        const auto mask = m_slots.size() - 1;
        auto place = hash & mask;
        while (m_slots[place].Row >= 0 && !(m_slots[place].Hash == hash && is(m_slots[place].Row)))
            place = (place + 1) & mask;
        return m_slots[place];
    }

    std::vector<TSlot> m_slots; // a power of two, at most half of them taken
};

inline std::uint32_t HashOf(qint64 number)
{
    return static_cast<std::uint32_t>((static_cast<std::uint64_t>(number) * 0x9E3779B97F4A7C15U) >> 32);
}

/// The same for texts that differ by letter case only.
inline std::uint32_t FoldedHashOf(QStringView text)
{
    std::uint64_t hash = static_cast<std::uint64_t>(text.size());
    for (const QChar c : text) {
        // Half a character of the rare scripts beyond 16 bits cannot be folded.
        const char16_t unit = c.isSurrogate()                              ? u'\0'
                              : c.unicode() >= u'A' && c.unicode() <= u'Z' ? char16_t(c.unicode() + 32)
                              : c.unicode() < 128                          ? c.unicode()
                                                                           : c.toCaseFolded().unicode();
        hash = (hash ^ unit) * 0x9E3779B97F4A7C15U;
        hash ^= hash >> 29;
    }
    return static_cast<std::uint32_t>(hash >> 32);
}

} // namespace Zelmar01
