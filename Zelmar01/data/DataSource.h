#pragma once

#include <Zelmar01/data/DataSet.h>

#include <QPointer>

namespace Zelmar01 {

/// The link between a dataset and the controls that show it: controls know the data source, and a host puts
/// another dataset behind all of them in one place. The host owns both.
class TDataSource : public TComponent
{
    Q_OBJECT
    Q_PROPERTY(bool AutoEdit READ AutoEdit WRITE setAutoEdit)
public:
    explicit TDataSource(QObject *owner = nullptr);

    /// Null when none is set, or when it was destroyed.
    TDataSet *DataSet() const { return m_dataSet; }
    void setDataSet(TDataSet *dataSet);

    /// dsInactive without a dataset.
    TDataSetState State() const { return m_dataSet ? m_dataSet->State() : dsInactive; }

    /// Whether a control may bring the dataset into edit state by itself.
    bool AutoEdit() const { return m_autoEdit; }
    void setAutoEdit(bool autoEdit);

    /// Brings the dataset into edit state for a control; false when that is not to be.
    bool Edit();

signals:
    /// Another dataset, or none.
    void DataSetReplaced();
    void AutoEditChanged();
    void OnStateChange(Zelmar01::TDataSource *sender);
    /// Another current record, other rows, or another value: then `field` tells which, else it is null.
    void OnDataChange(Zelmar01::TDataSource *sender, Zelmar01::TField *field);
    /// See TDataSet::UpdateRecord.
    void OnUpdateData(Zelmar01::TDataSource *sender, QString &refusal);

private:
    QPointer<TDataSet> m_dataSet;
    bool m_autoEdit = true;
};

} // namespace Zelmar01
