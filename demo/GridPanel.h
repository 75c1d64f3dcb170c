#pragma once

#include <Zelmar01/data/ClientDataSet.h>
#include <Zelmar01/data/DataSource.h>

#include <QGroupBox>

#include <memory>

namespace Ui {
class GridPanel;
}

namespace Shop {

/// The articles in a grid: those of the database, which a click on a title sorts there, or a copy in memory,
/// which it sorts by an index.
class GridPanel : public QGroupBox
{
    Q_OBJECT
public:
    /// The articles as they are read when nothing sorts them.
    static QString ArticlesText();

    explicit GridPanel(QWidget *parent = nullptr);
    ~GridPanel() override;

    /// Says once whose articles these are; they must live longer.
    void Use(Zelmar01::TDataSource &articles);
    /// Shows the articles of the database again.
    void ShowArticles();
    /// Shows that many invented articles, in memory.
    void ShowMany(int rows);
    /// The rows that are shown.
    Zelmar01::TDataSet &Shown() const;

signals:
    /// Shown() may be others.
    void ShownChanged();

private:
    void showCopy();
    void leaveRows();
    void show(Zelmar01::TDataSource &source);
    void showOrder();
    void showPlace();
    bool isInMemory() const;

    const std::unique_ptr<Ui::GridPanel> m_ui;
    Zelmar01::TDataSource *m_articles = nullptr;
    Zelmar01::TClientDataSet m_memory;
    Zelmar01::TDataSource m_memorySource;
};

} // namespace Shop
