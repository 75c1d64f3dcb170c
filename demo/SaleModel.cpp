#include "SaleModel.h"

#include <algorithm>
#include <array>
#include <numeric>

using namespace Qt::StringLiterals;

namespace Shop {

namespace {

template<class Amount>
TCents sum(const QList<TSaleLine> &lines, Amount amount)
{
    return std::accumulate(lines.begin(), lines.end(), TCents{},
                           [&](TCents total, const TSaleLine &line) { return total + (line.*amount)(); });
}

} // namespace

TCents TSale::WithVat() const
{
    return sum(Lines, &TSaleLine::WithVat);
}

TCents TSale::WithoutVat() const
{
    return sum(Lines, &TSaleLine::WithoutVat);
}

int SaleModel::Add(const TArticle &article)
{
    auto &lines = m_sale.Lines;
    const auto found = std::ranges::find(lines, article.Reference,
                                         [](const TSaleLine &line) { return line.Article.Reference; });
    const auto row = static_cast<int>(found - lines.begin());
    if (found != lines.end()) {
        setData(index(row, Quantity), found->Quantity + 1);
        return row;
    }
    beginInsertRows({}, row, row);
    lines.append({article, 1});
    endInsertRows();
    emit Changed();
    return row;
}

void SaleModel::Remove(int row)
{
    if (row < 0 || row >= rowCount())
        return;
    beginRemoveRows({}, row, row);
    m_sale.Lines.removeAt(row);
    endRemoveRows();
    emit Changed();
}

void SaleModel::Clear()
{
    beginResetModel();
    m_sale.Lines.clear();
    endResetModel();
    emit Changed();
}

int SaleModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_sale.Lines.size());
}

int SaleModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant SaleModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    if (role == Qt::TextAlignmentRole && index.column() != Name)
        return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
    if (role != Qt::DisplayRole && role != Qt::EditRole)
        return {};
    const auto &line = m_sale.Lines[index.row()];
    switch (index.column()) {
    case Name:
        return line.Article.Name;
    case Quantity:
        return line.Quantity;
    case WithoutVatAmount:
        return EuroText(line.WithoutVat());
    default:
        return EuroText(line.WithVat());
    }
}

QVariant SaleModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    static const std::array<QString, ColumnCount> titles{u"Article"_s, u"Qté"_s, u"HT"_s, u"TTC"_s};
    if (orientation != Qt::Horizontal || section < 0 || section >= ColumnCount)
        return {};
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue((section == Name ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
    return role == Qt::DisplayRole ? titles[static_cast<std::size_t>(section)] : QVariant();
}

Qt::ItemFlags SaleModel::flags(const QModelIndex &index) const
{
    const auto flags = QAbstractTableModel::flags(index);
    return index.column() == Quantity ? flags | Qt::ItemIsEditable : flags;
}

bool SaleModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    const int quantity = value.toInt();
    if (!index.isValid() || index.column() != Quantity || role != Qt::EditRole || quantity < 1 ||
        quantity > MaxQuantity)
        return false;
    m_sale.Lines[index.row()].Quantity = quantity;
    emit dataChanged(index, index.siblingAtColumn(WithVatAmount));
    emit Changed();
    return true;
}

} // namespace Shop
