#pragma once

#include "SaleModel.h"

#include <QGroupBox>

class QLabel;
class QTableView;

namespace Shop {

/// The sale that is being rung up, its quantities and its sums.
class SalePanel : public QGroupBox
{
    Q_OBJECT
public:
    explicit SalePanel(QWidget *parent = nullptr);

    void Add(const TArticle &article);
    const TSale &Sale() const { return m_model->Sale(); }

signals:
    void Changed();

private:
    QWidget *makeButtons();
    void changeQuantity(int by);
    void remove();
    void showSums();

    SaleModel *m_model;
    QTableView *m_table;
    QLabel *m_withoutVat, *m_vat, *m_withVat;
};

} // namespace Shop
