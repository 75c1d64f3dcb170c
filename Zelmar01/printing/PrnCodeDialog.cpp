#include <Zelmar01/printing/PrnCodeDialog.h>

#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/core/Translation.h>

#include <utility>

namespace Zelmar01 {

namespace {

TPrinterCodesDialog &currentDialog()
{
    static TPrinterCodesDialog dialog;
    return dialog;
}

} // namespace

TPrinterCodesDialog SetPrinterCodesDialog(TPrinterCodesDialog dialog)
{
    return std::exchange(currentDialog(), std::move(dialog));
}

bool ShowPrinterCodesDialog(TPrinterCodes &codes, TPrinterType type, const TCodeSending &send)
{
    if (!currentDialog())
        throw EInvalidOperation(
            Translate("Zelmar01", "Le dialogue des codes d'imprimante n'est pas lié à cette application"));
    const auto show = currentDialog(); // stays alive when it sets another
    return show(codes, type, send);
}

} // namespace Zelmar01
