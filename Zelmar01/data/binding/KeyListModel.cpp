#include <Zelmar01/data/binding/KeyListModel.h>

#include <Zelmar01/core/Exceptions.h>

#include <numeric>

namespace Zelmar01 {

namespace {

TColumn asTexts(TColumn column)
{
    if (column.Type() == ftString)
        return column;
    QStringList texts;
    texts.reserve(static_cast<qsizetype>(column.Count()));
    for (std::size_t row = 0; row < column.Count(); ++row)
        texts << column.AsText(row);
    return TColumn::Of(std::move(texts));
}

} // namespace

TKeyListModel::TKeyListModel(QObject *parent) : QAbstractListModel(parent) {}

void TKeyListModel::Fill(TColumn keys, TColumn texts)
{
    if (keys.Count() != texts.Count())
        throw EInvalidOperation(tr("Une liste doit avoir autant de clés que de textes").toStdString());
    beginResetModel();
    m_keys = std::move(keys);
    m_texts = asTexts(std::move(texts));
    m_byKey.Clear();
    m_byText.Clear();
    endResetModel();
}

void TKeyListModel::Fill(const QStringList &keys, const QStringList &texts)
{
    Fill(TColumn::Of(keys), TColumn::Of(texts));
}

int TKeyListModel::RowOfKey(const QString &key) const
{
    return m_keys.Type() == ftInteger ? rowOfNumber(key) : rowOf(m_byKey, m_keys, key);
}

int TKeyListModel::RowOfText(const QString &text) const
{
    return rowOf(m_byText, m_texts, text);
}

// Keys are compared as texts: "007" is not the key 7, and no key is the empty text.
int TKeyListModel::rowOfNumber(const QString &key) const
{
    bool isNumber = false;
    const qint64 number = key.toLongLong(&isNumber);
    if (!key.isEmpty() && (!isNumber || QString::number(number) != key))
        return -1;
    // A null is kept as the number 0.
    const auto is = [this](int row, qint64 value, bool isNull) {
        const auto place = static_cast<std::size_t>(row);
        return m_keys.Integer(place) == value && m_keys.IsNull(place) == isNull;
    };
    if (!m_byKey.IsBuilt())
        m_byKey.Build(
            Count(), [this](int row) { return HashOf(m_keys.Integer(static_cast<std::size_t>(row))); },
            [&](int a, int b) {
                const auto other = static_cast<std::size_t>(b);
                return is(a, m_keys.Integer(other), m_keys.IsNull(other));
            });
    return m_byKey.Find(HashOf(number), [&](int row) { return is(row, number, key.isEmpty()); });
}

int TKeyListModel::rowOf(TRowIndex &index, const TColumn &column, const QString &text) const
{
    const auto textAt = [&](int row) { return column.AsText(static_cast<std::size_t>(row)); };
    const auto same = [](const QString &a, const QString &b) {
        return a.compare(b, Qt::CaseInsensitive) == 0;
    };
    if (!index.IsBuilt())
        index.Build(
            Count(), [&](int row) { return FoldedHashOf(textAt(row)); },
            [&](int a, int b) { return same(textAt(a), textAt(b)); });
    return index.Find(FoldedHashOf(text), [&](int row) { return same(textAt(row), text); });
}

int TKeyListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : Count();
}

QVariant TKeyListModel::data(const QModelIndex &index, int role) const
{
    if (!Holds(index))
        return {};
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return Text(index.row());
    case Qt::UserRole:
        return Key(index.row());
    default:
        return {};
    }
}

bool TKeyListModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (!Holds(index))
        return false;
    const auto row = static_cast<std::size_t>(index.row());
    if (role == Qt::EditRole || role == Qt::DisplayRole) {
        m_texts.Set(row, value.toString());
        m_byText.Clear();
    } else if (role == Qt::UserRole) {
        try {
            m_keys.Set(row, ConvertValue(value, m_keys.Type(), {}));
        } catch (const EConvertError &) {
            return false;
        }
        m_byKey.Clear();
    } else {
        return false;
    }
    emit dataChanged(index, index);
    return true;
}

bool TKeyListModel::insertRows(int row, int count, const QModelIndex &parent)
{
    if (parent.isValid() || row < 0 || row > Count() || count < 1)
        return false;
    TRowNumbers rows(static_cast<std::size_t>(Count() + count));
    std::iota(rows.begin(), rows.end(), 0U);
    std::rotate(rows.begin() + row, rows.end() - count, rows.end());
    beginInsertRows({}, row, row + count - 1);
    for (int i = 0; i < count; ++i) {
        m_keys.Append({});
        m_texts.Append({});
    }
    take(rows);
    endInsertRows();
    return true;
}

bool TKeyListModel::removeRows(int row, int count, const QModelIndex &parent)
{
    if (parent.isValid() || row < 0 || count < 1 || count > Count() - row)
        return false;
    TRowNumbers rows(static_cast<std::size_t>(Count()));
    std::iota(rows.begin(), rows.end(), 0U);
    rows.erase(rows.begin() + row, rows.begin() + row + count);
    beginRemoveRows({}, row, row + count - 1);
    take(rows);
    endRemoveRows();
    return true;
}

void TKeyListModel::take(const TRowNumbers &rows)
{
    m_keys = m_keys.Taken(rows);
    m_texts = m_texts.Taken(rows);
    m_byKey.Clear();
    m_byText.Clear();
}

QModelIndexList TKeyListModel::match(const QModelIndex &start, int role, const QVariant &value, int hits,
                                     Qt::MatchFlags flags) const
{
    const auto kind = flags & Qt::MatchTypeMask;
    const bool isBeginning = kind == Qt::MatchStartsWith;
    const bool isFast = (role == Qt::DisplayRole || role == Qt::EditRole) && hits == 1 && start.isValid() &&
                        (isBeginning || kind == Qt::MatchFixedString);
    if (!isFast)
        return QAbstractListModel::match(start, role, value, hits, flags);
    const auto text = value.toString();
    const auto sensitivity = flags.testFlag(Qt::MatchCaseSensitive) ? Qt::CaseSensitive : Qt::CaseInsensitive;
    const int rows = flags.testFlag(Qt::MatchWrap) ? Count() : Count() - start.row();
    for (int i = 0; i < rows; ++i) {
        const int row = (start.row() + i) % Count();
        if (isBeginning ? Text(row).startsWith(text, sensitivity) : Text(row).compare(text, sensitivity) == 0)
            return {index(row)};
    }
    return {};
}

} // namespace Zelmar01
