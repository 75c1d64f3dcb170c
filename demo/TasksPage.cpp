#include "TasksPage.h"

#include "JobRows.h"
#include "ShopDatabase.h"
#include "ui_TasksPage.h"

#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/core/MessageBoxes.h>
#include <Zelmar01/tasks/service/store/JobControl.h>
#include <Zelmar01/tasks/service/store/Tick.h>

#include <QDateTime>
#include <QDir>
#include <QScopeGuard>
#include <QShortcut>
#include <QStyle>

#include <chrono>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;
using namespace Zelmar01;

namespace Shop {

namespace {

constexpr auto refreshTime = 3s;

#ifdef ZELMAR01_DEMO_JOB_RUNNER
constexpr const char *builtRunner = ZELMAR01_DEMO_JOB_RUNNER;
#else
constexpr const char *builtRunner = "";
#endif

std::filesystem::path pathOf(const QString &name)
{
    return name.toStdU16String();
}

TJobStoreOptions optionsOf(const QString &folder)
{
    TJobStoreOptions options;
    options.Folder = pathOf(folder);
    // In the build the runner is not beside this program, where it is found.
    if (!qEnvironmentVariableIsSet("ZELMAR01_JOB_RUNNER") && QFile::exists(QFile::decodeName(builtRunner)))
        options.Runner = builtRunner;
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
    : QWidget(parent), m_shop(shop), m_folder(shop.Beside(u"taches"_s)),
      m_store(std::make_shared<TJobStore>(optionsOf(m_folder))), m_scheduler(this, m_store),
      m_ui(std::make_unique<Ui::TasksPage>())
{
    m_ui->setupUi(this);
    setObjectName(u"tasks"_s);
    setFocusProxy(m_ui->jobs);
    m_ui->properties->Component()->setTaskScheduler(&m_scheduler);
    m_ui->jobs->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_canRun = !FindJobRunner(optionsOf(m_folder).Runner).empty();
    if (!m_canRun)
        m_ui->runJob->setToolTip(
            QString::fromStdString(m_store->ExplainResult(TaskResult::ServiceNotInstalled).Words()));
    connectButtons();
    m_timer.setInterval(refreshTime);
    connect(&m_timer, &QTimer::timeout, this, &TasksPage::keepUp);
    follow();
}

TasksPage::~TasksPage() = default;

void TasksPage::connectButtons()
{
    const std::pair<QPushButton *, void (TasksPage::*)()> works[] = {
        {m_ui->addJob, &TasksPage::addJob},
        {m_ui->runJob, &TasksPage::runJob},
        {m_ui->showJob, &TasksPage::showProperties},
        {m_ui->deleteJob, &TasksPage::deleteJob}};
    for (const auto &[button, work] : works)
        connect(button, &QPushButton::clicked, this,
                [this, work = work] { ShowingExceptions([&] { (this->*work)(); }); });
    const std::pair<QPushButton *, Qt::Key> keys[] = {
        {m_ui->addJob, Qt::Key_Insert}, {m_ui->runJob, Qt::Key_F9}, {m_ui->deleteJob, Qt::Key_Delete}};
    for (const auto &[button, key] : keys)
        connect(new QShortcut(key, m_ui->jobs, nullptr, nullptr, Qt::WidgetShortcut), &QShortcut::activated,
                button, &QPushButton::click);
    connect(m_ui->jobs, &QTreeWidget::currentItemChanged, this, &TasksPage::follow);
    connect(m_ui->jobs, &QTreeWidget::itemActivated, m_ui->showJob, &QPushButton::click);
}

void TasksPage::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    keepUp();
}

// A failure is told once, until the page is shown again: its message box would not keep the timer from the
// next.
void TasksPage::keepUp()
{
    m_timer.stop();
    ShowingExceptions([this] {
        Refresh();
        m_timer.start();
    });
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
        auto *item = m_ui->jobs->topLevelItem(i);
        if (!item) {
            item = new QTreeWidgetItem(m_ui->jobs);
            item->setSizeHint(m_ui->jobs->columnCount() - 1, {0, m_ui->jobs->fontMetrics().height() * 7 / 4});
        }
        const auto texts = row.Texts();
        for (int column = 0; column < texts.size(); ++column) {
            item->setText(column, texts[column]);
            item->setToolTip(column, texts[column]);
        }
    }
    while (m_ui->jobs->topLevelItemCount() > m_scheduler.Count())
        delete m_ui->jobs->takeTopLevelItem(m_scheduler.Count());
    select(current);
    showTicks();
    follow();
}

void TasksPage::showTicks()
{
    const TJobFolder folder(pathOf(m_folder));
    const auto state = ReadTickState(folder);
    const auto now = QDateTime::currentSecsSinceEpoch();
    const bool arrive = TicksArrive(state, now);
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize);
    m_ui->ticksIcon->setPixmap(
        style()
            ->standardIcon(arrive ? QStyle::SP_MessageBoxInformation : QStyle::SP_MessageBoxWarning)
            .pixmap(size, size));
    const auto last = state.Last
                          ? u"Le dernier appel date du %1."_s.arg(
                                QDateTime::fromSecsSinceEpoch(*state.Last).toString(u"dd/MM/yyyy HH:mm"_s))
                          : u"Il n'y a encore eu aucun appel."_s;
    m_ui->ticks->setText(
        arrive ? u"Les tâches démarrent à leurs heures. "_s + last
               : u"Rien n'appelle les tâches à leurs heures : elles ne démarrent que par « Exécuter ». "
                 "%1\nPour y remédier : zelmar01-jobs install --folder \"%2\""_s.arg(
                     last, QDir::toNativeSeparators(m_folder)));
}

void TasksPage::follow()
{
    const bool hasJob = m_ui->jobs->currentItem() != nullptr;
    for (auto *button : {m_ui->showJob, m_ui->deleteJob})
        button->setEnabled(hasJob);
    m_ui->runJob->setEnabled(hasJob && m_canRun);
}

QString TasksPage::currentName() const
{
    const auto *const item = m_ui->jobs->currentItem();
    return item ? item->text(0) : QString();
}

void TasksPage::select(const QString &name)
{
    const auto found = m_ui->jobs->findItems(name, Qt::MatchExactly | Qt::MatchCaseSensitive);
    m_ui->jobs->setCurrentItem(found.isEmpty() ? m_ui->jobs->topLevelItem(0) : found.first());
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
    auto *properties = m_ui->properties->Component();
    properties->setTaskName(currentName());
    const auto goOn = qScopeGuard([this] { m_timer.start(); });
    properties->Execute();
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
    m_ui->tasksState->setText(text);
}

} // namespace Shop
