#include <Zelmar01/keylists/CheckListModel.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>

namespace Zelmar01 {

TCheckListModel::TCheckListModel(QObject *parent) : TKeyListModel(parent)
{
    // The first receivers: views that hear of it later find the bits in step.
    const auto placeOf = [this](int row) { return m_checked.begin() + row; };
    connect(this, &QAbstractItemModel::modelReset, this,
            [this] { m_checked.assign(static_cast<std::size_t>(Count()), false); });
    connect(this, &QAbstractItemModel::rowsInserted, this,
            [=, this](const QModelIndex &, int first, int last) {
                m_checked.insert(placeOf(first), static_cast<std::size_t>(last - first + 1), false);
            });
    connect(this, &QAbstractItemModel::rowsRemoved, this,
            [=, this](const QModelIndex &, int first, int last) {
                m_checked.erase(placeOf(first), placeOf(last + 1));
            });
}

int TCheckListModel::KeyNumber(int row) const
{
    return static_cast<int>(Keys().Integer(static_cast<std::size_t>(row)));
}

void TCheckListModel::CheckAll(bool checked)
{
    if (m_checked.empty())
        return;
    std::fill(m_checked.begin(), m_checked.end(), checked);
    emit dataChanged(index(0), index(Count() - 1), {Qt::CheckStateRole});
}

int TCheckListModel::CheckedCount() const
{
    return static_cast<int>(std::count(m_checked.begin(), m_checked.end(), true));
}

QString TCheckListModel::KeysOf(bool checked, const QString &separator) const
{
    constexpr qsizetype longest = std::numeric_limits<int>::digits10 + 2;
    const int count = checked ? CheckedCount() : Count() - CheckedCount();
    QString keys(count * (longest + separator.size()), Qt::Uninitialized);
    auto *end = keys.data();
    for (std::size_t row = 0; row < m_checked.size(); ++row) {
        if (m_checked[row] != checked)
            continue;
        std::array<char, longest> digits;
        const auto *last = std::to_chars(digits.data(), digits.data() + longest, Keys().Integer(row)).ptr;
        end = std::transform(static_cast<const char *>(digits.data()), last, end,
                             [](char digit) { return QLatin1Char(digit); });
        end = std::copy(separator.begin(), separator.end(), end);
    }
    keys.truncate(end - keys.data());
    return keys;
}

QStringList TCheckListModel::CheckedTexts() const
{
    QStringList texts;
    for (int row = 0; row < Count(); ++row)
        if (IsChecked(row))
            texts << Text(row);
    return texts;
}

QVariant TCheckListModel::data(const QModelIndex &index, int role) const
{
    if (role != Qt::CheckStateRole)
        return TKeyListModel::data(index, role);
    if (!Holds(index))
        return {};
    return IsChecked(index.row()) ? Qt::Checked : Qt::Unchecked;
}

bool TCheckListModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (role != Qt::CheckStateRole)
        return TKeyListModel::setData(index, value, role);
    if (!Holds(index))
        return false;
    m_checked[static_cast<std::size_t>(index.row())] = value.toInt() == Qt::Checked;
    emit dataChanged(index, index, {Qt::CheckStateRole});
    return true;
}

Qt::ItemFlags TCheckListModel::flags(const QModelIndex &index) const
{
    return TKeyListModel::flags(index) | Qt::ItemIsUserCheckable;
}

} // namespace Zelmar01
