#include "SalePanel.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QSpinBox>
#include <QStyledItemDelegate>
#include <QTableView>

using namespace Qt::StringLiterals;

namespace Shop {

namespace {

class QuantityDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &, const QModelIndex &) const override
    {
        auto *box = new QSpinBox(parent);
        box->setRange(1, SaleModel::MaxQuantity);
        box->setAlignment(Qt::AlignRight);
        box->setAccessibleName(u"Quantité"_s);
        return box;
    }
};

QTableView *makeTable(SaleModel *model)
{
    auto *table = new QTableView;
    table->setObjectName(u"sale"_s);
    table->setAccessibleName(u"Articles de la vente"_s);
    table->setModel(model);
    table->setItemDelegateForColumn(SaleModel::Quantity, new QuantityDelegate(table));
    table->setSelectionBehavior(QTableView::SelectRows);
    table->setSelectionMode(QTableView::SingleSelection);
    table->setShowGrid(false);
    table->setWordWrap(false);
    table->setAlternatingRowColors(true);
    table->setTabKeyNavigation(false);
    table->verticalHeader()->hide();
    table->horizontalHeader()->setHighlightSections(false);
    const auto metrics = table->fontMetrics();
    table->verticalHeader()->setDefaultSectionSize(metrics.height() * 2);
    table->horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table->horizontalHeader()->setSectionResizeMode(SaleModel::Name, QHeaderView::Stretch);
    table->setColumnWidth(SaleModel::Quantity, metrics.horizontalAdvance(u"000000"_s));
    for (const auto amount : {SaleModel::WithoutVatAmount, SaleModel::WithVatAmount})
        table->setColumnWidth(amount, metrics.horizontalAdvance(u"000 000,00 €"_s));
    return table;
}

QLabel *makeAmount(QGridLayout &sums, int row, const QString &title, bool large)
{
    auto *label = new QLabel(title);
    auto *amount = new QLabel;
    amount->setAccessibleName(title);
    if (large) {
        auto font = amount->font();
        font.setPointSizeF(font.pointSizeF() * 1.7);
        font.setBold(true);
        label->setFont(font);
        amount->setFont(font);
    }
    sums.addWidget(label, row, 0);
    sums.addWidget(amount, row, 1, Qt::AlignRight);
    return amount;
}

} // namespace

SalePanel::SalePanel(QWidget *parent)
    : QGroupBox(u"Vente"_s, parent), m_model(new SaleModel(this)), m_table(makeTable(m_model))
{
    auto *sums = new QGridLayout;
    sums->setColumnStretch(0, 1);
    m_withoutVat = makeAmount(*sums, 0, u"Total HT"_s, false);
    m_vat = makeAmount(*sums, 1, u"TVA %1 %"_s.arg(VatRate / 10), false);
    m_withVat = makeAmount(*sums, 2, u"Total TTC"_s, true);
    m_withVat->setObjectName(u"total"_s);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_table, 1);
    layout->addWidget(makeButtons());
    layout->addLayout(sums);

    const auto onKey = [this](const QKeySequence &key, auto action) {
        connect(new QShortcut(key, m_table, nullptr, nullptr, Qt::WidgetShortcut), &QShortcut::activated,
                this, action);
    };
    onKey(Qt::Key_Delete, [this] { remove(); });
    onKey(Qt::Key_Plus, [this] { changeQuantity(1); });
    onKey(Qt::Key_Minus, [this] { changeQuantity(-1); });
    connect(m_model, &SaleModel::Changed, this, &SalePanel::showSums);
    connect(m_model, &SaleModel::Changed, this, &SalePanel::Changed);
    showSums();
}

QWidget *SalePanel::makeButtons()
{
    auto *row = new QWidget;
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins({});
    const auto add = [&](const QString &text, const QString &name, const QString &tip, auto action) {
        auto *button = new QPushButton(text);
        button->setAccessibleName(name);
        button->setToolTip(tip);
        layout->addWidget(button);
        connect(button, &QPushButton::clicked, this, action);
        const auto follow = [this, button] { button->setEnabled(m_model->rowCount() > 0); };
        connect(m_model, &SaleModel::Changed, button, follow);
        follow();
        return button;
    };
    const auto narrow = [](QPushButton *button) {
        button->setMaximumWidth(button->fontMetrics().horizontalAdvance(u"00000"_s));
    };
    narrow(add(u"+"_s, u"Une pièce de plus"_s, u"Une pièce de plus (+)"_s, [this] { changeQuantity(1); }));
    narrow(add(u"−"_s, u"Une pièce de moins"_s, u"Une pièce de moins (−)"_s, [this] { changeQuantity(-1); }));
    add(u"&Retirer"_s, u"Retirer l'article"_s, u"Retire l'article de la vente (Suppr)"_s,
        [this] { remove(); });
    layout->addStretch();
    add(u"&Nouvelle vente"_s, u"Nouvelle vente"_s, u"Vide la vente"_s, [this] { m_model->Clear(); });
    return row;
}

void SalePanel::Add(const TArticle &article)
{
    m_table->selectRow(m_model->Add(article));
}

void SalePanel::changeQuantity(int by)
{
    const auto quantity = m_table->currentIndex().siblingAtColumn(SaleModel::Quantity);
    m_model->setData(quantity, quantity.data(Qt::EditRole).toInt() + by);
}

void SalePanel::remove()
{
    m_model->Remove(m_table->currentIndex().row());
}

void SalePanel::showSums()
{
    const auto &sale = m_model->Sale();
    m_withoutVat->setText(EuroText(sale.WithoutVat()));
    m_vat->setText(EuroText(sale.Vat()));
    m_withVat->setText(EuroText(sale.WithVat()));
}

} // namespace Shop
