#pragma once

#include <QString>

#include <array>
#include <string>
#include <string_view>

namespace Zelmar01 {

/// The notations in which the codes dialog shows and takes codes, in the order in which it offers them.
enum class TCodeNotation { Decimal, Hexadecimal, Character };

/// Their names, to be translated in the context "Zelmar01".
inline constexpr std::array<const char *, 3> CodeNotationNames{QT_TRANSLATE_NOOP("Zelmar01", "Décimal"),
                                                               QT_TRANSLATE_NOOP("Zelmar01", "Hexa"),
                                                               QT_TRANSLATE_NOOP("Zelmar01", "caractère")};

/// A code in a notation: a decimal list, a hexadecimal list, or its characters, one a byte.
QString CodeText(TCodeNotation notation, std::string_view code);

/// The code that a text in a notation stands for. Raises EConvertError ("Code invalide : " and the bad item
/// of a list, or the characters that are no bytes).
std::string CodeOfText(TCodeNotation notation, const QString &text);

/// The character that stands for a byte on screen, a different one for each: that of Windows-1252, and for
/// the bytes that it leaves invisible a sign that every font has. Control codes have the signs of the DOS
/// screen (ESC is an arrow to the left) except the three that are characters of Windows-1252 too.
QChar CharacterOfByte(unsigned char byte);

} // namespace Zelmar01
