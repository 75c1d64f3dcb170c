#include "SortKeys.h"

#include <QtEndian>

#include <algorithm>
#include <array>
#include <bit>
#include <limits>
#include <memory>
#include <numeric>
#include <stdexcept>
#include <string>
#include <type_traits>

namespace Zelmar01 {

namespace {

// Every value becomes a sequence of words, or of bytes, whose order is that of the values.

std::uint64_t wordOf(qint64 number)
{
    return static_cast<std::uint64_t>(number) ^ (std::uint64_t(1) << 63);
}

std::uint64_t wordOf(double number)
{
    if (number != number)
        return ~std::uint64_t(0);
    const auto bits = std::bit_cast<std::uint64_t>(number + 0.0); // -0.0 becomes 0.0
    return bits >> 63 ? ~bits : bits | (std::uint64_t(1) << 63);
}

std::uint64_t wordOf(bool value)
{
    return value;
}

std::uint64_t wordOf(QDate date)
{
    return wordOf(date.toJulianDay());
}

std::uint64_t wordOf(QTime time)
{
    return wordOf(qint64(time.msecsSinceStartOfDay()));
}

std::uint64_t wordOf(const QDateTime &moment)
{
    return wordOf(moment.toMSecsSinceEpoch());
}

// In UTF-8 the order of bytes is that of code points.
void appendBytes(std::string &bytes, QStringView text, Qt::CaseSensitivity sensitivity)
{
    const bool folds = sensitivity == Qt::CaseInsensitive;
    const auto size = bytes.size();
    bytes.resize(size + 3 * static_cast<std::size_t>(text.size()));
    char *end = bytes.data() + size;
    const auto append = [&end](char32_t byte) { *end++ = static_cast<char>(byte); };
    const auto appendTail = [&append](char32_t c, int bits) { append(0x80 | (c >> bits & 0x3F)); };
    for (qsizetype i = 0; i < text.size(); ++i) {
        char32_t c = text[i].unicode();
        if (c < 0x80) {
            append(folds && c >= U'A' && c <= U'Z' ? c + (U'a' - U'A') : c);
            continue;
        }
        if (text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            c = QChar::surrogateToUcs4(text[i], text[i + 1]);
            ++i;
        }
        if (folds)
            c = QChar::toCaseFolded(c);
        if (c < 0x80) {
            append(c); // the Kelvin sign folds to k
        } else if (c < 0x800) {
            append(0xC0 | c >> 6);
            appendTail(c, 0);
        } else if (c < 0x10000) {
            append(0xE0 | c >> 12);
            appendTail(c, 6);
            appendTail(c, 0);
        } else {
            append(0xF0 | c >> 18);
            appendTail(c, 12);
            appendTail(c, 6);
            appendTail(c, 0);
        }
    }
    bytes.resize(static_cast<std::size_t>(end - bytes.data()));
}

void appendBytes(std::string &bytes, const QByteArray &value, Qt::CaseSensitivity)
{
    bytes.append(value.constData(), static_cast<std::size_t>(value.size()));
}

void appendBytes(std::string &bytes, const TDecimal &value, Qt::CaseSensitivity)
{
    const quint64 words[] = {qToBigEndian(wordOf(value.Whole())), qToBigEndian(wordOf(value.Fraction()))};
    bytes.append(reinterpret_cast<const char *>(words), sizeof words);
}

template<class T>
constexpr bool hasBytes =
    std::is_same_v<T, QString> || std::is_same_v<T, QByteArray> || std::is_same_v<T, TDecimal>;

// A row, and a word of its value.
struct TEntry
{
    std::uint64_t Word;
    std::uint32_t Row;
    std::uint32_t Next; // where the word behind it is

    friend bool operator<(const TEntry &a, const TEntry &b)
    {
        return a.Word != b.Word ? a.Word < b.Word : a.Row < b.Row;
    }
};

// Sorts entries that are in the order of their rows: distributes them by the first eight bits that are not
// the same in all, then sorts each lot, which soon is near at hand. `scratch` has room for all.
void sortEntries(TEntry *entries, std::size_t count, TEntry *scratch)
{
    std::uint64_t differing = 0;
    for (std::size_t i = 0; i < count; ++i)
        differing |= entries[i].Word ^ entries[0].Word;
    if (differing == 0)
        return;
    if (count < 64) {
        std::sort(entries, entries + count);
        return;
    }
    const auto shift = std::max(56 - std::countl_zero(differing), 0);
    const auto lotOf = [shift](const TEntry &entry) { return entry.Word >> shift & 0xFF; };
    std::array<std::uint32_t, 257> begins{};
    for (std::size_t i = 0; i < count; ++i)
        ++begins[lotOf(entries[i]) + 1];
    std::partial_sum(begins.begin(), begins.end(), begins.begin());
    auto places = begins;
    for (std::size_t i = 0; i < count; ++i)
        scratch[places[lotOf(entries[i])]++] = entries[i];
    std::copy(scratch, scratch + count, entries);
    if (shift > 0)
        for (std::size_t lot = 0; lot < 256; ++lot)
            sortEntries(entries + begins[lot], begins[lot + 1] - begins[lot], scratch);
}

// Sorts rows by the first words of their values, then what is equal by the second ones, and so on. An entry
// has at hand what the next step needs: with very many rows, each look elsewhere into memory counts.
class TRanking
{
public:
    template<class Values>
    TRanking(const Values &values, const TRowNumbers &rows, Qt::CaseSensitivity sensitivity)
        : m_isFirst(rows.size()), m_scratch(std::make_unique_for_overwrite<TEntry[]>(rows.size()))
    {
        m_entries.reserve(rows.size());
        if constexpr (hasBytes<typename Values::value_type>) {
            m_words.reserve(expectedWords(values, rows));
            std::string bytes;
            for (const auto row : rows) {
                bytes.clear();
                appendBytes(bytes, values[static_cast<typename Values::size_type>(row)], sensitivity);
                add(row, bytes);
            }
            if (m_words.size() > std::numeric_limits<std::uint32_t>::max())
                throw std::length_error("too many values to sort");
        } else {
            for (const auto row : rows)
                m_entries.push_back({wordOf(values[row]), row, 0});
        }
        sortRange({0, m_entries.size()});
        while (!m_open.empty())
            sortByNextWords();
    }

    // Calls `take(row, isOther)` for all rows by their values, those of one value by their numbers. `isOther`
    // tells that the value is not the one before.
    template<class Take>
    void ForAll(Take take) const
    {
        for (std::size_t i = 0; i < m_entries.size(); ++i)
            take(m_entries[i].Row, bool(m_isFirst[i]));
    }

private:
    // Rows whose values have the same words so far.
    struct TRange
    {
        std::size_t Begin, End;
    };

    template<class Values>
    static std::size_t expectedWords(const Values &values, const TRowNumbers &rows)
    {
        if constexpr (std::is_same_v<typename Values::value_type, TDecimal>)
            return 2 * rows.size();
        else
            return std::accumulate(rows.begin(), rows.end(), std::size_t(0), [&](std::size_t sum, auto row) {
                return sum + static_cast<std::size_t>(values[row].size()) / 6;
            });
    }

    // Seven bytes a word, and in the last byte how many of them there are: 8 when others follow.
    void add(std::uint32_t row, std::string &bytes)
    {
        const auto size = bytes.size();
        bytes.append(8, '\0');
        const auto wordAt = [&](std::size_t begin) {
            const auto word = qFromBigEndian<quint64>(bytes.data() + begin);
            return (word & ~std::uint64_t(0xFF)) | std::min<std::size_t>(size - begin, 8);
        };
        m_entries.push_back({wordAt(0), row, static_cast<std::uint32_t>(m_words.size())});
        for (std::size_t begin = 7; begin < size; begin += 7)
            m_words.push_back(wordAt(begin));
    }

    // Without m_words all of a value is in its first one.
    bool goesOn(std::uint64_t word) const { return !m_words.empty() && (word & 0xFF) == 8; }

    void sortByNextWords()
    {
        const auto ranges = std::exchange(m_open, {});
        // Apart from the sorting, so that the processor waits for many words at a time.
        for (const auto &[begin, end] : ranges)
            for (auto i = begin; i < end; ++i)
                m_entries[i].Word = m_words[m_entries[i].Next++];
        for (const auto &range : ranges)
            sortRange(range);
    }

    void sortRange(const TRange &range)
    {
        sortEntries(m_entries.data() + range.Begin, range.End - range.Begin, m_scratch.get());
        for (auto begin = range.Begin; begin < range.End;) {
            const auto word = m_entries[begin].Word;
            auto end = begin + 1;
            while (end < range.End && m_entries[end].Word == word)
                ++end;
            m_isFirst[begin] = true;
            if (end - begin > 1 && goesOn(word))
                m_open.push_back({begin, end});
            begin = end;
        }
    }

    std::vector<TEntry> m_entries;
    std::vector<std::uint64_t> m_words; // all but the first ones
    std::vector<bool> m_isFirst;        // the entries whose value is not that of the one before
    std::vector<TRange> m_open;
    std::unique_ptr<TEntry[]> m_scratch;
};

TRanking rankingOf(const TColumn &column, const TRowNumbers &rows, Qt::CaseSensitivity sensitivity)
{
    return column.Visit([&](const auto &values) { return TRanking(values, rows, sensitivity); });
}

TRanks ranksOf(const TColumn &column, Qt::CaseSensitivity sensitivity)
{
    TRanks ranks;
    ranks.Rows.reserve(column.Count());
    TRowNumbers rows;
    rows.reserve(column.Count());
    for (std::uint32_t row = 0; row < column.Count(); ++row)
        (column.IsNull(row) ? ranks.Rows : rows).push_back(row);
    ranks.Begins.push_back(0);
    ranks.OfRow.resize(column.Count());
    rankingOf(column, rows, sensitivity).ForAll([&](std::uint32_t row, bool isOther) {
        if (isOther)
            ranks.Begins.push_back(static_cast<std::uint32_t>(ranks.Rows.size()));
        ranks.OfRow[row] = static_cast<std::uint32_t>(ranks.Count());
        ranks.Rows.push_back(row);
    });
    ranks.Begins.push_back(static_cast<std::uint32_t>(ranks.Rows.size()));
    return ranks;
}

} // namespace

TRowPlacing::TRowPlacing(const TRanks &ranks, bool descending, TRowNumbers &sorted)
    : m_ranks(ranks.OfRow), m_next(ranks.Begins.cbegin(), ranks.Begins.cend() - 1), m_sorted(sorted)
{
    if (descending)
        for (std::size_t rank = 0; rank < m_next.size(); ++rank)
            m_next[rank] = ranks.Begins.back() - ranks.Begins[rank + 1];
}

TRanks RanksOf(const TColumn &column)
{
    return ranksOf(column, Qt::CaseSensitive);
}

TRanks FoldedRanksOf(const TColumn &texts, const TRanks &plain)
{
    if (plain.Count() > plain.Rows.size() / 2) // there is little to be saved
        return ranksOf(texts, Qt::CaseInsensitive);
    // One row for each of the different texts.
    TRowNumbers rows;
    std::vector<bool> isThere(plain.Count());
    isThere[0] = true;
    for (std::uint32_t row = 0; row < plain.OfRow.size(); ++row)
        if (const auto rank = plain.OfRow[row]; !isThere[rank]) {
            isThere[rank] = true;
            rows.push_back(row);
        }
    TRanks ranks;
    std::vector<std::uint32_t> foldedOf(plain.Count());
    std::uint32_t rank = 0;
    rankingOf(texts, rows, Qt::CaseInsensitive).ForAll([&](std::uint32_t row, bool isOther) {
        rank += isOther;
        foldedOf[plain.OfRow[row]] = rank;
    });
    ranks.OfRow.reserve(plain.OfRow.size());
    ranks.Begins.resize(std::size_t(rank) + 2);
    for (const auto plainRank : plain.OfRow) {
        ranks.OfRow.push_back(foldedOf[plainRank]);
        ++ranks.Begins[ranks.OfRow.back() + 1];
    }
    std::partial_sum(ranks.Begins.begin(), ranks.Begins.end(), ranks.Begins.begin());
    ranks.Rows.resize(plain.Rows.size());
    TRowPlacing place(ranks, false, ranks.Rows);
    for (std::uint32_t row = 0; row < ranks.Rows.size(); ++row)
        place(row);
    return ranks;
}

std::strong_ordering CompareRows(const TColumn &column, std::size_t a, std::size_t b,
                                 Qt::CaseSensitivity sensitivity)
{
    if (column.IsNull(a) || column.IsNull(b))
        return column.IsNull(b) <=> column.IsNull(a);
    return column.Visit([&](const auto &values) -> std::strong_ordering {
        using TValues = std::decay_t<decltype(values)>;
        const auto &valueA = values[static_cast<typename TValues::size_type>(a)];
        const auto &valueB = values[static_cast<typename TValues::size_type>(b)];
        if constexpr (hasBytes<typename TValues::value_type>) {
            std::string bytesA, bytesB;
            appendBytes(bytesA, valueA, sensitivity);
            appendBytes(bytesB, valueB, sensitivity);
            return bytesA <=> bytesB;
        } else {
            return wordOf(valueA) <=> wordOf(valueB);
        }
    });
}

} // namespace Zelmar01
