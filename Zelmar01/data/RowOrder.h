#pragma once

#include "SortKeys.h"

#include <vector>

namespace Zelmar01 {

/// One field of an order of rows.
struct TSortField
{
    std::size_t Field;
    bool Descending;
    Qt::CaseSensitivity Sensitivity;
};
using TSortFields = std::vector<TSortField>;

/// Whether a row comes before another one. Row numbers grow in the order in which rows came: they settle what
/// the fields leave open.
bool IsBefore(const TRows &rows, const TSortFields &fields, std::size_t a, std::size_t b);

/// Sorts the rows of a dataset.
///
/// It keeps the ranks of the fields that were sorted by last, texts with and without letter case: up to 12
/// bytes a row, 24 for texts. So another direction, letter case or sequence of these fields only has to put
/// row numbers into place. Rows that were changed or added meanwhile are compared by their values, as long as
/// they are few.
class TRowOrder
{
public:
    /// Brings the shown rows into the order of these fields, without any into the order in which they came.
    void Sort(const TRows &rows, TRowNumbers &shown, const TSortFields &fields);

    /// A row is about to get other values.
    void RowChanges(std::size_t row);
    /// Lets go of what is kept. To be called when the rows go.
    void Clear();

private:
    struct TKept
    {
        std::size_t Field;
        TRanks Plain, Folded;
        const TRanks &For(const TSortField &field) const;
    };

    void sortByRanks(const TSortFields &fields, TRowNumbers &sorted) const;
    void sortWithStrayed(const TRows &rows, TRowNumbers &shown, const TSortFields &fields) const;
    void rank(const TRows &rows, const TSortFields &fields);
    bool isWorthKeeping(std::size_t strayed) const { return strayed <= m_ranked / 16; }
    const TKept *find(std::size_t field) const;

    std::vector<TKept> m_kept;
    std::size_t m_ranked = 0; // rows below this number have ranks,
    TRowNumbers m_changed;    // which say nothing for these
};

} // namespace Zelmar01
