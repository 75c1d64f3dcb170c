#include <Zelmar01/core/WidgetBoxes.h>

#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/core/MessageBoxes.h>
#include <Zelmar01/core/Translation.h>

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

#include <array>

namespace Zelmar01 {

namespace {

struct TButton
{
    TMsgDlgBtn Button;
    QMessageBox::StandardButton Standard;
    const char *Caption;
};
constexpr std::array<TButton, 4> allButtons{
    {{mbYes, QMessageBox::Yes, Translatable("Zelmar01", "&Oui")},
     {mbNo, QMessageBox::No, Translatable("Zelmar01", "&Non")},
     {mbOK, QMessageBox::Ok, Translatable("Zelmar01", "OK")},
     {mbCancel, QMessageBox::Cancel, Translatable("Zelmar01", "Annuler")}}};

QMessageBox::Icon iconOf(TMsgDlgType type)
{
    switch (type) {
    case mtWarning:
        return QMessageBox::Warning;
    case mtError:
        return QMessageBox::Critical;
    case mtInformation:
        return QMessageBox::Information;
    case mtConfirmation:
        return QMessageBox::Question;
    case mtCustom:
        break;
    }
    return QMessageBox::NoIcon;
}

TMsgDlgBtn showBox(const QString &text, TMsgDlgType type, TMsgDlgButtons buttons)
{
    QMessageBox box(iconOf(type), QApplication::applicationDisplayName(), text, QMessageBox::NoButton,
                    QApplication::activeWindow());
    box.setTextFormat(Qt::PlainText);
    for (const auto &button : allButtons)
        if (buttons.testFlag(button.Button))
            box.addButton(button.Standard)->setText(QCoreApplication::translate("Zelmar01", button.Caption));
    for (const auto closing : {mbOK, mbNo, mbCancel})
        if (buttons.testFlag(closing))
            for (const auto &button : allButtons)
                if (button.Button == closing)
                    box.setEscapeButton(button.Standard);
    const int pressed = box.exec();
    for (const auto &button : allButtons)
        if (button.Standard == pressed)
            return button.Button;
    return mbCancel;
}

void displayException(const std::exception &exception)
{
    QMessageBox box(QMessageBox::Critical, QApplication::applicationDisplayName(),
                    QString::fromUtf8(exception.what()), QMessageBox::Ok, QApplication::activeWindow());
    box.setTextFormat(Qt::PlainText);
    if (const auto *cause = CauseOf(exception))
        box.setInformativeText(QString::fromStdString(cause->Words()));
    box.exec();
}

} // namespace

void UseMessageBoxes()
{
    if (auto before = SetMessageBox(showBox))
        SetMessageBox(std::move(before));
    if (auto before = SetExceptionDisplay(displayException))
        SetExceptionDisplay(std::move(before));
}

} // namespace Zelmar01
