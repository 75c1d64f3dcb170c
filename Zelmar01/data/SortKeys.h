#pragma once

#include <Zelmar01/data/Rows.h>

#include <compare>
#include <cstdint>
#include <vector>

namespace Zelmar01 {

/// How the values of a column stand to one another.
///
/// Nulls come first. Texts go by their code points, or by these folded one by one: letters of either case are
/// equal then, and an accent still counts. Numbers, exact decimals, dates and times go by their value, false
/// before true, bytes as unsigned numbers. What is no number comes behind all floating point numbers.
struct TRanks
{
    /// By row number: 0 for null, else the place of the value among the column's different ones, from 1.
    std::vector<std::uint32_t> OfRow;
    /// All rows by their ranks, those of one rank by their numbers.
    TRowNumbers Rows;
    /// Where in Rows each rank begins, and after the last one where it ends.
    std::vector<std::uint32_t> Begins;

    /// How many ranks there are, that of nulls included.
    std::size_t Count() const { return Begins.size() - 1; }
    /// Whether no value comes twice.
    bool IsUnique() const { return Begins[1] <= 1 && Rows.size() - Begins[1] == Count() - 1; }

    /// Calls `take` for every row, the highest rank first when `descending`; those of one rank always come by
    /// their numbers.
    template<class Take>
    void ForAll(bool descending, Take take) const
    {
        if (!descending) {
            for (const auto row : Rows)
                take(row);
            return;
        }
        for (auto rank = Count(); rank-- > 0;)
            for (auto place = Begins[rank], end = Begins[rank + 1]; place < end; ++place)
                take(Rows[place]);
    }
};

/// Puts rows, one after the other, where they belong by their ranks; those of one rank stay in their order.
/// To be given all rows of the ranks.
class TRowPlacing
{
public:
    /// `sorted` has to have room for all of them.
    TRowPlacing(const TRanks &ranks, bool descending, TRowNumbers &sorted);
    void operator()(std::uint32_t row) { m_sorted[m_next[m_ranks[row]]++] = row; }

private:
    const std::vector<std::uint32_t> &m_ranks;
    std::vector<std::uint32_t> m_next; // by rank
    TRowNumbers &m_sorted;
};

/// The ranks of all rows, texts by their plain code points. Needs some 40 bytes a row while it works, and for
/// texts about the room of their UTF-8 besides.
TRanks RanksOf(const TColumn &column);

/// The ranks of texts by their folded code points. Of texts that come twice or more on average, each is
/// looked at once.
TRanks FoldedRanksOf(const TColumn &texts, const TRanks &plain);

/// The same order between two rows, without ranks.
std::strong_ordering CompareRows(const TColumn &column, std::size_t a, std::size_t b,
                                 Qt::CaseSensitivity sensitivity);

} // namespace Zelmar01
