#include "GridModel.h"

#include "CellText.h"

#include <QLocale>

namespace Zelmar01 {

TGridModel::TGridModel(TGridColumns &columns, QObject *owner) : QAbstractTableModel(owner), m_columns(columns)
{
    // The fields of another dataset bring their columns while the rows are reset.
    connect(&columns, &TGridColumns::OnAboutToReset, this, [this] {
        if (m_resetting)
            return;
        emit OnRowsChanging();
        beginResetModel();
    });
    connect(&columns, &TGridColumns::OnReset, this, [this] {
        if (m_resetting)
            return;
        endResetModel();
        emit OnRowsChanged();
    });
    connect(&columns, &TGridColumns::OnColumnChange, this, [this](const TGridColumn *column) {
        const int place = column->Index();
        emit headerDataChanged(Qt::Horizontal, place, place);
    });
}

void TGridModel::setDataSet(TDataSet *dataSet)
{
    if (m_dataSet)
        m_dataSet->disconnect(this);
    m_dataSet = dataSet;
    if (dataSet) {
        connect(dataSet, &TDataSet::RowsReset, this, &TGridModel::reset);
        connect(dataSet, &QObject::destroyed, this, &TGridModel::reset);
        connect(dataSet, &TDataSet::RowAboutToBeInserted, this, [this](int place) {
            emit OnRowsChanging();
            beginInsertRows({}, place, place);
        });
        connect(dataSet, &TDataSet::RowInserted, this, [this] {
            ++m_rows;
            endInsertRows();
            emit OnRowsChanged();
        });
        connect(dataSet, &TDataSet::RowAboutToBeRemoved, this, [this](int place) {
            emit OnRowsChanging();
            beginRemoveRows({}, place, place);
        });
        connect(dataSet, &TDataSet::RowRemoved, this, [this] {
            --m_rows;
            endRemoveRows();
            emit OnRowsChanged();
        });
        const auto changed = [this](int place) {
            emit dataChanged(index(place, 0), index(place, columnCount() - 1));
        };
        connect(dataSet, &TDataSet::RowChanged, this, changed);
        connect(dataSet, &TDataSet::FieldChanged, this,
                [this, changed] { changed(m_dataSet->ShownPlace()); });
    }
    reset();
}

void TGridModel::reset()
{
    emit OnRowsChanging();
    beginResetModel();
    m_resetting = true;
    m_rows = m_dataSet && m_dataSet->Active() ? m_dataSet->ShownCount() : 0;
    m_columns.Follow(m_dataSet);
    m_resetting = false;
    endResetModel();
    emit OnRowsChanged();
}

int TGridModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_rows;
}

int TGridModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_columns.Count();
}

Qt::Alignment TGridModel::AlignmentOf(TFieldType type)
{
    const bool isNumber = type == ftInteger || type == ftFloat || type == ftBCD;
    return Qt::AlignVCenter | (isNumber            ? Qt::AlignRight
                               : type == ftBoolean ? Qt::AlignHCenter
                                                   : Qt::AlignLeft);
}

QVariant TGridModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const auto *field = m_columns[index.column()].Field();
    if (!field)
        return {};
    switch (role) {
    case Qt::EditRole:
        return m_dataSet->ValueAt(index.row(), field->Index());
    case Qt::DisplayRole:
        return CellText(m_dataSet->ValueAt(index.row(), field->Index()), field->DataType(), QLocale());
    case Qt::TextAlignmentRole:
        return QVariant(AlignmentOf(field->DataType()));
    case Qt::CheckStateRole:
        if (field->DataType() == ftBoolean) {
            const auto value = m_dataSet->ValueAt(index.row(), field->Index());
            return !value.isValid() ? Qt::PartiallyChecked : value.toBool() ? Qt::Checked : Qt::Unchecked;
        }
        return {};
    default:
        return {};
    }
}

QVariant TGridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= m_columns.Count())
        return QAbstractTableModel::headerData(section, orientation, role);
    if (role == Qt::DisplayRole)
        return m_columns[section].Title();
    if (role == Qt::TextAlignmentRole)
        if (const auto *field = m_columns[section].Field())
            return QVariant(AlignmentOf(field->DataType()));
    return {};
}

Qt::ItemFlags TGridModel::flags(const QModelIndex &index) const
{
    auto flags = QAbstractTableModel::flags(index);
    if (index.isValid() && m_columns[index.column()].IsWritable())
        flags |= Qt::ItemIsEditable;
    return flags;
}

} // namespace Zelmar01
