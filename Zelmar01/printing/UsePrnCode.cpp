#include <Zelmar01/printing/UsePrnCode.h>

#include <Zelmar01/printing/PrnCodeDialog.h>
#include <Zelmar01/printing/PrnCode_fm.h>

#include <QApplication>
#include <QPointer>

namespace Zelmar01 {

void UsePrinterCodesDialog()
{
    const auto edit = [](TPrinterCodes &codes, TPrinterType type, const TCodeSending &send) {
        // Gone at once, so that nothing comes to stand on a closed window.
        const QPointer<TfmPrnCode> dialog(new TfmPrnCode(QApplication::activeWindow(), send));
        const bool confirmed = dialog->Execute(codes, type);
        delete dialog;
        return confirmed;
    };
    if (auto before = SetPrinterCodesDialog(edit))
        SetPrinterCodesDialog(std::move(before));
}

} // namespace Zelmar01
