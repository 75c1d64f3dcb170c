#include "SalePanel.h"

#include "LargeText.h"
#include "ui_SalePanel.h"

#include <QHeaderView>
#include <QShortcut>
#include <QSpinBox>
#include <QStyledItemDelegate>

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

} // namespace

SalePanel::SalePanel(QWidget *parent)
    : QGroupBox(parent), m_model(new SaleModel(this)), m_ui(std::make_unique<Ui::SalePanel>())
{
    m_ui->setupUi(this);
    m_ui->vatLabel->setText(u"TVA %1 %"_s.arg(VatRate / 10));
    MakeLarge(*m_ui->totalLabel, 1.7);
    MakeLarge(*m_ui->total, 1.7);
    arrangeTable();

    const auto onKey = [this](const QKeySequence &key, QPushButton *button) {
        connect(new QShortcut(key, m_ui->sale, nullptr, nullptr, Qt::WidgetShortcut), &QShortcut::activated,
                button, &QPushButton::click);
    };
    onKey(Qt::Key_Delete, m_ui->removeLine);
    onKey(Qt::Key_Plus, m_ui->more);
    onKey(Qt::Key_Minus, m_ui->less);
    connect(m_ui->more, &QPushButton::clicked, this, [this] { changeQuantity(1); });
    connect(m_ui->less, &QPushButton::clicked, this, [this] { changeQuantity(-1); });
    connect(m_ui->removeLine, &QPushButton::clicked, this, &SalePanel::remove);
    connect(m_ui->newSale, &QPushButton::clicked, m_model, &SaleModel::Clear);
    connect(m_model, &SaleModel::Changed, this, &SalePanel::showSums);
    connect(m_model, &SaleModel::Changed, this, &SalePanel::Changed);
    showSums();
}

SalePanel::~SalePanel() = default;

void SalePanel::arrangeTable()
{
    auto &table = *m_ui->sale;
    table.setModel(m_model);
    table.setItemDelegateForColumn(SaleModel::Quantity, new QuantityDelegate(&table));
    const auto metrics = table.fontMetrics();
    table.verticalHeader()->setDefaultSectionSize(metrics.height() * 2);
    table.horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table.horizontalHeader()->setSectionResizeMode(SaleModel::Name, QHeaderView::Stretch);
    table.setColumnWidth(SaleModel::Quantity, metrics.horizontalAdvance(u"000000"_s));
    for (const auto amount : {SaleModel::WithoutVatAmount, SaleModel::WithVatAmount})
        table.setColumnWidth(amount, metrics.horizontalAdvance(u"000 000,00 €"_s));
    for (auto *button : {m_ui->more, m_ui->less})
        button->setMaximumWidth(button->fontMetrics().horizontalAdvance(u"00000"_s));
}

void SalePanel::Add(const TArticle &article)
{
    m_ui->sale->selectRow(m_model->Add(article));
}

void SalePanel::changeQuantity(int by)
{
    const auto quantity = m_ui->sale->currentIndex().siblingAtColumn(SaleModel::Quantity);
    m_model->setData(quantity, quantity.data(Qt::EditRole).toInt() + by);
}

void SalePanel::remove()
{
    m_model->Remove(m_ui->sale->currentIndex().row());
}

void SalePanel::showSums()
{
    const auto &sale = m_model->Sale();
    m_ui->withoutVat->setText(EuroText(sale.WithoutVat()));
    m_ui->vat->setText(EuroText(sale.Vat()));
    m_ui->total->setText(EuroText(sale.WithVat()));
    for (auto *button : {m_ui->more, m_ui->less, m_ui->removeLine, m_ui->newSale})
        button->setEnabled(!sale.Lines.isEmpty());
}

} // namespace Shop
