#include <Zelmar01/data/DataSource.h>

namespace Zelmar01 {

TDataSource::TDataSource(QObject *owner) : TComponent(owner) {}

void TDataSource::setDataSet(TDataSet *dataSet)
{
    if (m_dataSet == dataSet)
        return;
    if (m_dataSet)
        m_dataSet->disconnect(this);
    m_dataSet = dataSet;
    if (dataSet) {
        const auto changed = [this] { emit OnDataChange(this, nullptr); };
        connect(dataSet, &TDataSet::StateChanged, this, [this] { emit OnStateChange(this); });
        connect(dataSet, &TDataSet::CursorMoved, this, changed);
        connect(dataSet, &TDataSet::RowsReset, this, changed);
        connect(dataSet, &TDataSet::RowChanged, this, changed);
        connect(dataSet, &TDataSet::FieldChanged, this,
                [this](TField *field) { emit OnDataChange(this, field); });
        connect(dataSet, &TDataSet::UpdateRecord, this,
                [this](TDataSet *, QString &refusal) { emit OnUpdateData(this, refusal); });
        connect(dataSet, &QObject::destroyed, this, [this] {
            emit DataSetReplaced();
            emit OnStateChange(this);
            emit OnDataChange(this, nullptr);
        });
    }
    emit DataSetReplaced();
    emit OnStateChange(this);
    emit OnDataChange(this, nullptr);
}

void TDataSource::setAutoEdit(bool autoEdit)
{
    m_autoEdit = autoEdit;
    emit AutoEditChanged();
}

bool TDataSource::Edit()
{
    if (State() == dsBrowse && m_autoEdit && m_dataSet->CanModify())
        m_dataSet->Edit();
    return State() == dsEdit || State() == dsInsert;
}

} // namespace Zelmar01
