#include <Zelmar01/descrtree/DescrRows.h>

#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/core/Translation.h>
#include <Zelmar01/core/Windows1252.h>
#include <Zelmar01/core/Windows1252Text.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

namespace Zelmar01 {

namespace {

constexpr std::size_t largestBlock = 0x7FFF'FFFF;
constexpr std::size_t smallBlock = 4096;
constexpr std::array textFields{&TDescrRecord::LibLong, &TDescrRecord::Libelle, &TDescrRecord::LibCourt,
                                &TDescrRecord::Code};

// The characters as bytes; false when one has no place in Windows-1252.
bool toBytes(QStringView text, char *to)
{
    for (const QChar c : text) {
        if (c.unicode() < 0x80)
            *to++ = static_cast<char>(c.unicode());
        else if (const auto byte = CharToWindows1252(c.unicode()))
            *to++ = static_cast<char>(*byte);
        else
            return false;
    }
    return true;
}

} // namespace

TDescrText TDescrTexts::Add(QStringView text)
{
    auto place = extend(static_cast<std::size_t>(text.size()), false);
    if (toBytes(text, m_block.data() + place.Begin()))
        return place;
    m_block.truncate(place.Begin());

    const auto joined = text.toString().normalized(QString::NormalizationForm_C);
    place = extend(static_cast<std::size_t>(joined.size()), false);
    if (toBytes(joined, m_block.data() + place.Begin()))
        return place;
    m_block.truncate(place.Begin());

    place = extend(static_cast<std::size_t>(text.size()) * sizeof(char16_t), true);
    std::memcpy(m_block.data() + place.Begin(), text.utf16(), place.Size());
    return place;
}

TDescrText TDescrTexts::extend(std::size_t size, bool isWide)
{
    if (size > largestBlock - std::min(Size(), largestBlock))
        throw EInvalidOperation(Translate("Zelmar01", "L'arbre des codes a trop de textes"));
    const TDescrText place(static_cast<std::uint32_t>(Size()), static_cast<std::uint32_t>(size), isWide);
    m_block.resize(m_block.size() + static_cast<qsizetype>(size));
    return place;
}

TDescrText TDescrTexts::AddFrom(const TDescrTexts &other, TDescrText text)
{
    const auto place = extend(text.Size(), text.IsWide());
    std::memcpy(m_block.data() + place.Begin(), other.m_block.constData() + text.Begin(), text.Size());
    return place;
}

QString TDescrTexts::Text(TDescrText text) const
{
    if (!text.IsWide())
        return FromWindows1252(Bytes(text));
    QString wide(static_cast<qsizetype>(text.Size() / 2), Qt::Uninitialized);
    std::memcpy(wide.data(), m_block.constData() + text.Begin(), text.Size());
    return wide;
}

std::string_view TDescrTexts::Bytes(TDescrText text) const
{
    return {m_block.constData() + text.Begin(), text.Size()};
}

TDescrRows::TDescrRows(TDescrTexts texts, std::vector<TDescrRecord> records)
    : m_texts(std::move(texts)), m_records(std::move(records))
{
}

TDescr TDescrRows::Descr(std::size_t row) const
{
    const auto &record = m_records[row];
    return {record.ID,
            record.IDPere,
            m_texts.Text(record.LibLong),
            m_texts.Text(record.Libelle),
            m_texts.Text(record.LibCourt),
            m_texts.Text(record.Code)};
}

QString TDescrRows::Text(std::size_t row, TDescrText TDescrRecord::*field) const
{
    return m_texts.Text(m_records[row].*field);
}

std::size_t TDescrRows::Depth(std::size_t row) const
{
    return std::max<std::size_t>(m_texts.Length(m_records[row].Code), 1);
}

void TDescrRows::Append(int id, int idPere, QStringView libLong, QStringView libelle, QStringView libCourt,
                        QStringView code)
{
    // The initializers are evaluated from left to right.
    m_records.push_back(TDescrRecord{id, idPere, m_texts.Add(libLong), m_texts.Add(libelle),
                                     m_texts.Add(libCourt), m_texts.Add(code)});
}

void TDescrRows::Append(const TDescr &descr)
{
    Append(descr.ID, descr.IDPere, descr.LibLong, descr.Libelle, descr.LibCourt, descr.Code);
}

void TDescrRows::Set(std::size_t row, const TDescr &descr)
{
    Set(row, &TDescrRecord::LibLong, descr.LibLong);
    Set(row, &TDescrRecord::Libelle, descr.Libelle);
    Set(row, &TDescrRecord::LibCourt, descr.LibCourt);
    Set(row, &TDescrRecord::Code, descr.Code);
    m_records[row].ID = descr.ID;
    m_records[row].IDPere = descr.IDPere;
}

void TDescrRows::Set(std::size_t row, TDescrText TDescrRecord::*field, QStringView text)
{
    const auto added = m_texts.Add(text);
    m_unused += std::exchange(m_records[row].*field, added).Size();
    if (m_texts.Size() > smallBlock && m_unused > m_texts.Size() / 2)
        winBack();
}

void TDescrRows::winBack()
{
    TDescrTexts texts;
    texts.Reserve(m_texts.Size() - m_unused);
    for (auto &record : m_records)
        for (const auto field : textFields)
            record.*field = texts.AddFrom(m_texts, record.*field);
    m_texts = std::move(texts);
    m_unused = 0;
}

void TDescrRows::Squeeze()
{
    m_texts.Squeeze();
    m_records.shrink_to_fit();
}

std::size_t TDescrRows::Memory() const
{
    return m_texts.Capacity() + m_records.capacity() * sizeof(TDescrRecord);
}

} // namespace Zelmar01
