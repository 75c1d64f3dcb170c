#include <Zelmar01/descrtree/IdIndex.h>

namespace Zelmar01 {

namespace {

// A place of the table costs 4 bytes and an entry of the hash about 16.
constexpr std::size_t placesAnEntry = 4;

} // namespace

void TIdIndex::Reset(std::int32_t first, std::int32_t last, std::size_t count)
{
    m_table.clear();
    m_hash.clear();
    m_first = first;
    const auto places = static_cast<std::size_t>(std::int64_t{last} - first + 1);
    if (places <= count * placesAnEntry)
        m_table.resize(places, None);
    else
        m_hash.reserve(static_cast<qsizetype>(count));
    m_table.shrink_to_fit();
}

bool TIdIndex::Insert(std::int32_t id, std::uint32_t node)
{
    if (Find(id) != None)
        return false;
    const auto place = placeOf(id);
    if (place < m_table.size())
        m_table[place] = node;
    else
        m_hash.insert(id, node);
    return true;
}

void TIdIndex::Remove(std::int32_t id)
{
    const auto place = placeOf(id);
    if (place < m_table.size())
        m_table[place] = None;
    else
        m_hash.remove(id);
}

std::size_t TIdIndex::Memory() const
{
    return m_table.capacity() * sizeof(std::uint32_t) +
           static_cast<std::size_t>(m_hash.capacity()) * 2 * sizeof(std::uint32_t);
}

} // namespace Zelmar01
