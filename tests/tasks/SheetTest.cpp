#include "JobFolderFixture.h"

#include <Zelmar01/tasks/TaskSheets.h>
#include <Zelmar01/tasks/UseTaskSheets.h>
#include <Zelmar01/tasks/service/store/JobFolder.h>
#include <Zelmar01/tasks/service/store/JobPage.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QDialog>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QTimer>

#include <filesystem>
#include <functional>

using namespace Zelmar01;
using namespace Qt::StringLiterals;

namespace {

/// The sheet that is open, by what a user sees of it.
struct TSheet
{
    QDialog *Window;

    template<class Widget>
    Widget &Find(const std::string &name) const
    {
        auto *const widget = Window->findChild<Widget *>(QString::fromStdString(name));
        if (!widget)
            throw std::runtime_error("there is no " + name);
        return *widget;
    }
    QPushButton *Button(const QString &text) const
    {
        for (auto *button : Window->findChildren<QPushButton *>())
            if (button->text() == text)
                return button;
        return nullptr;
    }
    void Press(const QString &text) const
    {
        auto *const button = Button(text);
        if (!button || !button->isEnabled())
            throw std::runtime_error("cannot press " + text.toStdString());
        button->click();
    }
    void Type(const char *field, const QString &text) const
    {
        auto &edit = Find<QLineEdit>(field);
        edit.selectAll();
        edit.insert(text);
    }
    void Check(const std::string &box, bool on) const { Find<QCheckBox>(box).setChecked(on); }
    void Choose(const char *list, int entry) const { Find<QComboBox>(list).setCurrentIndex(entry); }
    QStringList Tabs() const
    {
        QStringList tabs;
        const auto &widget = Find<QTabWidget>("sheetTabs");
        for (int i = 0; i < widget.count(); ++i)
            tabs << widget.tabText(i);
        return tabs;
    }
    QStringList Runs() const
    {
        QStringList lines;
        const auto &widget = Find<QListWidget>("runs");
        for (int i = 0; i < widget.count(); ++i)
            lines << widget.item(i)->text();
        return lines;
    }
};

constexpr auto allPages = TPageTypes(ptTask) | ptSchedule | ptSettings;

/// What the sheet refuses to save, and what it says.
struct TRefusalCase
{
    std::function<void(const TSheet &)> Change;
    const char *Message;
    int Page;
    std::function<void(TASK_TRIGGER &)> Foreign = {}; // what another program has made of the job's trigger
};
const TRefusalCase refusalCases[] = {
    {[](const TSheet &sheet) { sheet.Type("program", u"  "_s); },
     "Indiquez le programme que la tâche doit exécuter.", 0},
    {[](const TSheet &sheet) {
         sheet.Check("hasEnd", true);
         sheet.Find<QDateEdit>("end").setDate({2026, 12, 31});
     },
     "Le dernier jour ne peut pas précéder le premier.", 1},
    {[](const TSheet &sheet) {
         sheet.Check("repeat", true);
         sheet.Find<QSpinBox>("intervalNumber").setValue(24);
     },
     "La répétition doit durer plus longtemps que son intervalle.", 1},
    {[](const TSheet &sheet) {
         sheet.Choose("kind", ttWeekly);
         sheet.Check("weekDays5", false); // 1 January 2027 is a Friday
     },
     "Choisissez au moins un jour de la semaine.", 1},
    {[](const TSheet &sheet) {
         sheet.Choose("kind", ttMonthlyDate);
         for (int month = 0; month < 12; ++month)
             sheet.Check("dateMonths" + std::to_string(month), false);
     },
     "Choisissez au moins un mois.", 1},
    {[](const TSheet &sheet) {
         sheet.Choose("kind", ttMonthlyDate);
         for (int month = 0; month < 12; ++month)
             sheet.Check("dateMonths" + std::to_string(month), month == 1);
         sheet.Check("monthDays0", false);
         sheet.Check("monthDays30", true);
     },
     "Aucun des mois choisis n'a ce jour : la tâche ne démarrerait jamais.", 1},
    {[](const TSheet &sheet) {
         sheet.Find<QSpinBox>("limitNumber").setValue(50);
         sheet.Choose("limitUnit", 2);
     },
     "Une tâche limitée peut durer 49 jours au plus.", 2},
    {[](const TSheet &sheet) { sheet.Check("active", false); },
     "Ce type de déclencheur est inconnu : choisissez une fréquence.", 1,
     [](TASK_TRIGGER &trigger) { trigger.TriggerType = static_cast<TASK_TRIGGER_TYPE>(9); }},
    {[](const TSheet &sheet) { sheet.Check("active", false); },
     "La semaine du mois n'existe pas : choisissez-en une.", 1,
     [](TASK_TRIGGER &trigger) {
         trigger.TriggerType = TASK_TIME_TRIGGER_MONTHLYDOW;
         trigger.Type.MonthlyDOW = {6, TriggerMask::AllWeekdays, TriggerMask::AllMonths};
     }},
};

class SheetTest : public JobFolderTest
{
protected:
    void SetUp() override
    {
        UseTaskSheets();
        SetExceptionDisplay([this](const std::exception &error) {
            m_shown << QString::fromUtf8(error.what());
            if (const auto *cause = CauseOf(error))
                m_shown << QString::fromStdString(cause->Text);
        });
        m_dialog.setTaskScheduler(&m_scheduler);
        m_dialog.setTaskName(u"Export"_s);
        m_dialog.setPages(allPages);
    }
    void TearDown() override
    {
        SetTaskSheet({});
        SetJobSheet({});
        JobFolderTest::TearDown();
    }

    /// `work` uses the sheet that is shown next; one that is left open is cancelled.
    void use(std::function<void(const TSheet &)> work)
    {
        QTimer::singleShot(0, qApp, [work = std::move(work)] {
            auto *const window = qobject_cast<QDialog *>(QApplication::activeModalWidget());
            ASSERT_NE(window, nullptr);
            EXPECT_NO_THROW(work({window}));
            if (window->isVisible())
                window->reject();
        });
    }
    bool execute(std::function<void(const TSheet &)> work)
    {
        use(std::move(work));
        return m_dialog.Execute();
    }

    void changeFile(TTaskItem &item, const std::function<void(TASK_TRIGGER &)> &change)
    {
        const TJobFolder folder(m_store->Folder());
        TJob job;
        ASSERT_EQ(folder.Load(u"Export.job", job), TaskResult::Ok);
        change(job.Triggers[0]);
        ASSERT_EQ(folder.Store(u"Export.job", job), TaskResult::Ok);
        item.Activate();
    }

    QStringList m_shown; // errors
    TTaskPropertiesDialog m_dialog;
};

} // namespace

TEST_F(SheetTest, hasThePagesTheTitleAndTheButtonsThatWereAskedFor)
{
    m_scheduler.CreateNewItem(u"Export"_s);
    EXPECT_FALSE(m_dialog.Execute()) << "a job that was never saved has no pages";
    m_scheduler.Clear();
    makeJob(u"Export"_s);
    EXPECT_FALSE(execute([](const TSheet &sheet) {
        EXPECT_EQ(sheet.Tabs(), (QStringList{u"&Tâche"_s, u"&Planification"_s, u"Pa&ramètres"_s}));
        EXPECT_EQ(sheet.Window->windowTitle(), u"Propriétés de Export"_s);
        EXPECT_TRUE(sheet.Button(u"Annuler"_s));
        EXPECT_FALSE(sheet.Button(u"Appli&quer"_s)->isEnabled()) << "nothing was changed yet";
        EXPECT_FALSE(sheet.Button(u"Aide"_s));
        EXPECT_TRUE(sheet.Window->windowFlags() & Qt::WindowContextHelpButtonHint);
    }));
    m_dialog.setPages(TPageTypes(ptSettings) | ptSchedule);
    m_dialog.setCaption(u"L'export"_s);
    m_dialog.setOptions(TTaskPropDlgOptions(otNoApplyNow) | otNoContextHelp);
    EXPECT_TRUE(execute([](const TSheet &sheet) {
        EXPECT_EQ(sheet.Tabs(), (QStringList{u"&Planification"_s, u"Pa&ramètres"_s}));
        EXPECT_EQ(sheet.Window->windowTitle(), u"L'export"_s);
        EXPECT_FALSE(sheet.Button(u"Appli&quer"_s));
        EXPECT_FALSE(sheet.Window->windowFlags() & Qt::WindowContextHelpButtonHint);
        sheet.Press(u"OK"_s);
    }));
    use([](const TSheet &sheet) { EXPECT_TRUE(sheet.Button(u"Aide"_s)); });
    m_scheduler.ActivateTask(u"Export"_s)->DisplayTaskPages(0, ptTask, u"Pages"_s);
}

TEST_F(SheetTest, applySavesEachTimeAndTellsTheHost)
{
    auto &item = makeJob(u"Export"_s);
    QList<int> counts;
    QObject::connect(&m_dialog, &TTaskPropertiesDialog::OnApply,
                     [&](TTaskPropertiesDialog *, TTaskItem *task) { counts << task->Triggers().Count(); });
    EXPECT_FALSE(execute([&](const TSheet &sheet) {
        for (const auto &comment : {u"une fois"_s, u"deux fois"_s}) {
            sheet.Find<QPlainTextEdit>("comment").setPlainText(comment);
            sheet.Find<QPlainTextEdit>("comment").document()->setModified(true);
            sheet.Press(u"&Nouveau"_s);
            sheet.Press(u"Appli&quer"_s);
            TTaskScheduler other(nullptr, m_store);
            auto *saved = other.ActivateTask(u"Export"_s);
            saved->Activate();
            EXPECT_EQ(saved->Comment(), comment);
            EXPECT_FALSE(sheet.Button(u"Appli&quer"_s)->isEnabled());
        }
        sheet.Type("program", u"/bin/false"_s);
    })) << "cancelled";
    EXPECT_EQ(counts, (QList<int>{2, 3}));
    EXPECT_EQ(item.ApplicationName(), u"/bin/true"_s) << "what was not applied is not in the job";
    EXPECT_EQ(item.Triggers().Count(), 3);
}

TEST_F(SheetTest, okSavesWhatThePagesSay)
{
    auto &item = makeJob(u"Export"_s, {23, 6});
    EXPECT_TRUE(execute([](const TSheet &sheet) {
        sheet.Type("parameters", u"--tout"_s);
        sheet.Check("enabled", false);
        sheet.Find<QListWidget>("triggers").setCurrentRow(1);
        sheet.Choose("kind", ttMonthlyDow);
        sheet.Choose("which", 4);
        sheet.Check("dowDays5", false);
        sheet.Check("dowDays0", true);
        sheet.Check("repeat", true);
        sheet.Find<QSpinBox>("intervalNumber").setValue(2);
        sheet.Check("limited", false);
        sheet.Check("wake", true);
        sheet.Choose("priority", 0);
        sheet.Press(u"OK"_s);
    }));
    item.Activate(); // from its file
    EXPECT_EQ(item.Parameters(), u"--tout"_s);
    EXPECT_EQ(item.Flags(),
              tfDisabled | tfDontStartIfOnBatteries | tfKillIfGoingOnBatteries | tfSystemRequired);
    EXPECT_EQ(item.MaxRunTime(), UnlimitedRunTime);
    EXPECT_EQ(item.Priority(), tpIdle);
    EXPECT_EQ(item.Triggers()[0].GetType(), ttDaily);
    EXPECT_EQ(item.Triggers()[1].AsString(),
              u"Toutes les 2 heures à partir de 06:00 pendant 24 heures le dernier "
              "dim de chaque mois, à partir du 01/01/2027"_s);
}

TEST_F(SheetTest, okWithoutAChangeLeavesTheFileAlone)
{
    auto &item = makeJob(u"Export"_s);
    item.setComment(u"ligne\r\nligne"_s); // which no field shows as it is
    item.setMaxRunTime(90'500);
    item.setFlags(tfInteractive);
    item.Save();
    const auto file = m_folder / "jobs/Export.job";
    const auto before = std::filesystem::last_write_time(file);
    EXPECT_TRUE(execute([](const TSheet &sheet) { sheet.Press(u"OK"_s); }));
    EXPECT_EQ(std::filesystem::last_write_time(file), before);
    EXPECT_TRUE(execute([](const TSheet &sheet) {
        sheet.Check("hidden", true);
        sheet.Press(u"OK"_s);
    }));
    EXPECT_EQ(item.Comment(), u"ligne\r\nligne"_s);
    EXPECT_EQ(item.MaxRunTime(), 90'500U);
    EXPECT_EQ(item.Flags(), tfInteractive | tfHidden);
}

// Not even a trigger that never starts anything, when the one before it goes, and no limit of 0.
TEST_F(SheetTest, leavesAloneWhatNobodyTouches)
{
    auto &item = makeJob(u"Export"_s, {23, 6});
    auto &senseless = item.Triggers()[1];
    senseless.SetType(ttWeekly);
    senseless.setDetails({.Weekly = {1, 0}});
    senseless.UpdateTrigger();
    item.setMaxRunTime(0);
    item.Save();
    EXPECT_TRUE(execute([](const TSheet &sheet) {
        EXPECT_FALSE(sheet.Find<QCheckBox>("limited").isChecked());
        sheet.Find<QListWidget>("triggers").setCurrentRow(0);
        sheet.Press(u"&Supprimer"_s);
        sheet.Press(u"OK"_s);
    }));
    EXPECT_EQ(item.MaxRunTime(), 0U);
    ASSERT_EQ(item.Triggers().Count(), 1);
    EXPECT_EQ(item.Triggers()[0].GetType(), ttWeekly);
}

TEST_F(SheetTest, refusesWhatCouldNeverRunAndStaysOpen)
{
    auto &item = makeJob(u"Export"_s);
    for (const auto &refusal : refusalCases) {
        SCOPED_TRACE(refusal.Message);
        m_shown.clear();
        if (refusal.Foreign)
            changeFile(item, refusal.Foreign);
        const auto type = item.Triggers()[0].GetType();
        EXPECT_FALSE(execute([&](const TSheet &sheet) {
            refusal.Change(sheet);
            sheet.Press(u"OK"_s);
            EXPECT_TRUE(sheet.Window->isVisible());
            EXPECT_EQ(sheet.Find<QTabWidget>("sheetTabs").currentIndex(), refusal.Page);
        }));
        EXPECT_EQ(m_shown, QStringList{QString::fromUtf8(refusal.Message)});
        EXPECT_EQ(item.Triggers()[0].GetType(), type);
        EXPECT_EQ(item.ApplicationName(), u"/bin/true"_s);
    }
}

TEST_F(SheetTest, aSaveThatFailsIsExplainedAndTakenBack)
{
    auto &item = makeJob(u"Export"_s);
    EXPECT_FALSE(execute([&](const TSheet &sheet) {
        std::filesystem::resize_file(m_folder / "jobs/Export.job", 70);
        sheet.Type("program", u"/bin/false"_s);
        sheet.Press(u"&Nouveau"_s);
        sheet.Press(u"OK"_s);
        EXPECT_TRUE(sheet.Window->isVisible());
        EXPECT_TRUE(sheet.Button(u"Appli&quer"_s)->isEnabled());
    }));
    EXPECT_EQ(m_shown, (QStringList{u"La tâche n'a pas été enregistrée"_s,
                                    u"Le fichier de la tâche est incomplet."_s}));
    EXPECT_EQ(item.ApplicationName(), u"/bin/true"_s);
    EXPECT_EQ(item.Triggers().Count(), 1);
}

TEST_F(SheetTest, showsTheNextRunsOfWhatThePageSays)
{
    makeJob(u"Export"_s, {});
    EXPECT_FALSE(execute([](const TSheet &sheet) {
        EXPECT_FALSE(sheet.Find<QLabel>("none").isHidden());
        EXPECT_EQ(sheet.Runs().size(), 1);
        sheet.Press(u"&Nouveau"_s);
        EXPECT_EQ(sheet.Runs().size(), 10);
        EXPECT_TRUE(sheet.Runs().front().endsWith("09:00"_L1));
        EXPECT_TRUE(sheet.Find<QListWidget>("triggers").isHidden()) << "one trigger";
        sheet.Press(u"&Nouveau"_s);
        EXPECT_FALSE(sheet.Find<QListWidget>("triggers").isHidden());
        sheet.Find<QTimeEdit>("time").setTime({0, 30});
        EXPECT_EQ(sheet.Runs().filter(u"00:30"_s).size(), 5);
        sheet.Check("enabled", false);
        EXPECT_EQ(sheet.Runs(), QStringList{u"La tâche est désactivée."_s});
        sheet.Check("enabled", true);
        sheet.Press(u"&Supprimer"_s);
        sheet.Press(u"&Supprimer"_s);
        EXPECT_FALSE(sheet.Button(u"&Supprimer"_s)->isEnabled());
        EXPECT_EQ(sheet.Runs().size(), 1);
    }));
}

// Alt with a letter must reach one field, and every field must say what it is.
TEST_F(SheetTest, canBeUsedByKeyboardAndReadAloud)
{
    makeJob(u"Export"_s, {1, 2});
    EXPECT_FALSE(execute([](const TSheet &sheet) {
        auto &tabs = sheet.Find<QTabWidget>("sheetTabs");
        for (int page = 0; page < tabs.count(); ++page)
            for (int kind = 0; kind < (page == 1 ? 8 : 1); ++kind) {
                tabs.setCurrentIndex(page);
                sheet.Choose("kind", kind);
                QStringList texts = sheet.Tabs();
                for (auto *widget : sheet.Window->findChildren<QWidget *>()) {
                    if (!widget->isVisible())
                        continue;
                    if (auto *label = qobject_cast<QLabel *>(widget))
                        texts << (label->buddy() ? label->text() : QString());
                    else if (auto *button = qobject_cast<QAbstractButton *>(widget))
                        texts << button->text();
                    const bool isField = widget->focusPolicy() & Qt::TabFocus &&
                                         !widget->objectName().startsWith("qt_"_L1) &&
                                         !qobject_cast<QAbstractButton *>(widget) &&
                                         !qobject_cast<QTabWidget *>(widget->parent());
                    EXPECT_FALSE(isField && !widget->focusProxy() && widget->accessibleName().isEmpty())
                        << qPrintable(widget->objectName()) << widget->metaObject()->className();
                }
                QStringList keys;
                for (const auto &text : texts)
                    if (const auto key = QKeySequence::mnemonic(text); !key.isEmpty())
                        keys << key.toString();
                EXPECT_EQ(keys.removeDuplicates(), 0) << page << ' ' << kind << qPrintable(texts.join(u'|'));
            }
    }));
}

TEST_F(SheetTest, aSheetOfTheSystemKeepsInputFromTheWindows)
{
    auto service = std::make_shared<RecordingTaskService>();
    service->Names = {u"Export.job"};
    QWidget window;
    window.show();
    QApplication::setActiveWindow(&window);
    service->WhileSheetIsOpen = [] {
        EXPECT_NE(QApplication::activeModalWidget(), nullptr);
        return 1;
    };
    TTaskScheduler scheduler(nullptr, service);
    m_dialog.setTaskScheduler(&scheduler);
    EXPECT_TRUE(m_dialog.Execute());
    EXPECT_EQ(service->Sheet.Parent, window.winId());
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_EQ(QApplication::activeWindow(), &window);
}
