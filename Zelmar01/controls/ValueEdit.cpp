#include <Zelmar01/controls/ValueEdit.h>

#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/core/WidgetBoxes.h>
#include <Zelmar01/data/binding/LeaveCheck.h>

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>

#include <utility>

namespace Zelmar01 {

TValueEdit::TValueEdit(QWidget *parent) : QLineEdit(parent)
{
    UseMessageBoxes();
    m_leave = new TLeaveCheck(
        this, [this] { finish(); }, [this] { return m_typed; });
    connect(this, &QLineEdit::textEdited, this, [this] {
        m_typed = true;
        emit OnChange();
    });
}

QVariant TValueEdit::EditValue() const
{
    return m_typed ? valueOf(text()) : m_value;
}

void TValueEdit::setEditValue(const QVariant &value)
{
    const auto before = std::exchange(m_value, value.isValid() ? held(value) : value);
    m_typed = false;
    showValue();
    if (m_value != before)
        emit OnEditValueChanged();
}

void TValueEdit::choose(const QVariant &value)
{
    const auto before = std::exchange(m_value, value);
    m_typed = false;
    showValue();
    if (m_value == before)
        return;
    emit OnChange();
    emit OnEditValueChanged();
}

void TValueEdit::finish()
{
    if (m_typed)
        setEditValue(valueOf(text()));
}

void TValueEdit::leaveToBinding()
{
    delete std::exchange(m_leave, nullptr);
}

void TValueEdit::showValue()
{
    if (m_typed)
        return;
    const bool wasAllSelected = hasSelectedText() && selectedText() == displayText();
    const auto mask = m_typing && !isReadOnly() ? typingMask() : QString();
    const auto shown = textOf(m_value, m_typing && !isReadOnly());
    if (mask != inputMask())
        setInputMask(mask);
    if (shown != text())
        setText(shown);
    if (m_typing && wasAllSelected)
        selectAll();
    else if (!m_typing)
        setCursorPosition(0);
}

void TValueEdit::changeEvent(QEvent *event)
{
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::LocaleChange || event->type() == QEvent::ReadOnlyChange)
        showValue();
}

void TValueEdit::focusInEvent(QFocusEvent *event)
{
    m_typing = true;
    showValue();
    QLineEdit::focusInEvent(event);
    m_comesByClick = event->reason() == Qt::MouseFocusReason;
}

// The edit's own menu and another window are no leaving.
void TValueEdit::focusOutEvent(QFocusEvent *event)
{
    QLineEdit::focusOutEvent(event);
    const auto reason = event->reason();
    if (reason == Qt::PopupFocusReason || reason == Qt::ActiveWindowFocusReason ||
        reason == Qt::MenuBarFocusReason)
        return;
    m_typing = false;
    showValue();
}

void TValueEdit::mousePressEvent(QMouseEvent *event)
{
    QLineEdit::mousePressEvent(event);
    m_comesByClick = m_comesByClick && event->button() == Qt::LeftButton;
}

void TValueEdit::mouseReleaseEvent(QMouseEvent *event)
{
    QLineEdit::mouseReleaseEvent(event);
    if (std::exchange(m_comesByClick, false) && !hasSelectedText())
        selectAll();
}

void TValueEdit::keyPressEvent(QKeyEvent *event)
{
    if (!takesKey(*event))
        QLineEdit::keyPressEvent(event);
}

bool TValueEdit::takesKey(const QKeyEvent &event)
{
    if (event.matches(QKeySequence::Paste)) {
        paste();
        return true;
    }
    switch (event.key()) {
    case Qt::Key_Escape:
        if (!std::exchange(m_typed, false))
            return false;
        showValue();
        selectAll();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter: {
        // A refused text must not reach the default button of a dialog.
        bool isDone = false;
        ShowingExceptions([&] {
            finish();
            isDone = true;
        });
        return !isDone;
    }
    default:
        return false;
    }
}

void TValueEdit::paste()
{
    if (!isReadOnly() && !takePasted(QApplication::clipboard()->text()))
        QLineEdit::paste();
}

void TValueEdit::contextMenuEvent(QContextMenuEvent *event)
{
    auto *menu = createStandardContextMenu();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (auto *action : menu->actions())
        if (action->text().section(QLatin1Char('\t'), 0, 0) == QLineEdit::tr("&Paste")) {
            action->disconnect(this);
            connect(action, &QAction::triggered, this, &TValueEdit::paste);
        }
    menu->popup(event->globalPos());
}

void TValueEdit::dropEvent(QDropEvent *event)
{
    if (!isReadOnly() && event->source() != this && takePasted(event->mimeData()->text()))
        event->acceptProposedAction();
    else
        QLineEdit::dropEvent(event);
}

} // namespace Zelmar01
