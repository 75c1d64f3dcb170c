#include <Zelmar01/printing/PrnCodeNotation.h>

#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/core/Messages.h>
#include <Zelmar01/core/Windows1252.h>
#include <Zelmar01/core/Windows1252Text.h>
#include <Zelmar01/printing/Notations.h>

#include <QStringList>

#include <algorithm>

namespace Zelmar01 {

namespace {

struct TSign
{
    unsigned char Byte;
    char16_t Sign;
};
constexpr TSign signs[] = {
    {0x00, u'□'}, {0x01, u'☺'}, {0x02, u'☻'}, {0x03, u'♥'}, {0x04, u'♦'}, {0x05, u'♣'}, {0x06, u'♠'},
    {0x07, u'∙'}, {0x08, u'◘'}, {0x09, u'○'}, {0x0A, u'◙'}, {0x0B, u'♂'}, {0x0C, u'♀'}, {0x0D, u'♪'},
    {0x0E, u'♫'}, {0x0F, u'☼'}, {0x10, u'►'}, {0x11, u'◄'}, {0x12, u'↕'}, {0x13, u'‼'}, {0x14, u'π'},
    {0x15, u'∩'}, {0x16, u'▬'}, {0x17, u'↨'}, {0x18, u'↑'}, {0x19, u'↓'}, {0x1A, u'→'}, {0x1B, u'←'},
    {0x1C, u'∟'}, {0x1D, u'↔'}, {0x1E, u'▲'}, {0x1F, u'▼'}, {0x7F, u'⌂'}, {0x81, u'╔'}, {0x8D, u'╗'},
    {0x8F, u'╚'}, {0x90, u'╝'}, {0x9D, u'╬'}, {0xA0, u'▫'}, {0xAD, u'─'},
};

QString characters(std::string_view code)
{
    QString text;
    for (const char c : code)
        text += CharacterOfByte(static_cast<unsigned char>(c));
    return text;
}

[[noreturn]] void refuse(const QString &item)
{
    throw EConvertError(MessageText(TMessage::InvalidCode) + item.toStdString());
}

std::string bytesOfCharacters(QString text)
{
    for (const auto &[byte, sign] : signs)
        text.replace(QChar(sign), QChar(static_cast<char16_t>(CharFromWindows1252(byte))));
    auto encoded = ToWindows1252(text);
    if (!encoded.Missing.isEmpty())
        refuse(encoded.Missing);
    return std::move(encoded.Bytes);
}

// A list is ASCII: a character without a byte makes an item as bad as any other.
std::string listBytes(QString text)
{
    auto encoded = ToWindows1252(text.remove(u' '));
    if (!encoded.Missing.isEmpty()) {
        const auto items = text.split(u',');
        refuse(*std::find_if(items.begin(), items.end(),
                             [](const auto &item) { return !ToWindows1252(item).Missing.isEmpty(); }));
    }
    return std::move(encoded.Bytes);
}

} // namespace

QString CodeText(TCodeNotation notation, std::string_view code)
{
    switch (notation) {
    case TCodeNotation::Decimal:
        return QString::fromStdString(StrToASCIIList(code));
    case TCodeNotation::Hexadecimal:
        return QString::fromStdString(StrToAsciiH(code));
    case TCodeNotation::Character:
        break;
    }
    return characters(code);
}

std::string CodeOfText(TCodeNotation notation, const QString &text)
{
    switch (notation) {
    case TCodeNotation::Decimal:
        return ASCIIListToStr(listBytes(text));
    case TCodeNotation::Hexadecimal:
        return AsciiHToStr(listBytes(text));
    case TCodeNotation::Character:
        break;
    }
    return bytesOfCharacters(text);
}

QChar CharacterOfByte(unsigned char byte)
{
    for (const auto &sign : signs)
        if (sign.Byte == byte)
            return sign.Sign;
    return static_cast<char16_t>(CharFromWindows1252(byte));
}

} // namespace Zelmar01
