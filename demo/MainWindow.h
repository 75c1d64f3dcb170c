#pragma once

#include "DatabasePlace.h"
#include "TillPage.h"

#include <QMainWindow>

#include <memory>
#include <optional>

namespace Ui {
class MainWindow;
}

namespace Shop {

class CodesPage;
class ShopDatabase;
class TasksPage;

/// The shop: a list of pages, and the page chosen in it.
class MainWindow : public QMainWindow
{
    Q_OBJECT
public:
    /// `settings` keeps the user's choices from one start to the next; null for none. Neither it nor the
    /// database is owned; both must live longer.
    MainWindow(TillPage::TClock clock, ShopDatabase &database, QSettings *settings);
    ~MainWindow() override;

    TillPage &Till() const { return *m_till; }

    /// The pages in their order; the object name of each is short and fit for a file name.
    QList<QWidget *> Pages() const;
    void ShowPage(QWidget *page);

    /// The database that the user has chosen instead of this one, which closed the window.
    const std::optional<TDatabasePlace> &NewPlace() const { return m_newPlace; }

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void arrangeList();
    void chooseDatabase(const TDatabasePlace &place);

    QSettings *m_settings;
    std::optional<TDatabasePlace> m_newPlace;
    const std::unique_ptr<Ui::MainWindow> m_ui;
    TillPage *m_till;
    CodesPage *m_codes;
    TasksPage *m_tasks;
};

} // namespace Shop
