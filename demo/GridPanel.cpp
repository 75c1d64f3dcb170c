#include "GridPanel.h"

#include <Zelmar01/core/ExceptionDisplay.h>

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>

using namespace Qt::StringLiterals;
using namespace Zelmar01;

namespace Shop {

namespace {

enum TPlace { InDatabase, InMemory };

// What the titles say; a dataset has new fields each time it opens.
void labelFields(const TDataSet &rows)
{
    const std::pair<QString, QString> labels[] = {
        {u"REFERENCE"_s, u"Référence"_s}, {u"NOM"_s, u"Article"_s}, {u"PRIX"_s, u"Prix"_s}};
    for (const auto &[name, label] : labels)
        if (auto *field = rows.FindField(name))
            field->setDisplayLabel(label);
}

} // namespace

QString GridPanel::ArticlesText()
{
    return u"select ARTICLE_ID, NOM, REFERENCE, PRIX, METAL_ID from article"_s;
}

GridPanel::GridPanel(ShopDatabase &shop, TDataSource &articles, QWidget *parent)
    : QGroupBox(u"Articles"_s, parent), m_shop(shop), m_articles(articles), m_grid(new TzmGrid),
      m_place(new QComboBox), m_order(new QLabel)
{
    m_memorySource.setDataSet(&m_memory);
    m_grid->setObjectName(u"articleGrid"_s);
    m_grid->setAccessibleName(u"Articles"_s);
    m_grid->setColumns({u"REFERENCE;90"_s, u"NOM;300"_s, u"PRIX;110"_s});
    m_place->setObjectName(u"articlePlace"_s);
    m_place->addItems({u"de la base de données"_s, u"copiés en mémoire"_s});
    m_order->setObjectName(u"gridOrder"_s);
    auto *label = new QLabel(u"Articl&es :"_s);
    label->setBuddy(m_place);

    auto *bar = new QHBoxLayout;
    bar->addWidget(label);
    bar->addWidget(m_place);
    bar->addStretch(1);
    bar->addWidget(m_order);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(bar);
    layout->addWidget(m_grid);

    for (const auto *rows : {m_articles.DataSet(), static_cast<TDataSet *>(&m_memory)}) {
        connect(rows, &TDataSet::AfterOpen, this, [rows] { labelFields(*rows); });
        connect(rows, &TDataSet::RowsReset, this, &GridPanel::showOrder);
    }
    connect(m_place, &QComboBox::activated, this, [this](int place) {
        ShowingExceptions([&] { place == InMemory ? showCopy() : ShowArticles(); });
    });
    // In memory every column but one sorts by the expression: it is to be the clicked column's own field.
    connect(m_grid, &TzmGrid::OnTitleClick, this, [this](const TGridColumn *column) {
        if (m_grid->DataSource() == &m_memorySource)
            m_grid->InitGrid(column->FieldName(), u"NOM"_s, {}, true);
    });
}

GridPanel::~GridPanel()
{
    m_grid->setDataSource(nullptr); // before its own dataset goes
}

void GridPanel::show(TDataSource &source)
{
    const bool isMemory = &source == &m_memorySource;
    m_place->setCurrentIndex(isMemory ? InMemory : InDatabase);
    m_grid->setDataSource(&source);
    for (int column = 0; column < m_grid->Columns().Count(); ++column)
        m_grid->Columns()[column].setTitle({}); // without the marks of the other rows' order
    if (isMemory)
        m_grid->InitGrid(u"PRIX"_s, u"NOM"_s, {}, true);
    else
        m_grid->InitGrid(u"upper(NOM)"_s, u"NOM"_s, ArticlesText(), true);
    showOrder();
}

void GridPanel::ShowArticles()
{
    m_articles.DataSet()->Open();
    show(m_articles);
}

void GridPanel::showCopy()
{
    m_articles.DataSet()->Open();
    m_memory.LoadFrom(*m_articles.DataSet());
    show(m_memorySource);
}

void GridPanel::ShowMany(int rows)
{
    TQuery invented(nullptr, &m_shop.Connection());
    invented.setCommandText(
        u"with recursive N(ARTICLE_ID) as (select 1 union all select ARTICLE_ID + 1 from N "
        "where ARTICLE_ID < %1) select ARTICLE_ID, 'Article d''essai n° ' || ARTICLE_ID as NOM, "
        "'ES-' || ARTICLE_ID as REFERENCE, (ARTICLE_ID * 7919 %% 100000) / 100.0 as PRIX from N"_s.arg(rows)
            .replace(u"%%"_s, u"%"_s));
    invented.Open();
    m_memory.LoadFrom(invented);
    show(m_memorySource);
}

void GridPanel::showOrder()
{
    const auto &indexes = m_memory.IndexDefs();
    const int index = indexes.IndexOf(m_memory.IndexName());
    if (m_grid->DataSource() != &m_memorySource || index < 0)
        return m_order->clear();
    QStringList fields;
    for (const auto &field : indexes[index].Fields.split(u';'))
        fields << field + (indexes[index].IsDescending(field) ? u" (décroissant)"_s : QString());
    m_order->setText(u"Tri : "_s + fields.join(u", "_s));
}

} // namespace Shop
