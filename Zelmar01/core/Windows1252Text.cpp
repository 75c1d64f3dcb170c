#include <Zelmar01/core/Windows1252Text.h>

#include <Zelmar01/core/Windows1252.h>

#include <QList>

namespace Zelmar01 {

TWindows1252Text ToWindows1252(const QString &text)
{
    TWindows1252Text result;
    result.Bytes.reserve(static_cast<std::size_t>(text.size()));
    const auto characters = text.normalized(QString::NormalizationForm_C).toUcs4();
    for (const auto character : characters) {
        if (const auto byte = CharToWindows1252(character)) {
            result.Bytes += static_cast<char>(*byte);
            continue;
        }
        result.Bytes += '?';
        const char32_t missing = character;
        const QString one = QString::fromUcs4(&missing, 1);
        if (!result.Missing.contains(one))
            result.Missing += one;
    }
    return result;
}

QString FromWindows1252(std::string_view bytes)
{
    QString text;
    text.reserve(static_cast<qsizetype>(bytes.size()));
    for (const char c : bytes)
        text += QChar(static_cast<char16_t>(CharFromWindows1252(static_cast<unsigned char>(c))));
    return text;
}

} // namespace Zelmar01
