#pragma once

#include <Zelmar01/data/DataSource.h>

#include <QAbstractTableModel>

namespace Zelmar01 {

/// A dataset as a Qt item model, for any Qt view: a row a record, a column a field, with the fields' display
/// labels as titles. Qt::EditRole gives the value, Qt::DisplayRole its text in the default locale, dates in
/// its short form and numbers with the decimals that they have. It only reads; the cursor is the dataset's
/// and does not follow a view.
class TDataSetModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    explicit TDataSetModel(QObject *parent = nullptr);

    TDataSet *DataSet() const { return m_dataSet; }
    void setDataSet(TDataSet *dataSet);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    void reset();

    QPointer<TDataSet> m_dataSet;
    int m_rows = 0, m_columns = 0; // what the views have been told
};

/// A value as a person of that locale reads it.
QString DisplayTextOf(const QVariant &value, const QLocale &locale);

} // namespace Zelmar01
