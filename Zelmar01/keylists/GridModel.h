#pragma once

#include <Zelmar01/data/DataSource.h>
#include <Zelmar01/keylists/GridColumns.h>

#include <QAbstractTableModel>
#include <QPointer>

namespace Zelmar01 {

/// The rows of a dataset in the columns of a grid, as a Qt item model: Qt::EditRole gives the value,
/// Qt::DisplayRole its text in the default locale, Qt::CheckStateRole the box of a boolean. It only reads.
class TGridModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    /// The columns are owned by the caller, who owns the model too.
    TGridModel(TGridColumns &columns, QObject *owner);

    TDataSet *DataSet() const { return m_dataSet; }
    /// Null for none.
    void setDataSet(TDataSet *dataSet);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

    static Qt::Alignment AlignmentOf(TFieldType type);

signals:
    /// The dataset's rows are about to change, and have changed: what a view does with its current row
    /// meanwhile is not the user's doing.
    void OnRowsChanging();
    void OnRowsChanged();

private:
    void reset();

    TGridColumns &m_columns;
    QPointer<TDataSet> m_dataSet;
    int m_rows = 0; // what the views have been told
    bool m_resetting = false;
};

} // namespace Zelmar01
