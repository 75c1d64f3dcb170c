#include "SortKeys.h"

#include <QtEndian>

#include <algorithm>
#include <array>
#include <bit>
#include <numeric>
#include <string>
#include <type_traits>

namespace Zelmar01 {

namespace {

// Every value becomes a sequence of words whose order is that of the values. Most have one.

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

// Sources of words, over some rows of a column: the word of the value at a place in their list, and whether
// values that have this word in common go on behind it.

class TSingleWords
{
public:
    template<class T>
    TSingleWords(const std::vector<T> &values, const TRowNumbers &rows, Qt::CaseSensitivity)
    {
        m_words.reserve(rows.size());
        for (const auto row : rows)
            m_words.push_back(wordOf(values[row]));
    }
    std::uint64_t Word(std::size_t place, std::size_t) const { return m_words[place]; }
    static bool GoesOn(std::uint64_t, std::size_t) { return false; }

private:
    std::vector<std::uint64_t> m_words;
};

// What stands before the decimal point, then what stands behind it.
class TDecimalWords
{
public:
    TDecimalWords(const std::vector<TDecimal> &values, const TRowNumbers &rows, Qt::CaseSensitivity)
        : m_values(values), m_rows(rows)
    {
    }
    std::uint64_t Word(std::size_t place, std::size_t step) const
    {
        const auto &value = m_values[m_rows[place]];
        return wordOf(step == 0 ? value.Whole() : value.Fraction());
    }
    static bool GoesOn(std::uint64_t, std::size_t step) { return step == 0; }

private:
    const std::vector<TDecimal> &m_values;
    const TRowNumbers &m_rows;
};

// Seven bytes a word, and in the last byte how many of them there are: 8 when others follow.
class TByteWords
{
public:
    template<class Values>
    TByteWords(const Values &values, const TRowNumbers &rows, Qt::CaseSensitivity sensitivity)
    {
        std::size_t size = 0;
        for (const auto row : rows)
            size += static_cast<std::size_t>(values[static_cast<typename Values::size_type>(row)].size());
        m_bytes.reserve(size + size / 8);
        m_begins.reserve(rows.size() + 1);
        for (const auto row : rows) {
            m_begins.push_back(m_bytes.size());
            appendBytes(m_bytes, values[static_cast<typename Values::size_type>(row)], sensitivity);
        }
        m_begins.push_back(m_bytes.size());
        m_bytes.append(8, '\0'); // a word can be read anywhere
    }

    std::uint64_t Word(std::size_t place, std::size_t step) const
    {
        const auto begin = m_begins[place] + 7 * step;
        const auto left = std::min<std::size_t>(m_begins[place + 1] - begin, 8);
        const auto word = qFromBigEndian<quint64>(m_bytes.data() + begin);
        const auto unused = 8 * (8 - std::min<std::size_t>(left, 7));
        return (unused < 64 ? word >> unused << unused : 0) | left;
    }
    static bool GoesOn(std::uint64_t word, std::size_t) { return (word & 0xFF) == 8; }

private:
    std::string m_bytes;
    std::vector<std::size_t> m_begins;
};

template<class Values>
using TWordsOf = std::conditional_t<
    std::is_same_v<Values, QStringList> || std::is_same_v<Values, std::vector<QByteArray>>, TByteWords,
    std::conditional_t<std::is_same_v<Values, std::vector<TDecimal>>, TDecimalWords, TSingleWords>>;

struct TEntry
{
    std::uint64_t Word;
    std::uint32_t Place;
};

// Sorts by words: a byte at a time from the last one, leaving out those that are the same in all. `differing`
// has the bits that are not; `scratch` the room of `entries`.
void sortByWord(TEntry *entries, std::size_t count, std::uint64_t differing, TEntry *scratch)
{
    if (count < 512) {
        std::sort(entries, entries + count, [](const TEntry &a, const TEntry &b) { return a.Word < b.Word; });
        return;
    }
    auto *from = entries, *to = scratch;
    for (unsigned shift = 0; shift < 64; shift += 8) {
        if ((differing >> shift & 0xFF) == 0)
            continue;
        std::array<std::uint32_t, 256> places{};
        for (std::size_t i = 0; i < count; ++i)
            ++places[from[i].Word >> shift & 0xFF];
        std::uint32_t place = 0;
        for (auto &next : places)
            place += std::exchange(next, place);
        for (std::size_t i = 0; i < count; ++i)
            to[places[from[i].Word >> shift & 0xFF]++] = from[i];
        std::swap(from, to);
    }
    if (from != entries)
        std::copy(from, from + count, entries);
}

// Sorts values by their first words, then what is equal by the second ones, and so on.
template<class Words>
class TRanking
{
public:
    TRanking(const Words &words, std::size_t count)
        : m_words(words), m_entries(count), m_scratch(count), m_isFirst(count)
    {
        for (std::size_t place = 0; place < count; ++place)
            m_entries[place].Place = static_cast<std::uint32_t>(place);
        if (count > 0)
            m_open.push_back({0, count});
        for (std::size_t step = 0; !m_open.empty(); ++step)
            sortBy(step);
    }

    // Calls `take(place, rank)` for all values, in their order; ranks are from 1. Returns how many there are.
    template<class Take>
    std::uint32_t ForAll(Take take) const
    {
        std::uint32_t rank = 0;
        for (std::size_t i = 0; i < m_entries.size(); ++i) {
            rank += m_isFirst[i];
            take(m_entries[i].Place, rank);
        }
        return rank;
    }

private:
    // Values that have the same words so far.
    struct TRange
    {
        std::size_t Begin, End;
    };

    void sortBy(std::size_t step)
    {
        const auto ranges = std::exchange(m_open, {});
        // Apart from the sorting, so that the processor waits for many words at a time.
        for (const auto &range : ranges)
            for (auto i = range.Begin; i < range.End; ++i)
                m_entries[i].Word = m_words.Word(m_entries[i].Place, step);
        for (const auto &range : ranges)
            sortRange(range.Begin, range.End, step);
    }

    void sortRange(std::size_t first, std::size_t last, std::size_t step)
    {
        std::uint64_t differing = 0;
        for (auto i = first; i < last; ++i)
            differing |= m_entries[i].Word ^ m_entries[first].Word;
        if (differing != 0)
            sortByWord(&m_entries[first], last - first, differing, &m_scratch[first]);
        for (auto begin = first; begin < last;) {
            const auto word = m_entries[begin].Word;
            auto end = begin + 1;
            while (end < last && m_entries[end].Word == word)
                ++end;
            m_isFirst[begin] = true;
            if (end - begin > 1 && Words::GoesOn(word, step))
                m_open.push_back({begin, end});
            begin = end;
        }
    }

    const Words &m_words;
    std::vector<TEntry> m_entries, m_scratch;
    std::vector<bool> m_isFirst; // the entries whose value is not that of the one before
    std::vector<TRange> m_open;
};

TRowNumbers numbersTo(std::size_t count)
{
    TRowNumbers numbers(count);
    std::iota(numbers.begin(), numbers.end(), 0U);
    return numbers;
}

template<class Take>
std::uint32_t rankRows(const TColumn &column, const TRowNumbers &rows, Qt::CaseSensitivity sensitivity,
                       Take take)
{
    return column.Visit([&](const auto &values) {
        const TWordsOf<std::decay_t<decltype(values)>> words(values, rows, sensitivity);
        return TRanking(words, rows.size()).ForAll(take);
    });
}

} // namespace

TRowNumbers TRanks::Descending() const
{
    TRowNumbers sorted;
    sorted.reserve(Rows.size());
    for (auto end = Rows.cend(); end != Rows.cbegin();) {
        auto begin = end - 1;
        while (begin != Rows.cbegin() && OfRow[*(begin - 1)] == OfRow[*begin])
            --begin;
        sorted.insert(sorted.end(), begin, end);
        end = begin;
    }
    return sorted;
}

TRowNumbers TRanks::Sorted(const TRowNumbers &rows, bool descending) const
{
    const auto keyOf = [=, this](std::uint32_t row) {
        return descending ? Highest - OfRow[row] : OfRow[row];
    };
    std::vector<std::uint32_t> places(std::size_t(Highest) + 2);
    for (const auto row : rows)
        ++places[keyOf(row) + 1];
    std::partial_sum(places.begin(), places.end(), places.begin());
    TRowNumbers sorted(rows.size());
    for (const auto row : rows)
        sorted[places[keyOf(row)]++] = row;
    return sorted;
}

TRanks RanksOf(const TColumn &column)
{
    TRowNumbers rows;
    for (std::size_t row = 0; row < column.Count(); ++row)
        if (!column.IsNull(row))
            rows.push_back(static_cast<std::uint32_t>(row));
    TRanks ranks;
    ranks.OfRow.resize(column.Count());
    ranks.Highest = rankRows(column, rows, Qt::CaseSensitive, [&](std::uint32_t place, std::uint32_t rank) {
        ranks.OfRow[rows[place]] = rank;
    });
    ranks.Rows = ranks.Sorted(numbersTo(column.Count()), false);
    return ranks;
}

TRanks FoldedRanksOf(const TColumn &texts, const TRanks &plain)
{
    // One row for each of the different texts.
    TRowNumbers rows;
    std::vector<bool> isThere(std::size_t(plain.Highest) + 1);
    isThere[0] = true;
    for (std::size_t row = 0; row < plain.OfRow.size(); ++row)
        if (const auto rank = plain.OfRow[row]; !isThere[rank]) {
            isThere[rank] = true;
            rows.push_back(static_cast<std::uint32_t>(row));
        }
    std::vector<std::uint32_t> foldedOf(std::size_t(plain.Highest) + 1);
    TRanks ranks;
    ranks.Highest = rankRows(texts, rows, Qt::CaseInsensitive, [&](std::uint32_t place, std::uint32_t rank) {
        foldedOf[plain.OfRow[rows[place]]] = rank;
    });
    ranks.OfRow.reserve(plain.OfRow.size());
    for (const auto rank : plain.OfRow)
        ranks.OfRow.push_back(foldedOf[rank]);
    ranks.Rows = ranks.Sorted(numbersTo(texts.Count()), false);
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
        if constexpr (std::is_same_v<TWordsOf<TValues>, TByteWords>) {
            std::string bytesA, bytesB;
            appendBytes(bytesA, valueA, sensitivity);
            appendBytes(bytesB, valueB, sensitivity);
            return bytesA <=> bytesB;
        } else if constexpr (std::is_same_v<TWordsOf<TValues>, TDecimalWords>) {
            return valueA <=> valueB;
        } else {
            return wordOf(valueA) <=> wordOf(valueB);
        }
    });
}

} // namespace Zelmar01
