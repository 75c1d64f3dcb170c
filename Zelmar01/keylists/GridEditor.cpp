#include "GridEditor.h"

#include "GridModel.h"
#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/data/binding/FieldText.h>

#include <QKeyEvent>
#include <QScopedValueRollback>

namespace Zelmar01 {

namespace {

constexpr int longestText = 32767;

// Keys that mean the grid even while a cell is being edited.
bool isForGrid(const QKeyEvent &event)
{
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Escape:
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_F2:
        return true;
    default:
        return false;
    }
}

// An arrow that points out of the text, or finds it chosen as a whole.
bool leadsOut(const QKeyEvent &event, const QLineEdit &editor)
{
    const bool isArrow = event.key() == Qt::Key_Left || event.key() == Qt::Key_Right;
    if (!isArrow || event.modifiers() & ~Qt::KeypadModifier)
        return false;
    if (editor.hasSelectedText())
        return editor.selectedText() == editor.text();
    const bool isBack = (event.key() == Qt::Key_Left) != editor.isRightToLeft();
    return editor.cursorPosition() == (isBack ? 0 : editor.text().size());
}

} // namespace

TGridEditor::TGridEditor(QWidget *viewport)
    : QLineEdit(viewport), m_link(new TFieldLink(this, [this] { write(); }))
{
    hide();
    setFrame(false);
    setTextMargins(2, 0, 2, 0); // with QLineEdit's own margin the text stands where the cell's does
    connect(m_link, &TFieldLink::OnDataChange, this, &TGridEditor::showField);
    connect(this, &QLineEdit::textEdited, this, [this] { ShowingExceptions([this] { m_link->Changed(); }); });
}

void TGridEditor::Open(const TGridColumn &column)
{
    const auto *field = column.Field();
    m_link->setFieldName(column.FieldName());
    m_isOpen = true;
    setMaxLength(field->DataType() == ftString && field->Size() > 0 ? field->Size() : longestText);
    setAlignment(TGridModel::AlignmentOf(field->DataType()));
    setAccessibleName(column.Title());
    showField();
    selectAll();
    show();
    setFocus(Qt::OtherFocusReason);
}

void TGridEditor::Type(const QString &text)
{
    selectAll();
    insert(text);
    ShowingExceptions([this] { m_link->Changed(); });
}

void TGridEditor::TakeFocus()
{
    if (m_isOpen && !m_isClosing)
        setFocus(Qt::OtherFocusReason);
}

void TGridEditor::Close()
{
    const QScopedValueRollback closing(m_isClosing, true);
    m_link->setFieldName({});
    if (hasFocus())
        parentWidget()->setFocus(Qt::OtherFocusReason); // else hide() gives it to any other widget
    m_isOpen = false;
    hide();
}

void TGridEditor::showField()
{
    const auto *field = m_link->Field();
    if (!m_isOpen || m_link->IsChanged() || !field)
        return;
    m_shown = FieldTextOf(field->Value(), field->DataType(), QLocale());
    if (text() != m_shown)
        setText(m_shown);
}

// A text that is what it was leaves the value alone, with all that the text does not show.
void TGridEditor::write()
{
    auto &field = *m_link->Field();
    if (text() != m_shown)
        field.setValue(FieldValueOf(text(), field.DataType(), QLocale()));
}

void TGridEditor::keyPressEvent(QKeyEvent *event)
{
    if (isForGrid(*event) || leadsOut(*event, *this)) {
        event->accept();
        emit OnKey(event);
        if (event->isAccepted())
            return;
    }
    QLineEdit::keyPressEvent(event);
}

// A shortcut of the window must not take the keys that end the editing.
bool TGridEditor::event(QEvent *event)
{
    if (event->type() == QEvent::ShortcutOverride && isForGrid(*static_cast<QKeyEvent *>(event))) {
        event->accept();
        return true;
    }
    return QLineEdit::event(event);
}

} // namespace Zelmar01
