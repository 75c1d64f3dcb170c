#pragma once

#include <cstdint>
#include <string>

namespace Zelmar01 {

/// The numbers of the library's messages, out of the range 65504 to 65535.
enum class TMessage : std::uint16_t {
    InvalidCode = 65506,     ///< followed by the bad item of a notation
    NoRightToCreate = 65507, ///< a code file cannot be created
    DiskFull = 65508,        ///< a code file was written short
    PortNotFound = 65509,    ///< a printer port cannot be opened
    PortWriteFailed = 65510, ///< a printer port took less than it was given
    DefaultPrinter = 65511,  ///< the printer name that stands for the current printer
    InvalidDate = 65512,     ///< a day that the calendar does not have
    InvalidTime = 65513,     ///< a time of day outside 00:00:00.000 to 23:59:59.999
};

/// The French text of a message, in UTF-8.
std::string MessageText(TMessage message);

} // namespace Zelmar01
