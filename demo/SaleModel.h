#pragma once

#include "Articles.h"

#include <QAbstractTableModel>

namespace Shop {

struct TSaleLine
{
    TArticle Article;
    int Quantity = 1;

    TCents WithVat() const { return Article.Price * Quantity; }
    TCents WithoutVat() const { return Shop::WithoutVat(WithVat()); }
};

/// The articles of one sale. The sum without VAT is that of the lines, so that the column adds up on paper.
struct TSale
{
    QList<TSaleLine> Lines;

    TCents WithVat() const;
    TCents WithoutVat() const;
    TCents Vat() const { return WithVat() - WithoutVat(); }
};

/// A sale as a table, in which quantities can be edited.
class SaleModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum TColumn { Name, Quantity, WithoutVatAmount, WithVatAmount, ColumnCount };
    static constexpr int MaxQuantity = 99;

    using QAbstractTableModel::QAbstractTableModel;

    const TSale &Sale() const { return m_sale; }

    /// Adds one piece of an article and returns its row.
    int Add(const TArticle &article);
    void Remove(int row);
    void Clear();

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    /// Takes quantities from 1 to MaxQuantity.
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;

signals:
    void Changed();

private:
    TSale m_sale;
};

} // namespace Shop
