#pragma once

#include <Zelmar01/tasks/TaskScheduler.h>
#include <Zelmar01/tasks/service/store/JobStore.h>

#include <QTimer>
#include <QWidget>

#include <memory>

namespace Ui {
class TasksPage;
}

namespace Shop {

class ShopDatabase;

/// The scheduled jobs of the shop: what runs when, how it went, and what can be done with them. They are in a
/// folder of their own beside the shop's database.
class TasksPage : public QWidget
{
    Q_OBJECT
public:
    /// `shop` must live longer.
    explicit TasksPage(const ShopDatabase &shop, QWidget *parent = nullptr);
    ~TasksPage() override;

    /// Reads all jobs anew. The page does so by itself as long as it is on screen.
    void Refresh();

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void connectButtons();
    void keepUp();
    void showTicks();
    void follow();
    QString currentName() const;
    void select(const QString &name);

    void addJob();
    void runJob();
    void showProperties();
    void deleteJob();
    void tell(const QString &text);

    const ShopDatabase &m_shop;
    const QString m_folder; ///< of the jobs
    const std::shared_ptr<Zelmar01::TJobStore> m_store;
    Zelmar01::TTaskScheduler m_scheduler;
    const std::unique_ptr<Ui::TasksPage> m_ui;
    QTimer m_timer;
    bool m_canRun = false;
};

} // namespace Shop
