#include <Zelmar01/controls/zmPickEdit.h>

#include <Zelmar01/controls/DropDown.h>

#include <QKeyEvent>
#include <QLineEdit>
#include <QWheelEvent>

namespace Zelmar01 {

TzmPickEdit::TzmPickEdit(QWidget *parent) : TWithOwnFont(parent), m_dropDown(new TDropDown(this))
{
    setFocusPolicy(Qt::StrongFocus); // not by the wheel
    setEditable(true);
    setInsertPolicy(NoInsert);
    resetDropDownRows();
}

bool TzmPickEdit::DropDownSizeable() const
{
    return m_dropDown->Sizeable;
}

void TzmPickEdit::setDropDownSizeable(bool sizeable)
{
    m_dropDown->Sizeable = sizeable;
}

void TzmPickEdit::setReadOnly(bool readOnly)
{
    m_readOnly = readOnly;
    if (lineEdit())
        lineEdit()->setReadOnly(readOnly);
}

void TzmPickEdit::showPopup()
{
    if (m_readOnly)
        return;
    QComboBox::showPopup();
    m_dropDown->Opened();
}

// The arrow keys would pick another entry.
void TzmPickEdit::keyPressEvent(QKeyEvent *event)
{
    const bool moves = event->key() == Qt::Key_Up || event->key() == Qt::Key_Down ||
                       event->key() == Qt::Key_PageUp || event->key() == Qt::Key_PageDown;
    if (m_readOnly && moves)
        event->ignore();
    else
        QComboBox::keyPressEvent(event);
}

// A wheel that scrolls the form must not change the text.
void TzmPickEdit::wheelEvent(QWheelEvent *event)
{
    if (m_readOnly || !hasFocus())
        event->ignore();
    else
        QComboBox::wheelEvent(event);
}

} // namespace Zelmar01
