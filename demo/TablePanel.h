#pragma once

#include <Zelmar01/data/DataSetModel.h>

#include <QGroupBox>
#include <QTimer>

class QTableView;

namespace Shop {

/// The rows of the table of statistical codes, as a dataset has them. The row at its cursor is selected.
class TablePanel : public QGroupBox
{
    Q_OBJECT
public:
    /// `rows` shows the columns of CodeTableQuery() and must live longer.
    explicit TablePanel(Zelmar01::TDataSet &rows, QWidget *parent = nullptr);

signals:
    /// The user chose the row of a level.
    void LevelChosen(int id);

private:
    void arrange();
    void follow();

    Zelmar01::TDataSet &m_rows;
    Zelmar01::TDataSetModel m_model;
    QTableView *m_table;
    QTimer m_follow;
};

} // namespace Shop
