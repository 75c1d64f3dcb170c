#pragma once

#include <QFlags>
#include <QString>

#include <functional>

namespace Zelmar01 {

/// What a message box is about; chooses its icon. mtCustom has none. The title is the application's name.
enum TMsgDlgType { mtWarning, mtError, mtInformation, mtConfirmation, mtCustom };

/// The buttons of a message box, and the button that closed it.
enum TMsgDlgBtn { mbNone = 0, mbYes = 1, mbNo = 2, mbOK = 4, mbCancel = 8 };
using TMsgDlgButtons = QFlags<TMsgDlgBtn>;
Q_DECLARE_OPERATORS_FOR_FLAGS(TMsgDlgButtons)

/// Shows a modal message box and returns the button that closed it; closing its window counts as mbCancel
/// where there is such a button, else mbNo, else mbOK.
using TMessageBox = std::function<TMsgDlgBtn(const QString &text, TMsgDlgType type, TMsgDlgButtons buttons)>;

/// Replaces the message boxes and returns those before. Tests answer them this way; a host with windows calls
/// UseMessageBoxes() (core/WidgetBoxes.h).
TMessageBox SetMessageBox(TMessageBox box);

/// Shows a message box. Raises EInvalidOperation when nothing was set to show it.
TMsgDlgBtn MessageDlg(const QString &text, TMsgDlgType type, TMsgDlgButtons buttons);

} // namespace Zelmar01
