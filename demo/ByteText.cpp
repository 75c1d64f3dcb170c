#include "ByteText.h"

#include <Zelmar01/printing/ControlCodes.h>

#include <QStringList>

using namespace Qt::StringLiterals;

namespace Shop {

namespace {

constexpr std::size_t bytesALine = 8;

// Control codes stand apart from each other and from the text around them.
QString namesOf(std::string_view bytes)
{
    QString names;
    bool afterCode = false;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        const auto name = ControlName(byte);
        if (!names.isEmpty() && (afterCode || !name.isEmpty()))
            names += u' ';
        afterCode = !name.isEmpty();
        names += afterCode ? name : byte < 0x80 ? QString(QLatin1Char(c)) : u"·"_s;
    }
    return names;
}

QString hexadecimal(std::size_t value, int digits)
{
    return QString::number(value, 16).toUpper().rightJustified(digits, u'0');
}

} // namespace

QString ControlName(unsigned char byte)
{
    const auto name = Zelmar01::ControlCodeName(byte);
    return QString::fromLatin1(name.data(), static_cast<qsizetype>(name.size()));
}

QString ByteText(std::string_view bytes)
{
    QStringList lines;
    for (std::size_t at = 0; at < bytes.size(); at += bytesALine) {
        const auto row = bytes.substr(at, bytesALine);
        QStringList values;
        for (const char c : row)
            values << hexadecimal(static_cast<unsigned char>(c), 2);
        lines << hexadecimal(at, 4) + u"  "_s + values.join(u' ').leftJustified(bytesALine * 3 + 1) +
                     namesOf(row);
    }
    return lines.join(u'\n');
}

} // namespace Shop
