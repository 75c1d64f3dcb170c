#pragma once

#include <Zelmar01/descrtree/Descr.h>

#include <QByteArray>
#include <QStringView>

#include <cstdint>
#include <string_view>
#include <vector>

namespace Zelmar01 {

/// A text in a TDescrTexts: where it begins and how many bytes it has.
class TDescrText
{
public:
    TDescrText() = default;
    TDescrText(std::uint32_t begin, std::uint32_t size, bool isWide)
        : m_begin(begin), m_size(size | (isWide ? wideBit : 0U))
    {
    }

    std::uint32_t Begin() const { return m_begin; }
    std::uint32_t Size() const { return m_size & ~wideBit; }
    /// Whether the text is kept in UTF-16, because Windows-1252 lacks one of its characters.
    bool IsWide() const { return (m_size & wideBit) != 0; }

private:
    static constexpr std::uint32_t wideBit = 0x8000'0000;

    std::uint32_t m_begin = 0, m_size = 0;
};

/// Texts side by side in one block of memory, one byte a character where that is possible.
class TDescrTexts
{
public:
    TDescrTexts() = default;
    /// Takes a block of Windows-1252 over, into which the caller makes texts of its own. It has less than
    /// 2 GiB.
    explicit TDescrTexts(QByteArray block) : m_block(std::move(block)) {}

    /// Keeps a text as it is; only accents that stand as characters of their own are joined with their
    /// letters when that makes it fit into Windows-1252. Raises EInvalidOperation when 2 GiB are full.
    TDescrText Add(QStringView text);

    QString Text(TDescrText text) const;
    /// The bytes of a text that is not wide, in Windows-1252.
    std::string_view Bytes(TDescrText text) const;
    /// The number of its characters.
    std::size_t Length(TDescrText text) const { return text.IsWide() ? text.Size() / 2 : text.Size(); }

    /// Copies a text of another block into this one.
    TDescrText AddFrom(const TDescrTexts &other, TDescrText text);

    std::size_t Size() const { return static_cast<std::size_t>(m_block.size()); }
    std::size_t Capacity() const { return static_cast<std::size_t>(m_block.capacity()); }
    void Reserve(std::size_t size) { m_block.reserve(static_cast<qsizetype>(size)); }
    void Squeeze() { m_block.squeeze(); }

private:
    TDescrText extend(std::size_t size, bool isWide);

    QByteArray m_block;
};

/// One level in compact form; the texts are in the TDescrTexts of its rows.
struct TDescrRecord
{
    std::int32_t ID = 0, IDPere = 0;
    TDescrText LibLong, Libelle, LibCourt, Code;
};

/// Levels in memory, in the order in which they were read. A row takes 40 bytes and its texts.
class TDescrRows
{
public:
    TDescrRows() = default;
    TDescrRows(TDescrTexts texts, std::vector<TDescrRecord> records);

    std::size_t Count() const { return m_records.size(); }
    const TDescrRecord &Record(std::size_t row) const { return m_records[row]; }
    const TDescrTexts &Texts() const { return m_texts; }
    TDescr Descr(std::size_t row) const;
    QString Text(std::size_t row, TDescrText TDescrRecord::*field) const;

    /// The depth at which a row hangs in the tree, 1 for a department: the length of its code, and 1 when it
    /// has none.
    std::size_t Depth(std::size_t row) const;

    void Append(int id, int idPere, QStringView libLong, QStringView libelle, QStringView libCourt,
                QStringView code);
    void Append(const TDescr &descr);

    /// Puts another level into a row, or another text into one field of it. The memory of what was there is
    /// won back from time to time.
    void Set(std::size_t row, const TDescr &descr);
    void Set(std::size_t row, TDescrText TDescrRecord::*field, QStringView text);

    /// Gives back memory that was taken in advance.
    void Squeeze();
    /// The bytes taken.
    std::size_t Memory() const;

private:
    void winBack();

    TDescrTexts m_texts;
    std::vector<TDescrRecord> m_records;
    std::size_t m_unused = 0; // bytes of replaced texts
};

} // namespace Zelmar01
