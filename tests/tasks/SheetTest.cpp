#include "JobFolderFixture.h"

#include <Zelmar01/tasks/TaskSheets.h>
#include <Zelmar01/tasks/UseTaskSheets.h>
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
    Widget &Find(const char *name) const
    {
        auto *const widget = Window->findChild<Widget *>(QString::fromUtf8(name));
        if (!widget)
            throw std::runtime_error(std::string("there is no ") + name);
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
    QStringList Tabs() const
    {
        QStringList tabs;
        const auto &widget = Find<QTabWidget>("sheetTabs");
        for (int i = 0; i < widget.count(); ++i)
            tabs << widget.tabText(i);
        return tabs;
    }
    QStringList Lines(const char *list) const
    {
        QStringList lines;
        const auto &widget = Find<QListWidget>(list);
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
};
const TRefusalCase refusalCases[] = {
    {[](const TSheet &sheet) { sheet.Type("program", u"  "_s); },
     "Indiquez le programme que la tâche doit exécuter.", 0},
    {[](const TSheet &sheet) {
         sheet.Find<QCheckBox>("hasEnd").setChecked(true);
         sheet.Find<QDateEdit>("end").setDate({2026, 12, 31});
     },
     "Le dernier jour ne peut pas précéder le premier.", 1},
    {[](const TSheet &sheet) {
         sheet.Find<QCheckBox>("repeat").setChecked(true);
         sheet.Find<QSpinBox>("intervalNumber").setValue(24);
     },
     "La répétition doit durer plus longtemps que son intervalle.", 1},
    {[](const TSheet &sheet) {
         sheet.Find<QComboBox>("kind").setCurrentIndex(ttWeekly);
         sheet.Find<QCheckBox>("weekDays5").setChecked(false); // 1 January 2027 is a Friday
     },
     "Choisissez au moins un jour de la semaine.", 1},
    {[](const TSheet &sheet) {
         sheet.Find<QComboBox>("kind").setCurrentIndex(ttMonthlyDate);
         for (int month = 0; month < 12; ++month)
             sheet.Find<QCheckBox>(("dateMonths" + std::to_string(month)).c_str()).setChecked(false);
     },
     "Choisissez au moins un mois.", 1},
    {[](const TSheet &sheet) {
         sheet.Find<QComboBox>("kind").setCurrentIndex(ttMonthlyDate);
         for (int month = 0; month < 12; ++month)
             sheet.Find<QCheckBox>(("dateMonths" + std::to_string(month)).c_str()).setChecked(month == 1);
         sheet.Find<QCheckBox>("monthDays0").setChecked(false);
         sheet.Find<QCheckBox>("monthDays30").setChecked(true);
     },
     "Aucun des mois choisis n'a ce jour : la tâche ne démarrerait jamais.", 1},
    {[](const TSheet &sheet) {
         sheet.Find<QSpinBox>("limitNumber").setValue(50);
         sheet.Find<QComboBox>("limitUnit").setCurrentIndex(2);
     },
     "Une tâche limitée peut durer 49 jours au plus.", 2},
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

    /// Does the dialog's Execute() while `work` uses the sheet; a sheet that is left open is cancelled.
    bool execute(const std::function<void(const TSheet &)> &work)
    {
        QTimer::singleShot(0, qApp, [&] {
            auto *const window = qobject_cast<QDialog *>(QApplication::activeModalWidget());
            ASSERT_NE(window, nullptr);
            EXPECT_NO_THROW(work({window}));
            if (window->isVisible())
                window->reject();
        });
        return m_dialog.Execute();
    }

    QStringList m_shown; // errors
    TTaskPropertiesDialog m_dialog;
};

} // namespace

TEST_F(SheetTest, hasThePagesTheTitleAndTheButtonsThatWereAskedFor)
{
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
    QTimer::singleShot(0, qApp, [] {
        auto *const window = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        EXPECT_TRUE((TSheet{window}.Button(u"Aide"_s)));
        window->reject();
    });
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
        sheet.Find<QCheckBox>("enabled").setChecked(false);
        sheet.Find<QListWidget>("triggers").setCurrentRow(1);
        sheet.Find<QComboBox>("kind").setCurrentIndex(ttMonthlyDow);
        sheet.Find<QComboBox>("which").setCurrentIndex(4);
        sheet.Find<QCheckBox>("dowDays5").setChecked(false);
        sheet.Find<QCheckBox>("dowDays0").setChecked(true);
        sheet.Find<QCheckBox>("repeat").setChecked(true);
        sheet.Find<QSpinBox>("intervalNumber").setValue(2);
        sheet.Find<QCheckBox>("limited").setChecked(false);
        sheet.Find<QCheckBox>("wake").setChecked(true);
        sheet.Find<QComboBox>("priority").setCurrentIndex(0);
        sheet.Press(u"OK"_s);
    }));
    item.Activate(); // from its file
    EXPECT_EQ(item.Parameters(), u"--tout"_s);
    EXPECT_EQ(item.Flags(),
              tfDisabled | tfDontStartIfOnBatteries | tfKillIfGoingOnBatteries | tfSystemRequired);
    EXPECT_EQ(item.MaxRunTime(), UnlimitedRunTime);
    EXPECT_EQ(item.Priority(), tpIdle);
    auto &second = item.Triggers()[1];
    EXPECT_EQ(second.GetType(), ttMonthlyDow);
    EXPECT_EQ(second.Details().MonthlyDOW.wWhichWeek, 5);
    EXPECT_EQ(second.Details().MonthlyDOW.rgfDaysOfTheWeek, 1);
    EXPECT_EQ(second.Details().MonthlyDOW.rgfMonths, 0xFFF);
    EXPECT_EQ(second.StartTime(), EncodeTime(6, 0, 0, 0));
    EXPECT_EQ(second.Interval(), 120U);
    EXPECT_EQ(second.Duration(), 24U * 60);
    EXPECT_EQ(item.Triggers()[0].GetType(), ttDaily);
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
        sheet.Find<QCheckBox>("hidden").setChecked(true);
        sheet.Press(u"OK"_s);
    }));
    EXPECT_EQ(item.Comment(), u"ligne\r\nligne"_s);
    EXPECT_EQ(item.MaxRunTime(), 90'500U);
    EXPECT_EQ(item.Flags(), tfInteractive | tfHidden);
}

TEST_F(SheetTest, refusesWhatCouldNeverRunAndStaysOpen)
{
    auto &item = makeJob(u"Export"_s);
    for (const auto &refusal : refusalCases) {
        m_shown.clear();
        EXPECT_FALSE(execute([&](const TSheet &sheet) {
            refusal.Change(sheet);
            sheet.Press(u"OK"_s);
            EXPECT_TRUE(sheet.Window->isVisible());
            EXPECT_EQ(sheet.Find<QTabWidget>("sheetTabs").currentIndex(), refusal.Page);
        }));
        EXPECT_EQ(m_shown, QStringList{QString::fromUtf8(refusal.Message)});
        EXPECT_EQ(item.Triggers()[0].GetType(), ttDaily);
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
        EXPECT_EQ(sheet.Lines("runs").size(), 1);
        sheet.Press(u"&Nouveau"_s);
        EXPECT_EQ(sheet.Lines("runs").size(), 10);
        EXPECT_TRUE(sheet.Lines("runs").front().endsWith("09:00"_L1));
        EXPECT_TRUE(sheet.Find<QListWidget>("triggers").isHidden()) << "one trigger";
        sheet.Press(u"&Nouveau"_s);
        EXPECT_FALSE(sheet.Find<QListWidget>("triggers").isHidden());
        sheet.Find<QTimeEdit>("time").setTime({0, 30});
        EXPECT_EQ(sheet.Lines("runs").filter(u"00:30"_s).size(), 5);
        sheet.Find<QCheckBox>("enabled").setChecked(false);
        EXPECT_EQ(sheet.Lines("runs"), QStringList{u"La tâche est désactivée."_s});
        sheet.Find<QCheckBox>("enabled").setChecked(true);
        sheet.Press(u"&Supprimer"_s);
        sheet.Press(u"&Supprimer"_s);
        EXPECT_FALSE(sheet.Button(u"&Supprimer"_s)->isEnabled());
        EXPECT_EQ(sheet.Lines("runs").size(), 1);
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
                sheet.Find<QComboBox>("kind").setCurrentIndex(kind);
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
