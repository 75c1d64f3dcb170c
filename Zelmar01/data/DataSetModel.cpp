#include <Zelmar01/data/DataSetModel.h>

#include <QLocale>

namespace Zelmar01 {

namespace {

bool isNumber(TFieldType type)
{
    return type == ftInteger || type == ftFloat || type == ftBCD;
}

} // namespace

QString DisplayTextOf(const QVariant &value, const QLocale &locale)
{
    switch (value.userType()) {
    case QMetaType::QDate:
        return locale.toString(value.toDate(), QLocale::ShortFormat);
    case QMetaType::QTime:
        return locale.toString(value.toTime(), QLocale::ShortFormat);
    case QMetaType::QDateTime:
        return locale.toString(value.toDateTime(), QLocale::ShortFormat);
    case QMetaType::Double:
        return locale.toString(value.toDouble(), 'g', QLocale::FloatingPointShortest);
    default:
        return value.userType() == qMetaTypeId<TDecimal>()
                   ? value.value<TDecimal>().ToText().replace(u'.', locale.decimalPoint())
                   : TextOfValue(value);
    }
}

TDataSetModel::TDataSetModel(QObject *parent) : QAbstractTableModel(parent) {}

void TDataSetModel::setDataSet(TDataSet *dataSet)
{
    if (m_dataSet)
        m_dataSet->disconnect(this);
    m_dataSet = dataSet;
    if (dataSet) {
        connect(dataSet, &TDataSet::RowsReset, this, &TDataSetModel::reset);
        connect(dataSet, &QObject::destroyed, this, &TDataSetModel::reset);
        connect(dataSet, &TDataSet::RowAboutToBeInserted, this,
                [this](int place) { beginInsertRows({}, place, place); });
        connect(dataSet, &TDataSet::RowInserted, this, [this] {
            ++m_rows;
            endInsertRows();
        });
        connect(dataSet, &TDataSet::RowAboutToBeRemoved, this,
                [this](int place) { beginRemoveRows({}, place, place); });
        connect(dataSet, &TDataSet::RowRemoved, this, [this] {
            --m_rows;
            endRemoveRows();
        });
        connect(dataSet, &TDataSet::RowChanged, this,
                [this](int place) { emit dataChanged(index(place, 0), index(place, m_columns - 1)); });
        connect(dataSet, &TDataSet::FieldChanged, this, [this](TField *field) {
            const auto changed = index(m_dataSet->ShownPlace(), field->Index());
            emit dataChanged(changed, changed);
        });
    }
    reset();
}

void TDataSetModel::reset()
{
    beginResetModel();
    const bool open = m_dataSet && m_dataSet->Active();
    m_rows = open ? m_dataSet->ShownCount() : 0;
    m_columns = open ? m_dataSet->Fields().Count() : 0;
    endResetModel();
}

int TDataSetModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_rows;
}

int TDataSetModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_columns;
}

QVariant TDataSetModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    switch (role) {
    case Qt::EditRole:
        return m_dataSet->ValueAt(index.row(), index.column());
    case Qt::DisplayRole:
        return DisplayTextOf(m_dataSet->ValueAt(index.row(), index.column()), QLocale());
    case Qt::TextAlignmentRole:
        return isNumber(m_dataSet->Fields()[index.column()].DataType())
                   ? QVariant(Qt::AlignRight | Qt::AlignVCenter)
                   : QVariant();
    default:
        return {};
    }
}

QVariant TDataSetModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole || orientation != Qt::Horizontal || section < 0 || section >= m_columns)
        return QAbstractTableModel::headerData(section, orientation, role);
    return m_dataSet->Fields()[section].DisplayLabel();
}

} // namespace Zelmar01
