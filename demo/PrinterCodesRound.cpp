#include "PrinterCodesRound.h"

#include "Hands.h"
#include "MainWindow.h"

#include <Zelmar01/printing/ControlCodes.h>

#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>

#include <exception>
#include <functional>

using namespace Qt::StringLiterals;
using namespace Zelmar01;

namespace Shop {

namespace {

// Has `work` done while the dialog is open, and cancels it.
void whileOpen(MainWindow &window, const std::function<void(QDialog &)> &work)
{
    bool hasOpened = false;
    std::exception_ptr failure;
    QTimer::singleShot(0, &window, [&] {
        auto *const dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        hasOpened = true;
        try {
            WaitUntil([dialog] { return dialog->isActiveWindow(); }, u"le dialogue ne s'active pas"_s);
            work(*dialog);
        } catch (...) {
            failure = std::current_exception();
        }
        dialog->reject();
    });
    Find<QPushButton>(window, u"editCodes"_s).click();
    if (failure)
        std::rethrow_exception(failure);
    if (!hasOpened)
        Fail(u"les codes d'impression ne s'ouvrent pas"_s);
}

void chooseNotation(const QDialog &dialog, const QString &name)
{
    for (auto *button : dialog.findChildren<QRadioButton *>())
        if (button->text() == name)
            return button->click();
    Fail(u"la notation « %1 » manque"_s.arg(name));
}

} // namespace

QString GoRoundPrinterCodes(MainWindow &window)
{
    QString report;
    whileOpen(window, [&](const QDialog &dialog) {
        auto &ini = Find<QLineEdit>(dialog, u"IniEdit"_s);
        report += u"Ini : "_s + ini.text();
        chooseNotation(dialog, u"Décimal"_s);
        report += u" = "_s + ini.text() + u'\n';
        Find<QComboBox>(dialog, u"PrinterCombo"_s).setCurrentText(u"Tiroir"_s);
        auto &drawer = Find<QLineEdit>(dialog, u"TiroirEdit"_s);
        drawer.setFocus();
        drawer.setText(u"27,112,0,25,250"_s);
        Find<QPushButton>(dialog, u"sendCode"_s).click();
    });
    report += u"Envoyé : "_s + QString::fromStdString(CodeMnemonics(window.Till().ReceivedBytes())) + u'\n';
    return report;
}

void TakePictureOfPrinterCodes(MainWindow &window, const QString &file)
{
    whileOpen(window, [&](QDialog &dialog) {
        Find<QLineEdit>(dialog, u"SelTicEdit"_s).setFocus();
        if (!dialog.grab().save(file))
            Fail(file + u" ne peut pas être écrit"_s);
    });
}

} // namespace Shop
