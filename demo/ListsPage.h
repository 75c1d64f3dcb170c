#pragma once

#include "ShopDatabase.h"

#include <Zelmar01/data/Query.h>
#include <Zelmar01/keylists/CheckListBoxFK.h>
#include <Zelmar01/keylists/DBComboBoxEditFk.h>

#include <QWidget>

class QGroupBox;
class QLabel;
class QPushButton;

namespace Shop {

class GridPanel;

/// The lists of the shop: finding an article by its name, giving it a metal, choosing articles for a query,
/// and all of them in a grid.
class ListsPage : public QWidget
{
    Q_OBJECT
public:
    /// The articles are read when the page is first shown. `shop` must live longer.
    explicit ListsPage(ShopDatabase &shop, QWidget *parent = nullptr);

protected:
    void showEvent(QShowEvent *event) override;

private:
    QGroupBox *makeArticle();
    QGroupBox *makeChoice();
    QPushButton *makeButton(const QString &name, const QString &text, const std::function<void()> &work);

    void load();
    void goToArticle();
    void showArticle();
    void showChoice();
    void tryMany(int rows);

    ShopDatabase &m_shop;
    Zelmar01::TQuery m_articles, m_metals, m_list;
    Zelmar01::TDataSource m_articleSource, m_metalSource;
    Zelmar01::TComboBoxFk *m_find;
    Zelmar01::TDBComboBoxEditFk *m_metal;
    Zelmar01::TCheckListBoxFK *m_choice;
    GridPanel *m_grid;
    QLabel *m_name, *m_condition, *m_told;
    QPushButton *m_save, *m_cancel;
    bool m_isLoaded = false;
};

} // namespace Shop
