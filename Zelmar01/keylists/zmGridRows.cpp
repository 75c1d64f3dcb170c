// The rows of a grid: going to them, choosing, copying, inserting and deleting them.

#include "GridEditor.h"

#include <Zelmar01/core/MessageBoxes.h>
#include <Zelmar01/data/binding/FieldText.h>
#include <Zelmar01/keylists/zmGrid.h>

#include <QHeaderView>

#include <algorithm>

namespace Zelmar01 {

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

bool TzmGrid::canChange() const
{
    return isOpen() && !m_readOnly && m_options & dgEditing && !(m_options & dgRowSelect) &&
           DataSet()->CanModify();
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
    const auto question = chosen.size() > 1 ? tr("Supprimer les %1 lignes choisies ?").arg(chosen.size())
                                            : tr("Supprimer la ligne ?");
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

} // namespace Zelmar01
