// How titles sort the rows behind a grid.

#include "GridEditor.h"

#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/core/MessageBoxes.h>
#include <Zelmar01/data/ClientDataSet.h>
#include <Zelmar01/data/DataErrors.h>
#include <Zelmar01/data/Query.h>
#include <Zelmar01/keylists/zmGrid.h>

#include <QGuiApplication>

#include <vector>

namespace Zelmar01 {

namespace {

// No field has such a name.
const QString noExpression = QStringLiteral("**--**"), noField = QStringLiteral("--**--");
const QString indexName = QStringLiteral("IDTEMP");

class TWaitCursor
{
public:
    TWaitCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~TWaitCursor() { QGuiApplication::restoreOverrideCursor(); }
    TWaitCursor(const TWaitCursor &) = delete;
    TWaitCursor &operator=(const TWaitCursor &) = delete;
};

/// What a host has said of the fields of a dataset that is closed and opened again.
class TFieldSettings
{
public:
    explicit TFieldSettings(TDataSet &dataSet) : m_dataSet(dataSet)
    {
        for (int i = 0; dataSet.Active() && i < dataSet.Fields().Count(); ++i) {
            const auto &field = dataSet.Fields()[i];
            m_settings.push_back(
                {field.FieldName(), field.DisplayLabel(), field.ReadOnly(), field.Visible()});
        }
    }
    void GiveBack() const
    {
        for (const auto &setting : m_settings)
            if (auto *field = m_dataSet.FindField(setting.Name)) {
                if (field->DisplayLabel() == field->FieldName())
                    field->setDisplayLabel(setting.Label);
                field->setReadOnly(field->ReadOnly() || setting.ReadOnly);
                field->setVisible(field->Visible() && setting.Visible);
            }
    }

private:
    struct TSetting
    {
        QString Name, Label;
        bool ReadOnly, Visible;
    };
    TDataSet &m_dataSet;
    std::vector<TSetting> m_settings;
};

// A step that may fail without stopping the sort.
template<class Step>
void attempt(const QString &failure, Step step)
{
    try {
        step();
    } catch (const std::exception &) {
        MessageDlg(failure, mtCustom, mbOK);
    }
}

} // namespace

void TzmGrid::InitGrid(const QString &expression, const QString &field, const QString &sql, bool enabled)
{
    m_sortKeys = {field.isEmpty() ? noField : field, expression.isEmpty() ? noExpression : expression};
    m_baseSql = sql;
    m_sortEnabled = enabled;
}

void TzmGrid::TitleClick(TGridColumn &column)
{
    emit OnTitleClick(&column);
    if (!m_sortEnabled)
        return;
    if (isOpen())
        DataSet()->MoveBy(0); // posts what is being edited
    m_editor->Close();
    if (auto *query = dynamic_cast<TQuery *>(DataSet()))
        return sortQuery(*query, column);
    auto *rows = dynamic_cast<TClientDataSet *>(DataSet());
    if (DataSet() && !rows)
        throw EDatabaseError(tr("L'ensemble de données « %1 » ne peut pas être trié")
                                 .arg(DataSet()->objectName())
                                 .toStdString());
    m_sortState = NextSortState(m_sortState);
    if (rows)
        TriGrilleColonne(*rows, column.FieldName());
}

void TzmGrid::sortQuery(TQuery &query, TGridColumn &column)
{
    const TWaitCursor wait;
    const int state = NextSortState(m_sortState);
    const int place = column.Index();
    const auto name = column.FieldName();
    const auto *field = column.Field();
    const auto caption = SortedCaption(field ? field->DisplayLabel() : name, state);
    const TFieldSettings settings(query);
    query.Reopen(SortedQuery(m_baseSql, m_sortKeys.OnServer(name), state));
    settings.GiveBack();
    query.First();
    m_sortState = state;
    // A text with other fields than before has brought other columns.
    if (place < m_columns.Count() && m_columns[place].FieldName() == name)
        m_columns[place].setTitle(caption);
}

void TzmGrid::TriGrilleColonne(TClientDataSet &dataSet, const QString &fieldName)
{
    const auto field = m_sortKeys.OnClient(fieldName);
    if (field.isEmpty())
        return;
    const TWaitCursor wait;
    const bool isFirst = m_indexOrder == TIndexOrder();
    const auto order = OrderAfterClick(m_indexOrder, field);
    dataSet.setIndexFieldNames({});
    dataSet.setIndexName({});
    if (isFirst && dataSet.IndexDefs().IndexOf(indexName) < 0) // another grid may have left one
        dataSet.AddIndex(indexName, {}, ixCaseInsensitive);
    attempt(QStringLiteral("TfmPanelVide TriGrilleColonne 01"), [&] {
        if (dataSet.IndexDefs().Count() > 0)
            dataSet.DeleteIndex(indexName);
    });
    attempt(QStringLiteral("TfmPanelVide TriGrilleColonne 02"), [&] {
        if (order.DescFields.isEmpty())
            dataSet.AddIndex(indexName, order.IndexFields, ixCaseInsensitive);
        else
            dataSet.AddIndex(indexName, order.IndexFields, ixDescending, order.DescFields);
        dataSet.setIndexName(indexName);
    });
    m_indexOrder = order;
}

// Gives a client dataset back without the index of the titles.
void TzmGrid::dropIndex()
{
    auto *rows = dynamic_cast<TClientDataSet *>(DataSet());
    if (m_indexOrder == TIndexOrder() || !rows || !rows->Active() || rows->IndexDefs().IndexOf(indexName) < 0)
        return;
    if (rows->IndexName() == indexName)
        rows->setIndexName({});
    rows->DeleteIndex(indexName);
}

} // namespace Zelmar01
