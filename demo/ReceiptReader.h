#pragma once

#include <QList>
#include <QString>

#include <array>
#include <string_view>

namespace Shop {

/// A piece of a line in one print mode.
struct TReceiptSpan
{
    QString Text;
    bool Bold = false;
    bool Wide = false; ///< each character takes two columns
    bool Underlined = false;
};

enum class TReceiptMark { None, Cut, Drawer, PageEnd, Unknown };

/// A printed line, or something that the printer did between two lines.
struct TReceiptLine
{
    TReceiptMark Mark = TReceiptMark::None;
    Qt::Alignment Alignment = Qt::AlignLeft;
    QList<TReceiptSpan> Spans;

    /// How many columns of the paper the line takes.
    int Columns() const;
    QString Text() const;
};

/// The characters of a printer, by their bytes.
using TCharacterSet = std::array<QChar, 256>;

/// The character set of a printer for which a conversion is made: each byte shows the character that the
/// conversion brings to it, a small letter before a capital one.
TCharacterSet CharacterSetFor(int conversion);

/// The columns of the virtual printer's paper; a longer line goes on in the next.
inline constexpr int PaperColumns = 40;

/// What a receipt printer with Epson-style escapes would print. Codes that it does not know become marks of
/// their own, with their bytes as text.
QList<TReceiptLine> ReadReceipt(std::string_view bytes, const TCharacterSet &characters);

} // namespace Shop
