#pragma once

#include <Zelmar01/printing/PrinterCodes.h>
#include <Zelmar01/printing/PrnCodeDialog.h>

#include <QDialog>

#include <string>

class QButtonGroup;
class QComboBox;
class QPushButton;

namespace Zelmar01 {

class TPrnCodeBox;
class TPrnCodeGroup;
class TPrnCodePanel;
enum class TCodeNotation;

/// The dialog in which a user edits the code sets of a TDosPrint, one printer type at a time, as decimal or
/// hexadecimal lists or as characters. It works on a copy that it hands back when he confirms.
///
/// A box is checked when the focus goes from it to another widget of the dialog but "Annuler"; a malformed
/// one gets the focus back and its error goes to the exception display. So do the errors of everything else
/// that the user does here; the methods raise theirs when a host calls them.
///
/// TDosPrint::EditPrinterCodes() shows it in a host that called UsePrinterCodesDialog() (UsePrnCode.h).
class TfmPrnCode : public QDialog
{
    Q_OBJECT
public:
    /// With `send`, the user can send the code of the box that he is in to the printer; without it there is
    /// no button for that.
    explicit TfmPrnCode(QWidget *parent = nullptr, TCodeSending send = {});

    /// Shows the dialog until the user closes it, first with the set of `type`. Returns whether he confirmed,
    /// and only then changes `codes`. The dialog is freed in every case (deleteLater), so it is used once.
    bool Execute(TPrinterCodes &codes, TPrinterType type);

    /// Fills the boxes from the set that is shown, in the notation in force.
    void UpdateDisplay();
    /// Takes the boxes into the set that is shown, at most 20 bytes each. Raises EConvertError for a
    /// malformed box, which gets the focus; the boxes before it, in the order of PrinterCodeFields(), are
    /// taken.
    void WriteCodes();

    /// Shows the set of the type that the list says. With a sender, the boxes are taken into the set shown
    /// before; when one is malformed the list goes back to that set and EConvertError is raised.
    void PrinterComboChange(QObject *Sender);
    /// Takes the boxes and shows them in the notation that the radio buttons say. When one is malformed they
    /// go back to the notation in force and EConvertError is raised.
    void RgNotationClick();
    /// Checks a box, unless "Annuler" has the focus. Raises EConvertError when it is malformed and gives it
    /// the focus.
    void ZoneOnEditExit(QObject *Sender);
    /// Takes the boxes and closes the dialog as confirmed. Raises EConvertError.
    void OKBtnClick();
    /// Closes the dialog as cancelled.
    void btnCancelClick();

protected:
    void changeEvent(QEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    QLayout *makeHead();
    QLayout *makeFoot();
    void watch(TPrnCodeBox *box);
    void checkLeft();
    void showType(TPrinterType type);
    std::string codeIn(TPrnCodeBox &box);
    void sendCode();
    void takeColours();
    template<class Work>
    void userDoes(Work work);

    TPrinterCodes m_codes{};
    TPrinterType m_type{};
    TCodeNotation m_notation;
    TCodeSending m_send;
    QComboBox *m_types = nullptr;
    TPrnCodeGroup *m_group;
    TPrnCodePanel *m_panel;
    QButtonGroup *m_notations = nullptr;
    QPushButton *m_cancel = nullptr;
    TPrnCodeBox *m_shown = nullptr; ///< the box that the focus is in or was in last
    QList<TPrnCodeBox *> m_left;    ///< boxes that are still to be checked
};

} // namespace Zelmar01
