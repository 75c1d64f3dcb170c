#include "TablePanel.h"

#include "ui_TablePanel.h"

#include <Zelmar01/core/ExceptionDisplay.h>

#include <QHeaderView>

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

TablePanel::TablePanel(QWidget *parent) : QGroupBox(parent), m_ui(std::make_unique<Ui::TablePanel>())
{
    m_ui->setupUi(this);
    auto &table = *m_ui->codeTable;
    table.verticalHeader()->setDefaultSectionSize(table.fontMetrics().height() * 3 / 2);
    const auto choose = [this](const QModelIndex &index) {
        const int field = m_rows->FieldByName(u"DESCR_ART_ID"_s).Index();
        emit LevelChosen(m_rows->ValueAt(index.row(), field).toInt());
    };
    connect(&table, &QTableView::clicked, this, choose);
    connect(&table, &QTableView::activated, this, choose);
    // A change of many rows moves the cursor as many times.
    m_follow.setSingleShot(true);
    connect(&m_follow, &QTimer::timeout, this, &TablePanel::follow);
}

TablePanel::~TablePanel() = default;

void TablePanel::ShowRows(TDataSet &rows)
{
    m_rows = &rows;
    connect(&rows, &TDataSet::AfterOpen, this, &TablePanel::arrange);
    m_model.setDataSet(&rows);
    m_ui->codeTable->setModel(&m_model);
    connect(&rows, &TDataSet::CursorMoved, &m_follow, qOverload<>(&QTimer::start));
    connect(&rows, &TDataSet::RowsReset, &m_follow, qOverload<>(&QTimer::start));
}

void TablePanel::arrange()
{
    for (std::size_t place = 0; place < columns.size(); ++place) {
        const auto &column = columns[place];
        const int section = static_cast<int>(place);
        if (!column.Title) {
            m_ui->codeTable->hideColumn(section);
            continue;
        }
        m_rows->FieldByName(column.Field).setDisplayLabel(QString::fromUtf16(column.Title));
        if (column.Widest)
            m_ui->codeTable->setColumnWidth(
                section, m_ui->codeTable->fontMetrics().horizontalAdvance(QString::fromUtf16(column.Widest)));
        else
            m_ui->codeTable->horizontalHeader()->setSectionResizeMode(section, QHeaderView::Stretch);
    }
}

void TablePanel::follow()
{
    m_ui->codeTable->setCurrentIndex(m_rows->Active() ? m_model.index(m_rows->ShownPlace(), 0)
                                                      : QModelIndex());
}

} // namespace Shop
