#pragma once

#include "SaleModel.h"

#include <QGroupBox>

#include <memory>

namespace Ui {
class SalePanel;
}

namespace Shop {

/// The sale that is being rung up, its quantities and its sums.
class SalePanel : public QGroupBox
{
    Q_OBJECT
public:
    explicit SalePanel(QWidget *parent = nullptr);
    ~SalePanel() override;

    void Add(const TArticle &article);
    const TSale &Sale() const { return m_model->Sale(); }

signals:
    void Changed();

private:
    void arrangeTable();
    void changeQuantity(int by);
    void remove();
    void showSums();

    SaleModel *m_model;
    const std::unique_ptr<Ui::SalePanel> m_ui;
};

} // namespace Shop
