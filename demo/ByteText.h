#pragma once

#include <QString>

#include <string_view>

namespace Shop {

/// The usual short name of a control code, such as "ESC"; empty for a byte that is no control code.
QString ControlName(unsigned char byte);

/// Bytes in lines of eight: their place, their hexadecimal values, and what they are: control codes by their
/// short names, ASCII as it is, and a dot for what depends on the printer's character set.
QString ByteText(std::string_view bytes);

} // namespace Shop
