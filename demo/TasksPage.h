#pragma once

#include <Zelmar01/tasks/saDialogs.h>
#include <Zelmar01/tasks/service/store/JobStore.h>

#include <QTimer>
#include <QWidget>

#include <memory>

class QLabel;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

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

    /// Reads all jobs anew. The page does so by itself as long as it is on screen.
    void Refresh();

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    QPushButton *makeButton(const QString &name, const QString &text, const QString &tip,
                            void (TasksPage::*work)());
    QWidget *makeList();
    QWidget *makeButtons();
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
    std::shared_ptr<Zelmar01::TJobStore> m_store;
    Zelmar01::TTaskScheduler m_scheduler;
    Zelmar01::TTaskPropertiesDialog m_properties;
    QTimer m_timer;
    bool m_canRun;
    QTreeWidget *m_list;
    QPushButton *m_add, *m_run, *m_show, *m_delete;
    QLabel *m_ticksIcon, *m_ticks, *m_state;
};

} // namespace Shop
