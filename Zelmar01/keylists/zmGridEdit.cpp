// The cells of a grid: editing them in place, and the way that Enter goes.

#include "GridEditor.h"

#include <Zelmar01/keylists/zmGrid.h>

#include <QFocusEvent>
#include <QInputMethodEvent>
#include <QTimer>

namespace Zelmar01 {

bool TzmGrid::canEdit() const
{
    return m_column < m_columns.Count() && m_columns[m_column].IsWritable() && canChange() &&
           (m_source->AutoEdit() || m_source->State() != dsBrowse);
}

bool TzmGrid::EditorMode() const
{
    return m_editor->IsOpen();
}

void TzmGrid::setEditorMode(bool open)
{
    if (open)
        return openEditor();
    m_editor->Commit();
    m_editor->Close();
}

void TzmGrid::openEditor()
{
    if (m_editor->IsOpen() || !currentIndex().isValid() || !canEdit())
        return;
    if (const auto type = m_columns[m_column].Field()->DataType(); type == ftBoolean || type == ftBytes)
        return; // a box has no text, and bytes none that could be typed
    scrollTo(currentIndex());
    m_editor->Open(m_columns[m_column]);
    placeEditor();
}

void TzmGrid::placeEditor()
{
    if (m_editor->IsOpen())
        m_editor->setGeometry(
            visualRect(currentIndex())
                .adjusted(0, 0, m_options & dgColLines ? -1 : 0, m_options & dgRowLines ? -1 : 0));
}

void TzmGrid::showEditorAlways()
{
    if (!(m_options & dgAlwaysShowEditor) || !hasFocusInside())
        return;
    openEditor();
    if (hasFocus())
        m_editor->TakeFocus();
}

// A box is changed at once.
void TzmGrid::toggle()
{
    if (!canEdit() || !m_source->Edit())
        return;
    auto &field = *m_columns[m_column].Field();
    field.setAsBoolean(!field.AsBoolean());
}

bool TzmGrid::type(const QString &text)
{
    if (isOpen() && DataSet()->ShownCount() == 0)
        InsererLigne();
    const bool isBox = currentIndex().data(Qt::CheckStateRole).isValid();
    if (isBox && text == u" ")
        toggle();
    if (isBox)
        return text == u" ";
    openEditor();
    if (m_editor->IsOpen())
        m_editor->Type(text);
    return m_editor->IsOpen();
}

void TzmGrid::escape()
{
    const bool restored = m_editor->Restore();
    if (m_editor->IsOpen() && (restored || !(m_options & dgAlwaysShowEditor))) {
        if (!(m_options & dgAlwaysShowEditor))
            m_editor->Close();
    } else if (isOpen()) {
        DataSet()->Cancel();
    }
}

// The way of Enter.

void TzmGrid::pressEnter()
{
    if (m_options & dgRowSelect)
        return;
    EditingChanged();
    m_enterPending = true;
}

void TzmGrid::EditingChanged()
{
    const int count = m_columns.Count();
    const auto firstFrom = [&](int column) {
        while (column < count && !(m_columns[column].IsShown() && m_columns[column].IsWritable()))
            ++column;
        return column;
    };
    int column = m_column + 1; // the current position, which counts the indicator
    if (column > count || !m_enterPending)
        return;
    column = firstFrom(column);
    if (column >= count)
        column = ValiderInsererLigneSaisie();
    if (column >= count) {
        if (isOpen())
            DataSet()->Next();
        m_enterPending = false;
        column = firstFrom(1);
    }
    setSelectedIndex(column);
}

int TzmGrid::ValiderInsererLigneSaisie()
{
    return m_column + 1 + 1;
}

// The focus.

void TzmGrid::focusInEvent(QFocusEvent *event)
{
    TLongTableView::focusInEvent(event);
    viewport()->update();
    tryTo([this] { showEditorAlways(); });
}

void TzmGrid::focusOutEvent(QFocusEvent *event)
{
    TLongTableView::focusOutEvent(event);
    viewport()->update();
}

// The user has left the grid.
void TzmGrid::leave()
{
    if (!hasFocusInside() && m_options & dgCancelOnExit && isNewAndEmpty())
        DataSet()->Cancel();
    // When the editor has had its turn to write.
    QTimer::singleShot(0, this, [this] {
        if (!hasFocusInside() && !m_editor->IsChanged())
            m_editor->Close();
    });
}

// A character that several keys make up. QAbstractItemView would take it for a search.
void TzmGrid::inputMethodEvent(QInputMethodEvent *event)
{
    const auto text = event->commitString();
    if (!text.isEmpty())
        tryTo([&] { type(text); });
}

} // namespace Zelmar01
