#pragma once

#include "ShopDatabase.h"

#include <Zelmar01/data/DataSource.h>
#include <Zelmar01/data/Query.h>

#include <QWidget>

#include <functional>
#include <memory>

namespace Ui {
class ListsPage;
}

namespace Shop {

/// The lists of the shop: finding an article by its name, giving it a metal, choosing articles for a query,
/// and all of them in a grid.
class ListsPage : public QWidget
{
    Q_OBJECT
public:
    /// The articles are read when the page is first shown. `shop` must live longer.
    explicit ListsPage(ShopDatabase &shop, QWidget *parent = nullptr);
    ~ListsPage() override;

protected:
    void showEvent(QShowEvent *event) override;

private:
    void connectButtons();
    void addVolumeMenu();

    void load();
    void goToArticle();
    void showArticle();
    void showChoice();
    void tryMany(int rows);

    ShopDatabase &m_shop;
    Zelmar01::TQuery m_articles, m_metals, m_list;
    Zelmar01::TDataSource m_articleSource, m_metalSource;
    Zelmar01::TDataSource m_shown; ///< the rows of the grid, wherever they are
    const std::unique_ptr<Ui::ListsPage> m_ui;
    bool m_isLoaded = false;
};

} // namespace Shop
