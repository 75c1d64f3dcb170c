#pragma once

#include <Zelmar01/data/DataSetModel.h>

#include <QGroupBox>
#include <QTimer>

#include <memory>

namespace Ui {
class TablePanel;
}

namespace Shop {

/// The rows of the table of statistical codes, as a dataset has them. The row at its cursor is selected.
class TablePanel : public QGroupBox
{
    Q_OBJECT
public:
    explicit TablePanel(QWidget *parent = nullptr);
    ~TablePanel() override;

    /// Shows the rows of a dataset, which has the columns of CodeTableQuery() and must live longer.
    void ShowRows(Zelmar01::TDataSet &rows);

signals:
    /// The user chose the row of a level.
    void LevelChosen(int id);

private:
    void arrange();
    void follow();

    const std::unique_ptr<Ui::TablePanel> m_ui;
    Zelmar01::TDataSet *m_rows = nullptr;
    Zelmar01::TDataSetModel m_model;
    QTimer m_follow;
};

} // namespace Shop
