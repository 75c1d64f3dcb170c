#pragma once

#include <string>
#include <string_view>

namespace Zelmar01 {

/// The character conversions that a ticket's text may pass through, from Windows-1252 to what a printer
/// understands, byte for byte. Their tables are the library's own and follow no published code page in full.
/// Convert texts only: control codes would be changed as well (ESC "@" through fWinToCitizen).

/// The text unchanged.
std::string fNoConvert(std::string_view text);

/// To the printer's DOS code page: bytes above 127 go to the DOS position of their letter, to the letter
/// without its accent, or to a blank.
std::string fWinToPrn(std::string_view text);

/// To the French national character set that the initialisation code of ptIBM selects: accented letters take
/// the places that this set gives them, and the signs whose places it takes are sent as other bytes.
std::string fWinToCitizen(std::string_view text);

/// The conversion with a number: 0 none, 1 fWinToPrn, 2 fWinToCitizen. Any other number gives an empty text.
std::string ConvertText(int conversion, std::string_view text);

} // namespace Zelmar01
