#include "GridPanel.h"

#include "ui_GridPanel.h"

#include <Zelmar01/core/ExceptionDisplay.h>

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

GridPanel::GridPanel(QWidget *parent) : QGroupBox(parent), m_ui(std::make_unique<Ui::GridPanel>())
{
    m_ui->setupUi(this);
    m_memorySource.setDataSet(&m_memory);
    connect(m_ui->articlePlace, &QComboBox::activated, this, [this](int place) {
        ShowingExceptions([&] { place == InMemory ? showCopy() : ShowArticles(); });
        showPlace(); // still the one before when that failed
    });
    // In memory every column but one sorts by the expression: it is to be the clicked column's own field.
    connect(m_ui->articleGrid, &TzmGrid::OnTitleClick, this, [this](const TGridColumn *column) {
        if (isInMemory())
            m_ui->articleGrid->InitGrid(column->FieldName(), u"NOM"_s, {}, true);
    });
}

GridPanel::~GridPanel()
{
    m_ui->articleGrid->setDataSource(nullptr); // before its own dataset goes
}

void GridPanel::Use(TDataSource &articles)
{
    m_articles = &articles;
    for (const auto *rows : {articles.DataSet(), static_cast<TDataSet *>(&m_memory)}) {
        connect(rows, &TDataSet::AfterOpen, this, [rows] { labelFields(*rows); });
        connect(rows, &TDataSet::RowsReset, this, &GridPanel::showOrder);
    }
}

void GridPanel::show(TDataSource &source)
{
    m_ui->articleGrid->setDataSource(&source);
    showPlace();
    for (int column = 0; column < m_ui->articleGrid->Columns().Count(); ++column)
        m_ui->articleGrid->Columns()[column].setTitle({}); // without the marks of the other rows' order
    if (isInMemory())
        m_ui->articleGrid->InitGrid(u"PRIX"_s, u"NOM"_s, {}, true);
    else
        m_ui->articleGrid->InitGrid(u"upper(NOM)"_s, u"NOM"_s, ArticlesText(), true);
    showOrder();
    emit ShownChanged();
}

bool GridPanel::isInMemory() const
{
    return m_ui->articleGrid->DataSource() == &m_memorySource;
}

void GridPanel::showPlace()
{
    m_ui->articlePlace->setCurrentIndex(isInMemory() ? InMemory : InDatabase);
}

// A record that is being edited is posted before it goes out of sight.
void GridPanel::leaveRows()
{
    if (auto *rows = m_ui->articleGrid->DataSet(); rows && rows->Active())
        rows->MoveBy(0);
}

void GridPanel::ShowArticles()
{
    leaveRows();
    m_articles->DataSet()->Open();
    show(*m_articles);
}

void GridPanel::showCopy()
{
    leaveRows();
    m_articles->DataSet()->Open();
    m_memory.LoadFrom(*m_articles->DataSet());
    show(m_memorySource);
}

void GridPanel::ShowMany(int rows)
{
    leaveRows();
    TClientDataSet invented;
    invented.CreateDataSet({{u"ARTICLE_ID"_s, ftInteger, 0, true, false},
                            {u"NOM"_s, ftString, 40, true, false},
                            {u"REFERENCE"_s, ftString, 20, false, false},
                            {u"PRIX"_s, ftBCD, 2, false, false},
                            {u"METAL_ID"_s, ftInteger, 0, false, false}});
    const auto &fields = invented.Fields();
    for (int row = 1; row <= rows; ++row) {
        invented.Append();
        fields[0].setAsInteger(row);
        fields[1].setAsString(u"Article d'essai n° %1"_s.arg(row));
        fields[2].setAsString(u"ES-%1"_s.arg(row));
        fields[3].setAsDecimal({qint64(row) * 7919 % 100'000, 2});
        invented.Post();
    }
    m_memory.LoadFrom(invented);
    show(m_memorySource);
}

TDataSet &GridPanel::Shown() const
{
    return *m_ui->articleGrid->DataSet();
}

void GridPanel::showOrder()
{
    const auto &indexes = m_memory.IndexDefs();
    const int index = indexes.IndexOf(m_memory.IndexName());
    if (!isInMemory() || index < 0)
        return m_ui->gridOrder->clear();
    QStringList fields;
    for (const auto &field : indexes[index].Fields.split(u';'))
        fields << field + (indexes[index].IsDescending(field) ? u" (décroissant)"_s : QString());
    m_ui->gridOrder->setText(u"Tri : "_s + fields.join(u", "_s));
}

} // namespace Shop
