#include "TasksRound.h"

#include "Hands.h"
#include "MainWindow.h"
#include "TasksPage.h"

#include <Zelmar01/tasks/TaskTriggers.h>

#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QTimer>
#include <QTreeWidget>

using namespace Qt::StringLiterals;
using namespace Zelmar01;

namespace Shop {

namespace {

constexpr int resultColumn = 3, scheduleColumn = 5;

// Chooses another kind of schedule in the sheet that opens, and confirms it.
void changeSchedule(QPushButton &properties, TTriggerType kind)
{
    bool changed = false;
    QTimer::singleShot(0, &properties, [&] {
        auto *const sheet = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        auto *const kinds = sheet ? sheet->findChild<QComboBox *>(u"kind"_s) : nullptr;
        auto *const buttons = sheet ? sheet->findChild<QDialogButtonBox *>() : nullptr;
        if (kinds && buttons) {
            kinds->setCurrentIndex(kind);
            buttons->button(QDialogButtonBox::Ok)->click();
            changed = sheet->result() == QDialog::Accepted;
        }
        if (sheet && !changed)
            sheet->reject();
    });
    properties.click();
    if (!changed)
        Fail(u"les propriétés de la tâche ne se laissent pas changer"_s);
}

} // namespace

QString GoRoundTasks(MainWindow &window)
{
    auto &page = Find<TasksPage>(window, u"tasks"_s);
    auto &jobs = Find<QTreeWidget>(page, u"jobs"_s);
    auto &add = Find<QPushButton>(page, u"addJob"_s);
    window.ShowPage(&page);
    add.click();
    add.click();
    if (jobs.topLevelItemCount() != 2)
        Fail(u"les tâches ne sont pas ajoutées"_s);
    jobs.setCurrentItem(jobs.topLevelItem(1));
    changeSchedule(Find<QPushButton>(page, u"showJob"_s), ttWeekly);

    jobs.setCurrentItem(jobs.topLevelItem(0));
    if (auto &run = Find<QPushButton>(page, u"runJob"_s); run.isEnabled()) {
        run.click();
        const auto hasRun = [&] {
            page.Refresh();
            return jobs.topLevelItem(0)->text(resultColumn) == u"réussie"_s;
        };
        WaitUntil(hasRun, u"la tâche démarrée ne réussit pas"_s);
    }
    QString report;
    for (int i = 0; i < jobs.topLevelItemCount(); ++i)
        report +=
            u"%1 : %2, %3\n"_s.arg(jobs.topLevelItem(i)->text(0), jobs.topLevelItem(i)->text(resultColumn),
                                   jobs.topLevelItem(i)->text(scheduleColumn));
    return report;
}

} // namespace Shop
