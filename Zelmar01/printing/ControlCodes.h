#pragma once

#include <string>
#include <string_view>

namespace Zelmar01 {

/// The usual short name of a control code, such as "ESC"; empty for a byte that is no control code.
std::string_view ControlCodeName(unsigned char byte);

/// Bytes in the way in which a printer's manual writes them, "ESC c 0 STX": one item a byte, with blanks
/// between them. Control codes have their short names, a blank is "SP", other ASCII characters stand for
/// themselves, and what depends on the printer's character set is "$" and two hexadecimal digits.
std::string CodeMnemonics(std::string_view bytes);

} // namespace Zelmar01
