#include "TasksPage.h"

#include "JobRows.h"
#include "ShopDatabase.h"

#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/core/MessageBoxes.h>
#include <Zelmar01/tasks/UseTaskSheets.h>
#include <Zelmar01/tasks/service/store/JobControl.h>
#include <Zelmar01/tasks/service/store/Tick.h>

#include <QDateTime>
#include <QDir>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScopeGuard>
#include <QShortcut>
#include <QStyle>
#include <QTreeWidget>

#include <chrono>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;
using namespace Zelmar01;

namespace Shop {

namespace {

constexpr auto refreshTime = 3s;

#ifdef ZELMAR01_DEMO_JOB_RUNNER
const char *const runner = ZELMAR01_DEMO_JOB_RUNNER; // in the build, where it is not beside this program
#else
const char *const runner = "";
#endif

std::filesystem::path pathOf(const QString &name)
{
    return name.toStdU16String();
}

TJobStoreOptions storeOf(const ShopDatabase &shop)
{
    TJobStoreOptions options;
    options.Folder = pathOf(shop.Beside(u"taches"_s));
    options.Runner = runner;
    return options;
}

// The job that a shop needs first: a copy of its database, every night.
void makeBackup(TTaskItem &item, const ShopDatabase &shop)
{
    const auto today = QDate::currentDate();
    const auto &place = shop.Place();
    item.setWorkingDirectory(shop.Folder());
    item.setComment(u"Copie la base de données du magasin."_s);
    if (place.IsFile()) {
        item.setApplicationName(u"cp"_s);
        item.setParameters(u"\"%1\" \"%2\""_s.arg(place.Database, shop.Beside(u"sauvegarde.db"_s)));
    } else if (place.Driver == "QPSQL"_L1) {
        item.setApplicationName(u"pg_dump"_s);
        item.setParameters(u"--no-password --host=\"%1\" --port=%2 --username=\"%3\" --file=\"%4\" \"%5\""_s
                               .arg(place.Host.isEmpty() ? u"localhost"_s : place.Host)
                               .arg(place.Port)
                               .arg(place.User, shop.Beside(u"sauvegarde.sql"_s), place.Database));
    } else {
        item.setComment(u"Indiquez le programme qui copie la base de données du magasin."_s);
    }
    auto &trigger = item.Triggers().Add();
    trigger.SetType(ttDaily);
    trigger.setBeginDate(EncodeDate(today.year(), today.month(), today.day()));
    trigger.setStartTime(EncodeTime(23, 0, 0, 0));
    trigger.setDetails({.Daily = {1}});
    trigger.UpdateTrigger();
}

} // namespace

TasksPage::TasksPage(const ShopDatabase &shop, QWidget *parent)
    : QWidget(parent), m_shop(shop), m_store(std::make_shared<TJobStore>(storeOf(shop))),
      m_scheduler(nullptr, m_store), m_canRun(!FindJobRunner(runner).empty()), m_list(new QTreeWidget),
      m_ticksIcon(new QLabel), m_ticks(new QLabel), m_state(new QLabel)
{
    setObjectName(u"tasks"_s);
    UseTaskSheets();
    m_properties.setTaskScheduler(&m_scheduler);
    m_properties.setPages(TPageTypes(ptTask) | ptSchedule | ptSettings);

    auto *list = makeList();
    auto *buttons = makeButtons();
    m_ticks->setObjectName(u"ticks"_s);
    m_ticks->setTextFormat(Qt::PlainText);
    m_ticks->setWordWrap(true);
    m_ticks->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_state->setObjectName(u"tasksState"_s);
    m_state->setTextFormat(Qt::PlainText);

    auto *ticks = new QHBoxLayout;
    ticks->addWidget(m_ticksIcon);
    ticks->addWidget(m_ticks, 1);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(ticks);
    layout->addWidget(list, 1);
    layout->addWidget(buttons);
    layout->addWidget(m_state);
    setFocusProxy(m_list);

    if (!m_canRun)
        m_run->setToolTip(u"Le programme zelmar01-job-runner, qui exécute les tâches, est introuvable"_s);
    m_timer.setInterval(refreshTime);
    connect(&m_timer, &QTimer::timeout, this, [this] { ShowingExceptions([this] { Refresh(); }); });
    follow();
}

QWidget *TasksPage::makeList()
{
    m_list->setObjectName(u"jobs"_s);
    m_list->setAccessibleName(u"Tâches planifiées"_s);
    m_list->setHeaderLabels(JobColumns());
    m_list->setRootIsDecorated(false);
    m_list->setAllColumnsShowFocus(true);
    m_list->setAlternatingRowColors(true);
    m_list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    connect(m_list, &QTreeWidget::currentItemChanged, this, &TasksPage::follow);
    connect(m_list, &QTreeWidget::itemActivated, this,
            [this] { ShowingExceptions([this] { showProperties(); }); });

    auto *group = new QGroupBox(u"Tâches planifiées"_s);
    auto *layout = new QVBoxLayout(group);
    layout->addWidget(m_list);
    return group;
}

QPushButton *TasksPage::makeButton(const QString &name, const QString &text, const QString &tip,
                                   void (TasksPage::*work)())
{
    auto *button = new QPushButton(text);
    button->setObjectName(name);
    button->setToolTip(tip);
    connect(button, &QPushButton::clicked, this,
            [this, work] { ShowingExceptions([&] { (this->*work)(); }); });
    return button;
}

QWidget *TasksPage::makeButtons()
{
    m_add = makeButton(u"addJob"_s, u"&Nouvelle tâche"_s, u"Ajoute une sauvegarde de chaque nuit (Inser)"_s,
                       &TasksPage::addJob);
    m_run =
        makeButton(u"runJob"_s, u"&Exécuter"_s, u"Démarre la tâche maintenant (F9)"_s, &TasksPage::runJob);
    m_show =
        makeButton(u"showJob"_s, u"&Propriétés…"_s,
                   u"Montre et change ce que fait la tâche, et quand (Entrée)"_s, &TasksPage::showProperties);
    m_delete =
        makeButton(u"deleteJob"_s, u"&Supprimer"_s, u"Supprime la tâche (Suppr)"_s, &TasksPage::deleteJob);
    const std::pair<QPushButton *, Qt::Key> keys[] = {
        {m_add, Qt::Key_Insert}, {m_run, Qt::Key_F9}, {m_delete, Qt::Key_Delete}};
    for (const auto &[button, key] : keys)
        connect(new QShortcut(key, m_list, nullptr, nullptr, Qt::WidgetShortcut), &QShortcut::activated,
                button, &QPushButton::click);

    auto *row = new QWidget;
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins({});
    for (auto *button : {m_add, m_run, m_show, m_delete})
        layout->addWidget(button);
    layout->addStretch(1);
    return row;
}

void TasksPage::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    ShowingExceptions([this] { Refresh(); });
    m_timer.start();
}

void TasksPage::hideEvent(QHideEvent *event)
{
    m_timer.stop();
    QWidget::hideEvent(event);
}

void TasksPage::Refresh()
{
    m_scheduler.Refresh();
    const auto current = currentName();
    // Rows stay in their places as long as the jobs do.
    for (int i = 0; i < m_scheduler.Count(); ++i) {
        const auto row = ReadJobRow(*m_scheduler.Items(i));
        auto *item = m_list->topLevelItem(i);
        if (!item)
            item = new QTreeWidgetItem(m_list);
        const auto texts = row.Texts();
        for (int column = 0; column < texts.size(); ++column) {
            item->setText(column, texts[column]);
            item->setToolTip(column, texts[column]);
        }
    }
    while (m_list->topLevelItemCount() > m_scheduler.Count())
        delete m_list->takeTopLevelItem(m_scheduler.Count());
    select(current);
    showTicks();
    follow();
}

void TasksPage::showTicks()
{
    const TJobFolder folder(m_store->Folder());
    const auto state = ReadTickState(folder);
    const auto now = QDateTime::currentSecsSinceEpoch();
    const bool arrive = TicksArrive(state, now);
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize);
    m_ticksIcon->setPixmap(
        style()
            ->standardIcon(arrive ? QStyle::SP_MessageBoxInformation : QStyle::SP_MessageBoxWarning)
            .pixmap(size, size));
    const auto last = state.Last
                          ? u"Le dernier appel date du %1."_s.arg(
                                QDateTime::fromSecsSinceEpoch(*state.Last).toString(u"dd/MM/yyyy HH:mm"_s))
                          : u"Il n'y a encore eu aucun appel."_s;
    m_ticks->setText(
        arrive
            ? u"Les tâches démarrent à leurs heures. "_s + last
            : u"Rien n'appelle les tâches à leurs heures : elles ne démarrent que par « Exécuter ». "
              "%1\nPour y remédier : zelmar01-jobs install --folder \"%2\""_s.arg(
                  last, QDir::toNativeSeparators(QString::fromStdU16String(m_store->Folder().u16string()))));
}

void TasksPage::follow()
{
    const bool hasJob = m_list->currentItem() != nullptr;
    for (auto *button : {m_show, m_delete})
        button->setEnabled(hasJob);
    m_run->setEnabled(hasJob && m_canRun);
}

QString TasksPage::currentName() const
{
    const auto *const item = m_list->currentItem();
    return item ? item->text(0) : QString();
}

void TasksPage::select(const QString &name)
{
    const auto found = m_list->findItems(name, Qt::MatchExactly | Qt::MatchCaseSensitive);
    m_list->setCurrentItem(found.isEmpty() ? m_list->topLevelItem(0) : found.first());
}

void TasksPage::addJob()
{
    const auto first = u"Sauvegarde de la base"_s;
    auto name = first;
    for (int number = 2; m_scheduler.ActivateTask(name); ++number)
        name = u"%1 %2"_s.arg(first).arg(number);
    auto *const item = m_scheduler.CreateNewItem(name);
    makeBackup(*item, m_shop);
    item->Save();
    Refresh();
    select(name);
    tell(u"« %1 » est ajoutée. Ses propriétés disent ce qu'elle fait, et quand."_s.arg(name));
}

void TasksPage::runJob()
{
    const auto name = currentName();
    auto *const item = m_scheduler.ActivateTask(name);
    if (!item)
        return Refresh(); // somebody else deleted it
    item->Activate();
    item->Run();
    Refresh();
    tell(u"« %1 » est démarrée."_s.arg(name));
}

void TasksPage::showProperties()
{
    m_timer.stop(); // the sheet's job is one of the list's items
    m_properties.setTaskName(currentName());
    const auto goOn = qScopeGuard([this] { m_timer.start(); });
    m_properties.Execute();
    Refresh();
}

void TasksPage::deleteJob()
{
    const auto name = currentName();
    if (MessageDlg(u"Supprimer la tâche « %1 » ?"_s.arg(name), mtConfirmation, mbYes | mbNo) != mbYes)
        return;
    m_scheduler.DeleteTask(name);
    Refresh();
    tell(u"« %1 » est supprimée."_s.arg(name));
}

void TasksPage::tell(const QString &text)
{
    m_state->setText(text);
}

} // namespace Shop
