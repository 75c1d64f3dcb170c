#include "RowOrder.h"

#include <algorithm>
#include <iterator>
#include <numeric>
#include <utility>

namespace Zelmar01 {

namespace {

void sortAsTheyCame(std::size_t count, TRowNumbers &shown)
{
    if (shown.size() == count) {
        std::iota(shown.begin(), shown.end(), 0U);
        return;
    }
    std::vector<bool> isShown(count);
    for (const auto row : shown)
        isShown[row] = true;
    auto to = shown.begin();
    for (std::uint32_t row = 0; row < count; ++row)
        if (isShown[row])
            *to++ = row;
}

} // namespace

bool IsBefore(const TRows &rows, const TSortFields &fields, std::size_t a, std::size_t b)
{
    for (const auto &field : fields) {
        const auto order = CompareRows(rows.Column(field.Field), a, b, field.Sensitivity);
        if (std::is_neq(order))
            return field.Descending ? std::is_gt(order) : std::is_lt(order);
    }
    return a < b;
}

const TRanks &TRowOrder::TKept::For(const TSortField &field) const
{
    return field.Sensitivity == Qt::CaseInsensitive && !Folded.OfRow.empty() ? Folded : Plain;
}

const TRowOrder::TKept *TRowOrder::find(std::size_t field) const
{
    const auto found = std::find_if(m_kept.begin(), m_kept.end(),
                                    [field](const TKept &kept) { return kept.Field == field; });
    return found == m_kept.end() ? nullptr : &*found;
}

void TRowOrder::rank(const TRows &rows, const TSortFields &fields)
{
    std::erase_if(m_kept, [&](const TKept &kept) {
        return std::none_of(fields.begin(), fields.end(),
                            [&](const TSortField &field) { return field.Field == kept.Field; });
    });
    const bool hasNew = std::any_of(fields.begin(), fields.end(),
                                    [this](const TSortField &field) { return !find(field.Field); });
    const auto added = rows.Count() - m_ranked;
    if (m_kept.empty() || (hasNew && added > 0) || !isWorthKeeping(m_changed.size() + added)) {
        Clear();
        m_ranked = rows.Count();
    }
    for (const auto &[field, descending, sensitivity] : fields) {
        if (find(field))
            continue;
        const auto &column = rows.Column(field);
        auto plain = RanksOf(column);
        auto folded = column.Type() == ftString ? FoldedRanksOf(column, plain) : TRanks();
        m_kept.push_back({field, std::move(plain), std::move(folded)});
    }
}

// All rows that have ranks. `sorted` has room for them.
void TRowOrder::sortByRanks(const TSortFields &fields, TRowNumbers &sorted) const
{
    const auto ranksOf = [this](const TSortField &field) -> const TRanks & {
        return find(field.Field)->For(field);
    };
    // Nothing is left to the fields behind one whose values are all different.
    auto field = std::find_if(fields.begin(), fields.end() - 1,
                              [&](const TSortField &each) { return ranksOf(each).IsUnique(); });
    const auto &last = ranksOf(*field);
    if (field == fields.begin()) {
        auto to = sorted.begin();
        last.ForAll(field->Descending, [&to](std::uint32_t row) { *to++ = row; });
        return;
    }
    const bool descending = field->Descending;
    --field;
    last.ForAll(descending, TRowPlacing(ranksOf(*field), field->Descending, sorted));
    while (field != fields.begin()) {
        --field;
        const auto from = std::exchange(sorted, TRowNumbers(sorted.size()));
        std::for_each(from.begin(), from.end(), TRowPlacing(ranksOf(*field), field->Descending, sorted));
    }
}

void TRowOrder::Sort(const TRows &rows, TRowNumbers &shown, const TSortFields &fields)
{
    if (fields.empty()) {
        sortAsTheyCame(rows.Count(), shown);
        return;
    }
    rank(rows, fields);
    if (shown.size() == m_ranked && m_changed.empty() && m_ranked == rows.Count())
        sortByRanks(fields, shown);
    else
        sortWithStrayed(rows, shown, fields);
}

// Some rows were deleted, or have no ranks that tell something.
void TRowOrder::sortWithStrayed(const TRows &rows, TRowNumbers &shown, const TSortFields &fields) const
{
    TRowNumbers sorted(m_ranked);
    sortByRanks(fields, sorted);
    enum TKind : char { Gone, Ranked, Strayed };
    std::vector<TKind> kinds(rows.Count(), Gone);
    for (const auto row : shown)
        kinds[row] = row < m_ranked ? Ranked : Strayed;
    for (const auto row : m_changed)
        if (kinds[row] == Ranked)
            kinds[row] = Strayed;
    std::erase_if(sorted, [&](std::uint32_t row) { return kinds[row] != Ranked; });
    TRowNumbers strayed;
    std::copy_if(shown.begin(), shown.end(), std::back_inserter(strayed),
                 [&](std::uint32_t row) { return kinds[row] == Strayed; });

    const auto isBefore = [&](std::uint32_t a, std::uint32_t b) { return IsBefore(rows, fields, a, b); };
    std::sort(strayed.begin(), strayed.end(), isBefore);
    TRowNumbers whole;
    whole.reserve(shown.size());
    auto from = sorted.cbegin();
    for (const auto row : strayed) {
        const auto to = std::lower_bound(from, sorted.cend(), row, isBefore);
        whole.insert(whole.end(), from, to);
        whole.push_back(row);
        from = to;
    }
    whole.insert(whole.end(), from, sorted.cend());
    shown = std::move(whole);
}

void TRowOrder::RowChanges(std::size_t row)
{
    if (row >= m_ranked)
        return;
    m_changed.push_back(static_cast<std::uint32_t>(row));
    if (!isWorthKeeping(m_changed.size()))
        Clear();
}

void TRowOrder::Clear()
{
    *this = {};
}

} // namespace Zelmar01
