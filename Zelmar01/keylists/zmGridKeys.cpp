// What a user does in a grid, with the keyboard and the mouse.

#include "GridEditor.h"

#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/core/MessageBoxes.h>
#include <Zelmar01/data/binding/FieldText.h>
#include <Zelmar01/keylists/zmGrid.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScopedValueRollback>

#include <algorithm>

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

// Moving and choosing.

TzmGrid::TChoosing TzmGrid::choosingOf(Qt::KeyboardModifiers modifiers) const
{
    if (!(m_options & dgMultiSelect))
        return ChooseCurrent;
    return modifiers & Qt::ShiftModifier     ? ChooseUpTo
           : modifiers & Qt::ControlModifier ? ChooseToo
                                             : ChooseCurrent;
}

void TzmGrid::moveTo(int place, TChoosing choosing)
{
    if (!isOpen())
        return;
    auto &rows = *DataSet();
    const int anchor = m_anchor;
    const auto chosen = selectionModel()->selection();
    if (place != rows.ShownPlace()) {
        // Rows may change their places when the record being edited is left.
        if (rows.State() == dsBrowse)
            rows.setRecNo(place + 1);
        else if (!rows.GotoBookmark(rows.BookmarkAt(place)))
            return;
    }
    const int current = rows.ShownPlace(), last = m_columns.Count() - 1;
    const auto range = [&](int a, int b) {
        return QItemSelection(model()->index(std::min(a, b), 0), model()->index(std::max(a, b), last));
    };
    switch (choosing) {
    case ChooseCurrent:
        m_anchor = current;
        selectionModel()->select(range(current, current), QItemSelectionModel::ClearAndSelect);
        break;
    case ChooseUpTo:
        m_anchor = anchor;
        selectionModel()->select(range(anchor, current), QItemSelectionModel::ClearAndSelect);
        break;
    case ChooseToo:
        m_anchor = current;
        selectionModel()->select(chosen, QItemSelectionModel::ClearAndSelect);
        selectionModel()->select(range(current, current), QItemSelectionModel::Toggle);
        break;
    }
    viewport()->update();
    verticalHeader()->viewport()->update();
}

void TzmGrid::moveBy(int rows, TChoosing choosing)
{
    if (!isOpen() || DataSet()->ShownCount() == 0)
        return;
    if (isNewAndEmpty() && rows != 0) { // it goes; the last row takes its place
        const bool wasLast = DataSet()->ShownPlace() == DataSet()->ShownCount() - 1;
        if (wasLast && rows > 0)
            return;
        DataSet()->Cancel();
        if (wasLast)
            ++rows;
    }
    moveTo(std::clamp(DataSet()->ShownPlace() + rows, 0, DataSet()->ShownCount() - 1), choosing);
}

// True when there was a cell to go to.
bool TzmGrid::tab(int step)
{
    if (m_options & dgRowSelect || !isOpen())
        return false;
    int next = m_column + step;
    while (next >= 0 && next < m_columns.Count() && !m_columns[next].IsShown())
        next += step;
    if (next >= 0 && next < m_columns.Count()) {
        setSelectedIndex(next);
        return true;
    }
    const int row = DataSet()->ShownPlace() + step;
    if (row < 0 || (row >= DataSet()->ShownCount() && (!canChange() || isNewAndEmpty())))
        return false;
    row < DataSet()->ShownCount() ? moveBy(step) : InsererLigne();
    setSelectedIndex(step > 0 ? 0 : m_columns.Count() - 1);
    return true;
}

QList<int> TzmGrid::SelectedRows() const
{
    QList<int> rows;
    for (const auto &range : selectionModel()->selection())
        for (int row = range.top(); row <= range.bottom(); ++row)
            rows << row;
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows;
}

QString TzmGrid::CopiedText() const
{
    const auto textOf = [this](int row, int column) {
        const auto *field = m_columns[column].Field();
        if (!field)
            return QString();
        auto text = FieldTextOf(DataSet()->ValueAt(row, field->Index()), field->DataType(), QLocale());
        return text.replace(u'\t', u' ').replace(u'\n', u' ').remove(u'\r');
    };
    const auto rows = SelectedRows();
    if (rows.isEmpty())
        return {};
    if (rows.size() == 1 && !(m_options & dgRowSelect))
        return textOf(rows.first(), m_column);
    QString text;
    for (const int row : rows) {
        QStringList cells;
        for (int column = 0; column < m_columns.Count(); ++column)
            if (m_columns[column].IsShown())
                cells << textOf(row, column);
        text += cells.join(u'\t') + u'\n';
    }
    return text;
}

// Rows.

bool TzmGrid::canChange() const
{
    return isOpen() && !m_readOnly && m_options & dgEditing && !(m_options & dgRowSelect) &&
           DataSet()->CanModify();
}

bool TzmGrid::canEdit() const
{
    return m_column < m_columns.Count() && m_columns[m_column].IsWritable() && canChange() &&
           (m_source->AutoEdit() || m_source->State() != dsBrowse);
}

bool TzmGrid::isNewAndEmpty() const
{
    return isOpen() && DataSet()->State() == dsInsert && !DataSet()->Modified() && !m_editor->IsChanged();
}

void TzmGrid::InsererLigne()
{
    if (canChange() && !isNewAndEmpty())
        DataSet()->Append();
}

void TzmGrid::SupprimerLignes()
{
    const auto chosen = SelectedRows();
    if (chosen.isEmpty() || m_readOnly || !DataSet()->CanModify())
        return;
    const auto question = chosen.size() > 1
                              ? QStringLiteral("Supprimer les %1 lignes choisies ?").arg(chosen.size())
                              : QStringLiteral("Supprimer la ligne ?");
    if (m_options & dgConfirmDelete && MessageDlg(question, mtConfirmation, mbOK | mbCancel) != mbOK)
        return;
    if (chosen.size() == 1)
        return DataSet()->Delete();
    std::vector<TDataSet::TBookmark> rows;
    for (const int row : chosen)
        rows.push_back(DataSet()->BookmarkAt(row));
    for (const auto &row : rows)
        if (DataSet()->GotoBookmark(row))
            DataSet()->Delete();
}

// The user has left the grid.
void TzmGrid::leave()
{
    if (!hasFocusInside() && m_options & dgCancelOnExit && isNewAndEmpty())
        DataSet()->Cancel();
}

// The editor.

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
    if (m_editor->IsOpen() || !currentIndex().isValid() || !canEdit() ||
        m_columns[m_column].Field()->DataType() == ftBoolean)
        return;
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
    if (m_options & dgAlwaysShowEditor && hasFocusInside())
        openEditor();
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

// Keys.

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
        if (!ctrl || !(m_options & dgMultiSelect))
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

} // namespace Zelmar01
