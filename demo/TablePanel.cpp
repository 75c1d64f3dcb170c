#include "TablePanel.h"

#include <Zelmar01/core/ExceptionDisplay.h>

#include <QHeaderView>
#include <QTableView>
#include <QVBoxLayout>

#include <array>

using namespace Qt::StringLiterals;
using namespace Zelmar01;

namespace Shop {

namespace {

struct TColumn
{
    const char *Field;
    const char16_t *Title; // none for a column that is not shown
    const char16_t *Widest;
};

// In the order of the query. The long label stands above the table.
constexpr std::array<TColumn, 6> columns{{{"DESCR_ART_CODE", u"Code", u"00000000"},
                                          {"DESCR_ART_LIBELLE", u"Libellé", nullptr},
                                          {"DESCR_ART_LIB_LONG", nullptr, nullptr},
                                          {"DESCR_ART_LIB_COURT", u"Court", u"RAYON 0000"},
                                          {"DESCR_ART_ID", u"Id", u"000000"},
                                          {"DESCR_ART_ID_PERE", u"Père", u"000000"}}};

} // namespace

TablePanel::TablePanel(TDataSet &rows, QWidget *parent)
    : QGroupBox(u"Table descr_article"_s, parent), m_rows(rows), m_table(new QTableView)
{
    connect(&m_rows, &TDataSet::AfterOpen, this, &TablePanel::arrange);
    m_model.setDataSet(&m_rows);
    m_table->setObjectName(u"codeTable"_s);
    m_table->setAccessibleName(u"Lignes de la table descr_article"_s);
    m_table->setModel(&m_model);
    m_table->setSelectionBehavior(QTableView::SelectRows);
    m_table->setSelectionMode(QTableView::SingleSelection);
    m_table->setShowGrid(false);
    m_table->setWordWrap(false);
    m_table->setAlternatingRowColors(true);
    m_table->setTabKeyNavigation(false);
    m_table->verticalHeader()->hide();
    m_table->verticalHeader()->setDefaultSectionSize(m_table->fontMetrics().height() * 3 / 2);
    m_table->horizontalHeader()->setHighlightSections(false);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_table);

    const auto choose = [this](const QModelIndex &index) {
        const int field = m_rows.FieldByName(u"DESCR_ART_ID"_s).Index();
        emit LevelChosen(m_rows.ValueAt(index.row(), field).toInt());
    };
    connect(m_table, &QTableView::clicked, this, choose);
    connect(m_table, &QTableView::activated, this, choose);

    // A change of many rows moves the cursor as many times.
    m_follow.setSingleShot(true);
    connect(&m_follow, &QTimer::timeout, this, &TablePanel::follow);
    connect(&m_rows, &TDataSet::CursorMoved, &m_follow, qOverload<>(&QTimer::start));
    connect(&m_rows, &TDataSet::RowsReset, &m_follow, qOverload<>(&QTimer::start));
}

void TablePanel::arrange()
{
    for (std::size_t place = 0; place < columns.size(); ++place) {
        const auto &column = columns[place];
        const int section = static_cast<int>(place);
        if (!column.Title) {
            m_table->hideColumn(section);
            continue;
        }
        m_rows.FieldByName(column.Field).setDisplayLabel(QString::fromUtf16(column.Title));
        if (column.Widest)
            m_table->setColumnWidth(
                section, m_table->fontMetrics().horizontalAdvance(QString::fromUtf16(column.Widest)));
        else
            m_table->horizontalHeader()->setSectionResizeMode(section, QHeaderView::Stretch);
    }
}

void TablePanel::follow()
{
    m_table->setCurrentIndex(m_rows.Active() ? m_model.index(m_rows.ShownPlace(), 0) : QModelIndex());
}

} // namespace Shop
