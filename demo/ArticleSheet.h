#pragma once

#include "ShopDatabase.h"

#include <Zelmar01/data/DataSource.h>
#include <Zelmar01/data/Query.h>

#include <QGroupBox>

class QFormLayout;
class QLabel;
class QPushButton;

namespace Shop {

/// The sheet of one article: an editor a column of its record, buttons to go through the articles, and what
/// the user did to post or cancel.
class ArticleSheet : public QGroupBox
{
    Q_OBJECT
public:
    /// `shop` must live longer.
    explicit ArticleSheet(ShopDatabase &shop, QWidget *parent = nullptr);

    /// Makes the table if it is not there and reads it.
    void Load();

private:
    template<class Editor>
    Editor *bind(const QString &field);
    QWidget *makeEditors();
    QWidget *makeButtons();
    void follow();

    ShopDatabase &m_shop;
    Zelmar01::TQuery m_articles, m_metals;
    Zelmar01::TDataSource m_source, m_metalSource;
    QLabel *m_place;
    QPushButton *m_post, *m_cancel;
};

} // namespace Shop
