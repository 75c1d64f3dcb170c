// What the keys and the mouse do in a grid.

#include "GridEditor.h"

#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/keylists/zmGrid.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>

namespace Zelmar01 {

namespace {

constexpr int sortKey = Qt::Key_T; // with Ctrl

bool isTyping(const QKeyEvent &event)
{
    // AltGr is Ctrl and Alt on some systems.
    const auto modifiers = event.modifiers() & (Qt::ControlModifier | Qt::AltModifier);
    return !event.text().isEmpty() && event.text()[0].isPrint() &&
           (!modifiers || modifiers == (Qt::ControlModifier | Qt::AltModifier));
}

} // namespace

// Runs what the user asked for; true unless it raised, which the user is told.
bool TzmGrid::tryTo(const std::function<void()> &work)
{
    bool isDone = false;
    ShowingExceptions([&] {
        work();
        isDone = true;
    });
    return isDone;
}

void TzmGrid::keyPressEvent(QKeyEvent *event)
{
    event->accept();
    const bool isPlainDelete = event->key() == Qt::Key_Delete && !(event->modifiers() & Qt::ControlModifier);
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        tryTo([this] { pressEnter(); });
    } else if (isPlainDelete) {
        if (m_deleteEnabled)
            tryTo([this] { Supprimer(); });
    } else {
        bool isTaken = true; // also when it was refused
        tryTo([&] { isTaken = takesKey(*event); });
        if (!isTaken)
            TLongTableView::keyPressEvent(event);
    }
}

bool TzmGrid::takesKey(QKeyEvent &event)
{
    const bool ctrl = event.modifiers() & Qt::ControlModifier;
    if (event.matches(QKeySequence::Copy)) {
        QGuiApplication::clipboard()->setText(CopiedText());
        return true;
    }
    if (event.matches(QKeySequence::SelectAll) && m_options & dgMultiSelect) {
        selectionModel()->select({model()->index(0, 0), model()->index(model()->rowCount() - 1, 0)},
                                 QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        viewport()->update();
        return true;
    }
    switch (event.key()) {
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        if (!tab(event.key() == Qt::Key_Tab ? 1 : -1))
            event.ignore(); // the focus goes on
        return true;
    case Qt::Key_Insert:
        InsererLigne();
        return true;
    case Qt::Key_Delete:
        SupprimerLignes();
        return true;
    case Qt::Key_F2:
        openEditor();
        return true;
    case Qt::Key_Escape:
        if (!isOpen() || (DataSet()->State() == dsBrowse && !m_editor->IsOpen()))
            return false;
        escape();
        return true;
    case Qt::Key_Space:
        if (!ctrl || !(m_options & dgMultiSelect) || !isOpen())
            break;
        moveTo(DataSet()->ShownPlace(), ChooseToo);
        return true;
    case sortKey:
        if (!ctrl || m_column >= m_columns.Count())
            break;
        TitleClick(m_columns[m_column]);
        return true;
    default:
        break;
    }
    if (takesRowKey(event) || takesColumnKey(event))
        return true;
    return isTyping(event) && type(event.text());
}

bool TzmGrid::takesRowKey(QKeyEvent &event)
{
    const auto modifiers = event.modifiers() & ~Qt::ControlModifier;
    const auto choosing = choosingOf(modifiers);
    const bool wholeTable = event.modifiers() & Qt::ControlModifier || m_options & dgRowSelect;
    const int most = isOpen() ? DataSet()->ShownCount() : 0;
    switch (event.key()) {
    case Qt::Key_Up:
        moveBy(-1, choosing);
        return true;
    case Qt::Key_Down:
        if (choosing == ChooseCurrent && isOpen() && DataSet()->ShownPlace() == DataSet()->ShownCount() - 1 &&
            canChange())
            InsererLigne();
        else
            moveBy(1, choosing);
        return true;
    case Qt::Key_PageUp:
        moveBy(-rowsInPage(), choosing);
        return true;
    case Qt::Key_PageDown:
        moveBy(rowsInPage(), choosing);
        return true;
    case Qt::Key_Home:
    case Qt::Key_End:
        if (!wholeTable)
            return false;
        moveBy(event.key() == Qt::Key_Home ? -most : most, choosing);
        return true;
    default:
        return false;
    }
}

bool TzmGrid::takesColumnKey(const QKeyEvent &event)
{
    const bool rows = m_options & dgRowSelect;
    const int forward = isRightToLeft() ? -1 : 1;
    switch (event.key()) {
    case Qt::Key_Left:
    case Qt::Key_Right: {
        const int step = event.key() == Qt::Key_Right ? forward : -forward;
        if (rows) {
            moveBy(step);
            return true;
        }
        int next = m_column + step;
        while (next >= 0 && next < m_columns.Count() && !m_columns[next].IsShown())
            next += step;
        if (next >= 0 && next < m_columns.Count())
            setSelectedIndex(next);
        return true;
    }
    case Qt::Key_Home:
        setSelectedIndex(0);
        return true;
    case Qt::Key_End:
        setSelectedIndex(nearestShown(m_columns.Count() - 1, -1));
        return true;
    default:
        return false;
    }
}

void TzmGrid::takeEditorKey(QKeyEvent &event)
{
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        tryTo([this] {
            m_editor->Commit();
            if (!(m_options & dgAlwaysShowEditor))
                m_editor->Close();
            pressEnter();
        });
        break;
    case Qt::Key_F2:
        break;
    case Qt::Key_Left:
    case Qt::Key_Right:
        if (!(m_options & dgAlwaysShowEditor))
            return event.ignore();
        [[fallthrough]];
    default:
        keyPressEvent(&event);
    }
}

// The mouse.

void TzmGrid::mousePressEvent(QMouseEvent *event)
{
    event->accept();
    const auto index = indexAt(event->position().toPoint());
    if (!index.isValid())
        return;
    // What it holds was refused when it lost the focus to this click.
    if (m_editor->IsChanged() && m_editor->hasFocus())
        return;
    const bool wasCurrent = index == currentIndex() && hasFocusInside();
    tryTo([&] {
        m_editor->Commit();
        moveTo(index.row(), choosingOf(event->modifiers()));
        setSelectedIndex(index.column());
        if (!wasCurrent || event->button() != Qt::LeftButton || event->modifiers())
            return;
        index.data(Qt::CheckStateRole).isValid() ? toggle() : openEditor();
    });
    emit pressed(index);
}

void TzmGrid::mouseMoveEvent(QMouseEvent *event)
{
    const auto index = indexAt(event->position().toPoint());
    if (event->buttons() & Qt::LeftButton && m_options & dgMultiSelect && index.isValid() &&
        index.row() != currentIndex().row())
        tryTo([&] { moveTo(index.row(), ChooseUpTo); });
}

void TzmGrid::mouseReleaseEvent(QMouseEvent *event)
{
    const auto index = indexAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && index.isValid() && index == currentIndex())
        emit clicked(index);
}

void TzmGrid::mouseDoubleClickEvent(QMouseEvent *event)
{
    const auto index = indexAt(event->position().toPoint());
    if (event->button() != Qt::LeftButton || !index.isValid() || index != currentIndex())
        return;
    tryTo([this] { openEditor(); });
    emit doubleClicked(index);
}

} // namespace Zelmar01
