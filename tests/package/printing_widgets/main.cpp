#include <Zelmar01/printing/DosPrint.h>
#include <Zelmar01/printing/PrnCode_fm.h>
#include <Zelmar01/printing/UsePrnCode.h>

#include <QApplication>
#include <QTimer>

using namespace Zelmar01;

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    UsePrinterCodesDialog();
    TDosPrint printer;
    QTimer::singleShot(0, qApp, [] {
        if (auto *const dialog = qobject_cast<TfmPrnCode *>(QApplication::activeModalWidget()))
            dialog->OKBtnClick();
    });
    return printer.EditPrinterCodes() ? 0 : 1;
}
