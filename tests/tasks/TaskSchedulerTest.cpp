#include "Tasks.h"

#include <QWidget>

#include <functional>

using namespace Zelmar01;
using namespace Qt::StringLiterals;

namespace {

const std::string stopped = "Le gestionnaire de tâches planifiées est arrêté !";

struct TStartCase
{
    TServiceStart Start;
    const char *Box; // what the message box says; null for no box
    bool Opens;
};
const TStartCase startCases[] = {
    {{0, ""}, nullptr, true},
    {{3, "Accès refusé"}, nullptr, true}, // the system says why: connecting will tell
    {{3, ""}, " - 3 - ", false},
    {{6, ""}, " - 6 - ", false},
};

std::string duplicateError(TTaskScheduler &scheduler, const QString &name)
{
    return messageOf<ETaskError>([&] { scheduler.CreateNewItem(name); });
}

// What one operation asks of a service that knows the job "known.job", with the list empty before.
struct TOrderCase
{
    std::function<void(TTaskScheduler &)> Work;
    const char *Calls;
};
const TOrderCase orderCases[] = {
    {[](TTaskScheduler &scheduler) { EXPECT_TRUE(scheduler.CreateNewItem(u"new"_s)->Active()); },
     "Activate new.job, NewWorkItem new.job, SetFlags 192"},
    {[](TTaskScheduler &scheduler) { EXPECT_EQ(scheduler.CreateNewItem(u"new.JOB"_s)->Name(), u"new"_s); },
     "Activate new.JOB, NewWorkItem new.JOB, SetFlags 192"},
    {[](TTaskScheduler &scheduler) {
         EXPECT_EQ(duplicateError(scheduler, u"known"_s), "Une tâche \"known\" existe déjà !");
         EXPECT_EQ(scheduler.Count(), 0);
     },
     "Activate known.job"},
    {[](TTaskScheduler &scheduler) {
         scheduler.setDuplicate(tdActivateFirst);
         EXPECT_TRUE(scheduler.CreateNewItem(u"known"_s)->Active());
         EXPECT_EQ(scheduler.CreateNewItem(u"known.job"_s), scheduler.Items(0));
     },
     "Activate known.job"},
    {[](TTaskScheduler &scheduler) {
         EXPECT_FALSE(scheduler.ActivateTask(u"known"_s)->Active());
         EXPECT_EQ(scheduler.ActivateTask(u"known.job"_s), scheduler.Items(0));
         EXPECT_EQ(duplicateError(scheduler, u"known.job"_s), "Une tâche \"known.job\" existe déjà !");
     },
     "Activate known.job"},
    {[](TTaskScheduler &scheduler) {
         EXPECT_EQ(scheduler.ActivateTask(u"new"_s), nullptr);
         EXPECT_EQ(scheduler.Count(), 0);
     },
     "Activate new.job"},
    {[](TTaskScheduler &scheduler) {
         scheduler.ActivateTask(u"known"_s);
         scheduler.DeleteTask(u"known"_s);
         EXPECT_EQ(scheduler.Count(), 0);
     },
     "Activate known.job, Delete known.job"},
    {[](TTaskScheduler &scheduler) { scheduler.DeleteTask(u"new"_s); }, "Delete new.job"},
    {[](TTaskScheduler &scheduler) {
         scheduler.setAutoRefresh(true);
         scheduler.ActivateTask(u"new"_s);
         scheduler.DeleteTask(u"new"_s);
     },
     "Enum, Next 1, Next 1, Activate new.job, Delete new.job"},
    {[](TTaskScheduler &scheduler) {
         EXPECT_EQ(scheduler.GetTargetComputer(), u"\\\\CAISSE"_s);
         scheduler.SetTargetComputer(u"\\\\BUREAU"_s);
         scheduler.SetTargetComputer({});
     },
     "GetTargetComputer, SetTargetComputer \\\\BUREAU, SetTargetComputer null"},
};

// What needs the service, and the call of it that may fail.
struct TFailureCase
{
    const char *Call;
    std::function<void(TTaskScheduler &)> Work;
};
const TFailureCase failureCases[] = {
    {"Enum", [](TTaskScheduler &scheduler) { scheduler.Refresh(); }},
    {"NewWorkItem", [](TTaskScheduler &scheduler) { scheduler.CreateNewItem(u"Neuve"_s); }},
    {"SetFlags", [](TTaskScheduler &scheduler) { scheduler.CreateNewItem(u"Neuve"_s); }},
    {"Delete", [](TTaskScheduler &scheduler) { scheduler.DeleteTask(u"Inconnue"_s); }},
    {"SetTargetComputer", [](TTaskScheduler &scheduler) { scheduler.SetTargetComputer(u"\\\\X"_s); }},
    {"GetTargetComputer", [](TTaskScheduler &scheduler) { scheduler.GetTargetComputer(); }},
    {"CreateScheduler", [](TTaskScheduler &scheduler) { scheduler.Open(); }},
};

} // namespace

TEST_F(RecordedTasks, aStartThatTheSystemExplainsCountsAsOne)
{
    for (const auto &start : startCases) {
        QStringList boxes;
        SetMessageBox([&](const QString &text, TMsgDlgType type, TMsgDlgButtons buttons) {
            EXPECT_EQ(type, mtWarning);
            EXPECT_EQ(buttons, mbOK);
            boxes << text;
            return mbOK;
        });
        m_service->Start = start.Start;
        EXPECT_EQ(messageOf<ESchedulerError>([&] { m_scheduler.Open(); }), start.Opens ? "nothing" : stopped);
        EXPECT_EQ(m_scheduler.Active(), start.Opens);
        EXPECT_EQ(boxes, start.Box ? QStringList{QString::fromUtf8(start.Box)} : QStringList());
    }
}

TEST_F(RecordedTasks, aFailureInAFormIsShownAndLeavesTheSchedulerInactive)
{
    m_service->Fails["CreateScheduler"] = TaskResult::ClassNotRegistered;
    std::string shown;
    SetExceptionDisplay([&](const std::exception &error) { shown = error.what(); });
    QWidget form;
    TTaskScheduler onForm(&form, m_service);
    EXPECT_FALSE(onForm.Active());
    EXPECT_EQ(shown, "mots du service : REGDB_E_CLASSNOTREG");
    onForm.Loaded();
    EXPECT_THROW(onForm.setActive(true), EOleSysError);
    EXPECT_THROW(TTaskScheduler(nullptr, m_service), EOleSysError);
}

TEST_F(RecordedTasks, operationsAskTheServiceInTheirOrder)
{
    m_service->Names = {u"known.job"};
    for (const auto &order : orderCases) {
        TTaskScheduler scheduler(nullptr, m_service);
        m_service->TakeCalls();
        order.Work(scheduler);
        EXPECT_EQ(m_service->TakeCalls(), order.Calls);
    }
}

TEST_F(RecordedTasks, aRefusalOfTheServiceIsRaisedWithItsCodeAndWords)
{
    for (const auto &failure : failureCases) {
        SCOPED_TRACE(failure.Call);
        m_service->Fails = {{failure.Call, TaskResult::AccessDenied}};
        try {
            failure.Work(m_scheduler);
            ADD_FAILURE() << "nothing raised";
        } catch (const EOleSysError &error) {
            EXPECT_EQ(error.ErrorCode(), TaskResult::AccessDenied);
            EXPECT_STREQ(error.what(), "mots du service : E_ACCESSDENIED");
        }
    }
    m_service->Fails.clear();
    m_scheduler.Clear();
    m_scheduler.Close();
    for (const auto &failure : failureCases) {
        const std::string call = failure.Call;
        if (call != "CreateScheduler" && call != "GetTargetComputer") {
            EXPECT_EQ(messageOf<ESchedulerError>([&] { failure.Work(m_scheduler); }), stopped) << call;
        }
    }
    EXPECT_EQ(m_scheduler.GetTargetComputer(), QString());
}

TEST_F(RecordedTasks, aListingTakesOneNameAtATimeAndGivesItBack)
{
    m_service->Names = {u"b.job", u"A.job", u"c.job", u"a.job"};
    m_service->TakeCalls();
    QStringList asked;
    QObject::connect(&m_scheduler, &TTaskScheduler::OnBeforeTaskAdded,
                     [&](TTaskScheduler *sender, TTaskItem *task, bool &canAdd) {
                         EXPECT_EQ(sender, &m_scheduler);
                         asked << task->Name();
                         canAdd = task->Name() != "c"_L1;
                     });
    m_scheduler.Refresh();
    EXPECT_EQ(m_service->TakeCalls(), "Enum, Next 1, Next 1, Next 1, Next 1, Next 1");
    EXPECT_EQ(asked, (QStringList{u"b"_s, u"A"_s, u"c"_s, u"a"_s}));
    EXPECT_EQ(m_service->Blocks.BlockCount(), 4U) << "the arrays stay with the allocator, the names do not";
    m_scheduler.ActivateTask(u"c"_s); // which nothing keeps out
    QStringList listed;
    for (int i = 0; i < m_scheduler.Count(); ++i)
        listed << m_scheduler.Items(i)->Name();
    EXPECT_EQ(listed, (QStringList{u"a"_s, u"A"_s, u"b"_s, u"c"_s}));

    // What ends a listing early ends it without an error, as the service does at its end.
    m_service->Fails["Next"] = TaskResult::AccessDenied;
    m_scheduler.Refresh();
    EXPECT_EQ(m_scheduler.Count(), 0);
}

TEST_F(RecordedTasks, everyListedNameIsFoundInItsSpellingAndInNoOther)
{
    for (const auto *name : {u"b", u"A", u"c", u"été", u"Été", u"ETE", u"Ete", u"œuf", u"oeuf", u"a-1",
                             u"a 1", u"a1", u"\U0001F48D", u"e\u0301te\u0301", u"\uFEFFa"})
        m_service->Names.push_back(name + std::u16string(u".job"));
    m_scheduler.Refresh();
    ASSERT_EQ(m_scheduler.Count(), 15);
    for (const auto &name : m_service->Names) {
        const auto file = QStringView(name).toString();
        const int index = m_scheduler.IndexOf(file);
        ASSERT_GE(index, 0) << qPrintable(file);
        EXPECT_EQ(m_scheduler.Items(index)->Name() + u".job"_s, file);
    }
    for (const auto *other : {"a.job", "B.job", "A", "ÉTÉ.job", "d.job", ""})
        EXPECT_EQ(m_scheduler.IndexOf(QString::fromUtf8(other)), -1) << other;
    for (const int index : {-1, 15})
        EXPECT_EQ(messageOf<ESchedulerError>([&] { m_scheduler.Items(index); }),
                  "L'index (" + std::to_string(index) + ") de la tâche est hors limite !");
}
