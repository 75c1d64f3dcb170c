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
    std::uint32_t Highest = 0;
    /// All rows by their ranks, those of one rank by their numbers.
    TRowNumbers Rows;

    /// All rows with the highest ranks first, those of one rank by their numbers.
    TRowNumbers Descending() const;
    /// These rows by their ranks; those of one rank stay in their order.
    TRowNumbers Sorted(const TRowNumbers &rows, bool descending) const;
};

/// The ranks of all rows, texts by their plain code points. Needs some 40 bytes a row while it works, and for
/// texts their UTF-8 besides.
TRanks RanksOf(const TColumn &column);

/// The ranks of texts by their folded code points. Only texts that are different are looked at.
TRanks FoldedRanksOf(const TColumn &texts, const TRanks &plain);

/// The same order between two rows, without ranks.
std::strong_ordering CompareRows(const TColumn &column, std::size_t a, std::size_t b,
                                 Qt::CaseSensitivity sensitivity);

} // namespace Zelmar01
