#pragma once

#include <Zelmar01/printing/PrinterCodes.h>

#include <functional>
#include <string_view>

namespace Zelmar01 {

/// Sends one code to the printer at once. Raises an exception when the printer did not take it.
using TCodeSending = std::function<void(std::string_view code)>;

/// The dialog in which a user edits code sets: returns whether he confirmed, and changes the sets only then.
/// `type` is the set shown first. Without `send` he cannot try a code.
using TPrinterCodesDialog =
    std::function<bool(TPrinterCodes &codes, TPrinterType type, const TCodeSending &send)>;

/// Sets the dialog of TDosPrint::EditPrinterCodes() and returns the one before. A host with windows calls
/// UsePrinterCodesDialog() (UsePrnCode.h) instead.
TPrinterCodesDialog SetPrinterCodesDialog(TPrinterCodesDialog dialog);

/// Shows the dialog. Raises EInvalidOperation when none was set.
bool ShowPrinterCodesDialog(TPrinterCodes &codes, TPrinterType type, const TCodeSending &send);

} // namespace Zelmar01
