#pragma once

#include "ShopDatabase.h"

#include <Zelmar01/data/ClientDataSet.h>
#include <Zelmar01/data/Query.h>
#include <Zelmar01/keylists/zmGrid.h>

#include <QGroupBox>

class QComboBox;
class QLabel;

namespace Shop {

/// The articles in a grid: those of the database, which a click on a title sorts there, or a copy in memory,
/// which it sorts by an index.
class GridPanel : public QGroupBox
{
    Q_OBJECT
public:
    /// The articles as they are read when nothing sorts them.
    static QString ArticlesText();

    /// `shop` and the data source of `articles` must live longer.
    GridPanel(ShopDatabase &shop, Zelmar01::TDataSource &articles, QWidget *parent = nullptr);
    ~GridPanel() override;

    /// Shows the articles of the database again.
    void ShowArticles();
    /// Shows that many invented articles, in memory.
    void ShowMany(int rows);

private:
    void showCopy();
    void show(Zelmar01::TDataSource &source);
    void showOrder();

    ShopDatabase &m_shop;
    Zelmar01::TDataSource &m_articles;
    Zelmar01::TClientDataSet m_memory;
    Zelmar01::TDataSource m_memorySource;
    Zelmar01::TzmGrid *m_grid;
    QComboBox *m_place;
    QLabel *m_order;
};

} // namespace Shop
