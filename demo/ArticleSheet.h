#pragma once

#include "ShopDatabase.h"

#include <Zelmar01/data/DataSource.h>
#include <Zelmar01/data/Query.h>

#include <QGroupBox>

#include <memory>

namespace Ui {
class ArticleSheet;
}

namespace Shop {

/// The sheet of one article: an editor a column of its record, buttons to go through the articles, and what
/// the user did to post or cancel.
class ArticleSheet : public QGroupBox
{
    Q_OBJECT
public:
    explicit ArticleSheet(QWidget *parent = nullptr);
    ~ArticleSheet() override;

    /// Makes the table if it is not there and reads it. `shop` must live longer.
    void Load(ShopDatabase &shop);

private:
    void bind();
    void follow();

    const std::unique_ptr<Ui::ArticleSheet> m_ui;
    Zelmar01::TQuery m_articles, m_metals;
    Zelmar01::TDataSource m_source, m_metalSource;
};

} // namespace Shop
