#pragma once

#include <QComboBox>
#include <QPointer>
#include <QSizeGrip>

namespace Zelmar01 {

/// The size of a combo box's drop-down list: as wide as its texts if wanted, and with a grip by which the
/// user gives it another size, which stays for the next time.
class TDropDown : public QObject
{
public:
    /// `box` owns it.
    explicit TDropDown(QComboBox *box) : QObject(box) {}

    bool AutoSize = false, Sizeable = true;

    /// To be called when the box has opened its list.
    void Opened();

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QComboBox &box() const { return *static_cast<QComboBox *>(parent()); }
    int widthOfTexts() const;

    QPointer<QSizeGrip> m_grip;
    QSize m_chosen; // by the user
};

} // namespace Zelmar01
