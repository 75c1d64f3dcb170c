#pragma once

namespace Zelmar01 {

/// Makes the codes dialog of TDosPrint::EditPrinterCodes() a window of the running QApplication
/// (PrnCode_fm.h), unless the host has already set its own. A host that edits codes calls it once at its
/// start.
void UsePrinterCodesDialog();

} // namespace Zelmar01
