#pragma once

#include "ShopDatabase.h"

#include <Zelmar01/data/Query.h>

#include <QWidget>

#include <memory>

namespace Ui {
class ControlsPage;
}

namespace Shop {

/// The small controls over the shop's articles: the sheet of an article, links that go with it, gauges that
/// follow a long piece of work, and the editors of an appointment.
class ControlsPage : public QWidget
{
    Q_OBJECT
public:
    /// The articles are read when the page is first shown. `shop` must live longer.
    explicit ControlsPage(ShopDatabase &shop, QWidget *parent = nullptr);
    ~ControlsPage() override;

protected:
    void showEvent(QShowEvent *event) override;

private:
    void load();
    void showArticle();
    void checkTickets();

    ShopDatabase &m_shop;
    Zelmar01::TQuery m_articles;
    const std::unique_ptr<Ui::ControlsPage> m_ui;
    int m_starts = 0;
    bool m_isLoaded = false;
};

} // namespace Shop
