#pragma once

#include <string>
#include <string_view>

namespace Zelmar01 {

/// The two notations in which control codes are shown, edited and stored. A byte string holds any bytes.

/// The decimal list: 1B 40 hex is "27,64".
std::string StrToASCIIList(std::string_view bytes);

/// The hexadecimal list, two upper-case digits a byte: 1B 40 hex is "1B,40".
std::string StrToAsciiH(std::string_view bytes);

/// The bytes of a decimal list. Blanks anywhere, commas at the end and one empty item are passed over; an
/// item may carry a sign, or a leading "$" that marks hexadecimal digits. Raises EConvertError ("Code
/// invalide : " and the item, brought from Windows-1252 to UTF-8) for an item that is no number from 0 to
/// 255.
std::string ASCIIListToStr(std::string_view list);

/// The bytes of a hexadecimal list, read like a decimal list but for its items: two digits each, in any case.
std::string AsciiHToStr(std::string_view list);

/// Replaces two hexadecimal digits by the decimal text of their value. Returns false when `digits` is not two
/// characters long (it then stays as it was) or holds another character (it is then left in upper case).
bool StrHexToInt(std::string &digits);

} // namespace Zelmar01
