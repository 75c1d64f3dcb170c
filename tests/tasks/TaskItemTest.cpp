#include "Tasks.h"

#include <Zelmar01/tasks/TaskSheets.h>

#include <QBuffer>
#include <QFile>

#include <functional>

using namespace Zelmar01;
using namespace Qt::StringLiterals;

namespace {

QByteArray dataOf(TTaskItem &item)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    item.GetBinaryData(buffer);
    return bytes;
}

void setData(TTaskItem &item, QByteArray bytes, int from)
{
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    buffer.seek(from);
    item.SetBinaryData(buffer);
}

TDateTimeArray runTimes(TTaskItem &item, TDateTime end, quint16 count)
{
    TDateTimeArray times{1, 2, 3};
    item.GetRunTimes(EncodeDate(2027, 1, 1), end, count, times);
    EXPECT_EQ(times.size(), count);
    return times;
}

// Every property and method that is one call of the service, and at most one before that: what makes them.
struct TCallCase
{
    std::string Calls;
    std::function<void(TTaskItem &)> Work;
};
const std::string askFile = "QueryInterface IPersistFile, ";
const TCallCase callCases[] = {
    {"GetAccountInformation",
     [](TTaskItem &item) { EXPECT_EQ(item.AccountName(), "GetAccountInformation"_L1); }},
    {"GetApplicationName",
     [](TTaskItem &item) { EXPECT_EQ(item.ApplicationName(), "GetApplicationName"_L1); }},
    {"SetApplicationName /bin/échange", [](TTaskItem &item) { item.setApplicationName(u"/bin/échange"_s); }},
    {"GetParameters", [](TTaskItem &item) { EXPECT_EQ(item.Parameters(), "GetParameters"_L1); }},
    {"SetParameters -a", [](TTaskItem &item) { item.setParameters(u"-a"_s); }},
    {"GetWorkingDirectory",
     [](TTaskItem &item) { EXPECT_EQ(item.WorkingDirectory(), "GetWorkingDirectory"_L1); }},
    {"SetWorkingDirectory /tmp", [](TTaskItem &item) { item.setWorkingDirectory(u"/tmp"_s); }},
    {"GetComment", [](TTaskItem &item) { EXPECT_EQ(item.Comment(), "GetComment"_L1); }},
    {"SetComment de nuit", [](TTaskItem &item) { item.setComment(u"de nuit"_s); }},
    {"GetCreator", [](TTaskItem &item) { EXPECT_EQ(item.Creator(), "GetCreator"_L1); }},
    {"SetCreator nous", [](TTaskItem &item) { item.setCreator(u"nous"_s); }},
    {"GetFlags", [](TTaskItem &item) { item.Flags(); }},
    {"SetFlags 516", [](TTaskItem &item) { item.setFlags(tfDisabled | tfHidden); }},
    {"SetFlags 0", [](TTaskItem &item) { item.setFlags({}); }},
    {"GetIdleWait", [](TTaskItem &item) { item.IdleTime(); }},
    {"SetIdleWait 10 60",
     [](TTaskItem &item) {
         item.setIdleTime(TIdleTime{10, 60});
     }},
    {"GetMaxRunTime", [](TTaskItem &item) { item.MaxRunTime(); }},
    {"SetMaxRunTime 4294967295", [](TTaskItem &item) { item.setMaxRunTime(UnlimitedRunTime); }},
    {"GetPriority", [](TTaskItem &item) { item.Priority(); }},
    {"SetPriority 64", [](TTaskItem &item) { item.setPriority(tpIdle); }},
    {"SetPriority 32", [](TTaskItem &item) { item.setPriority(tpNormal); }},
    {"SetPriority 128", [](TTaskItem &item) { item.setPriority(tpHigh); }},
    {"SetPriority 256", [](TTaskItem &item) { item.setPriority(tpRealTime); }},
    {"GetStatus", [](TTaskItem &item) { item.Status(); }},
    {"GetExitCode", [](TTaskItem &item) { item.ExitCode(); }},
    {"GetMostRecentRunTime", [](TTaskItem &item) { EXPECT_EQ(item.MostRecentRunTime(), -693959.0); }},
    {"GetNextRunTime", [](TTaskItem &item) { EXPECT_EQ(item.NextRunTime(), -693959.0); }},
    {askFile + "IsDirty", [](TTaskItem &item) { EXPECT_TRUE(item.IsDirty()); }},
    {askFile + "GetCurFile", [](TTaskItem &item) { item.CurFile(); }},
    {"Run", [](TTaskItem &item) { item.Run(); }},
    {"Terminate", [](TTaskItem &item) { item.Terminate(); }},
    {askFile + "Save null remember", [](TTaskItem &item) { item.Save(); }},
    {askFile + "Save /x.job remember", [](TTaskItem &item) { item.Save(u"/x.job"_s); }},
    {"SetAccountInformation caisse ",
     [](TTaskItem &item) { item.SetAccountInformation(u"caisse"_s, u""_s); }},
    {"SetAccountInformation  null", [](TTaskItem &item) { item.SetAccountInformation({}, {}); }},
    {"EditWorkItem 0 0", [](TTaskItem &item) { item.EditWorkItem(); }},
    {"GetTriggerCount", [](TTaskItem &item) { item.Triggers().InitTriggers(); }},
    {"CreateTrigger", [](TTaskItem &item) { item.Triggers().Add(); }},
    {"GetWorkItemData", [](TTaskItem &item) { EXPECT_EQ(dataOf(item), ""); }},
    {"SetWorkItemData 2", [](TTaskItem &item) { setData(item, "abcd", 2); }},
    {"GetRunTimes from 2027 to null 3", [](TTaskItem &item) { runTimes(item, 0, 3); }},
};

const std::string askPages = "QueryInterface IProvideTaskPage";
const std::string notActive = "La tâche \"Export n'est pas active\" !";

} // namespace

TEST_F(RecordedTasks, aPropertyIsOneCallWhoseRefusalIsRaised)
{
    auto &item = activeItem();
    for (const auto &row : callCases) {
        SCOPED_TRACE(row.Calls);
        row.Work(item);
        EXPECT_EQ(m_service->TakeCalls(), row.Calls);
        for (const auto &call : QString::fromStdString(row.Calls).split(u", "_s)) {
            m_service->Fails = {{call.section(u' ', 0, 0).toStdString(), TaskResult::InvalidArgument}};
            EXPECT_EQ(messageOf<EOleSysError>([&] { row.Work(item); }), "mots du service : E_INVALIDARG");
        }
        m_service->Fails.clear();
        m_service->TakeCalls();
    }
    item.Deactivate(false);
    for (const auto &row : callCases)
        EXPECT_EQ(messageOf<ETaskError>([&] { row.Work(item); }), notActive) << row.Calls;
    EXPECT_EQ(messageOf<ETaskError>([&] { item.Deactivate(true); }), notActive);
    EXPECT_EQ(m_service->TakeCalls(), "");
    EXPECT_EQ(item.Name(), u"Export"_s);
}

TEST_F(RecordedTasks, openingAJobReadsItsTriggers)
{
    m_service->Triggers.resize(2);
    auto &item = activeItem();
    item.Activate();
    EXPECT_EQ(m_service->TakeCalls(),
              "Activate Export.job, GetTriggerCount, GetTrigger 0, GetTrigger, GetTrigger 1, GetTrigger");

    // The scheduler's own name stands in the message, not the job's.
    m_scheduler.setObjectName(u"Scheduler1"_s);
    m_service->Fails["Activate"] = TaskResult::FileNotFound;
    EXPECT_EQ(messageOf<ESchedulerError>([&] { item.Activate(); }),
              "La tâche \"Scheduler1 ne peut pas être activée\" !");
    EXPECT_FALSE(item.Active());
    m_scheduler.Close();
    EXPECT_EQ(messageOf<ESchedulerError>([&] { item.Activate(); }),
              "Le gestionnaire de tâches planifiées est arrêté !");
}

TEST_F(RecordedTasks, closingAJobSavesWhatWasChanged)
{
    const struct
    {
        bool Save;
        TTaskResult Dirty;
        std::string Calls;
    } cases[] = {
        {false, TaskResult::Ok, ""},
        {true, TaskResult::False, askFile + "IsDirty"},
        {true, TaskResult::Ok, askFile + "IsDirty, SetTrigger 0, SetTrigger 1, Save null remember"},
    };
    m_service->Triggers.resize(2);
    auto &item = activeItem();
    for (const auto &closing : cases) {
        m_service->Fails["IsDirty"] = closing.Dirty;
        item.Deactivate(closing.Save);
        EXPECT_EQ(m_service->TakeCalls(), closing.Calls);
        EXPECT_FALSE(item.Active());
        item.Activate();
        m_service->TakeCalls();
    }
    m_service->Fails["IsDirty"] = TaskResult::Ok;
    for (const auto *call : {"SetTrigger", "Save"}) {
        m_service->Fails = {{call, TaskResult::AccessDenied}};
        EXPECT_THROW(item.Deactivate(true), EOleSysError);
        EXPECT_TRUE(item.Active()) << "what was not saved is still there";
    }
}

TEST_F(RecordedTasks, valuesOfTheServiceAreReadAsTheyCome)
{
    auto &item = activeItem();
    m_service->Flags = 0xFFFF;
    EXPECT_EQ(item.Flags().toInt(), 0x3EF7U) << "bits without a name are left out";
    m_service->Flags = 0x80 | 0x2 | 0x100;
    EXPECT_EQ(item.Flags(), tfKillIfGoingOnBatteries | tfDeleteWhenDone);

    const std::pair<quint32, TTaskPriority> priorities[] = {{0x40, tpIdle},      {0x80, tpHigh},
                                                            {0x100, tpRealTime}, {0x20, tpNormal},
                                                            {0x4000, tpNormal},  {0, tpNormal}};
    for (const auto &[value, priority] : priorities) {
        m_service->Priority = value;
        EXPECT_EQ(item.Priority(), priority) << value;
    }
    for (int status = 0; status < 8; ++status) {
        m_service->Status = TaskResult::TaskReady + status;
        EXPECT_EQ(item.Status(), status);
    }
    m_service->Status = ResultOf(0x00041325);
    EXPECT_EQ(static_cast<int>(item.Status()), 0x25);
}

TEST_F(RecordedTasks, runTimesAreAskedForInABoundOrWithout)
{
    auto &item = activeItem();
    m_service->RunTimes = {{2027, 1, 1, 4, 9, 30}, {2027, 1, 2, 5, 9, 30}};
    EXPECT_EQ(runTimes(item, EncodeDate(2028, 1, 1), 2),
              (TDateTimeArray{EncodeDate(2027, 1, 4) + EncodeTime(9, 30, 0, 0),
                              EncodeDate(2027, 1, 5) + EncodeTime(9, 30, 0, 0)}));
    EXPECT_EQ(m_service->TakeCalls(), "GetRunTimes from 2027 to 2028 2");
    EXPECT_EQ(m_service->Blocks.BlockCount(), 0U);
    quint16 count = 5;
    TDateTimeArray times;
    item.GetRunTimes(EncodeDate(2027, 1, 1), 0.99, count, times);
    EXPECT_EQ(m_service->TakeCalls(), "GetRunTimes from 2027 to null 5");
    EXPECT_EQ(std::pair(count, times.size()), std::pair(quint16{2}, qsizetype{2})) << "fewer than asked for";
    EXPECT_TRUE(runTimes(item, 0, 0).isEmpty());
    EXPECT_THROW(item.GetRunTimes(-1e9, 0, count, times), EConvertError);
}

TEST_F(RecordedTasks, binaryDataAreWhatIsLeftInTheStream)
{
    auto &item = activeItem();
    const auto blocks = m_service->Blocks.BlockCount();
    for (const auto &[size, stored] : {std::pair{70'000, 4464}, {65'535, 65'535}, {65'536, -1}, {0, -1}}) {
        m_service->Data = "before";
        setData(item, QByteArray(size, 'x'), 0);
        EXPECT_EQ(static_cast<int>(m_service->Data.size()), stored < 0 ? 6 : stored);
    }
    EXPECT_EQ(m_service->Blocks.BlockCount(), blocks + 2) << "blocks passed on stay with the allocator";
    m_service->Data = std::string("a\0b", 3);
    EXPECT_EQ(dataOf(item), QByteArray("a\0b", 3));
    QFile full(u"/dev/full"_s);
    full.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
    EXPECT_THROW(item.GetBinaryData(full), EInOutError);
}

TEST_F(RecordedTasks, aTriggerIsACopyUntilItIsWritten)
{
    auto &item = activeItem();
    auto &trigger = item.Triggers().Add();
    EXPECT_EQ(trigger.BeginDate(), 0);
    EXPECT_EQ(trigger.EndDate(), 0);
    EXPECT_EQ(trigger.StartTime(), 0);
    EXPECT_EQ(trigger.GetType(), ttOnce);
    EXPECT_FALSE(trigger.Enabled());
    m_service->TakeCalls();

    trigger.setStartTime(EncodeTime(14, 35, 59, 999));
    EXPECT_EQ(trigger.StartTime(), EncodeTime(14, 35, 0, 0));
    trigger.setEndDate(EncodeDate(2028, 2, 29));
    EXPECT_FALSE(trigger.HasEndDate());
    trigger.setBeginDate(EncodeDate(2027, 1, 4) + 0.5);
    trigger.SetType(ttWeekly);
    trigger.setDetails({.Weekly = {2, 0x22}});
    trigger.setEnabled(true);
    EXPECT_EQ(m_service->TakeCalls(), "");

    trigger.UpdateTrigger();
    const auto &record = m_service->Triggers.at(0);
    EXPECT_EQ(record.cbTriggerSize, 48);
    EXPECT_EQ(record.wBeginDay, 4);
    EXPECT_EQ(record.wEndYear, 2028);
    EXPECT_EQ(record.wStartMinute, 35);
    EXPECT_EQ(record.rgFlags, TriggerFlag::Disabled) << "Enabled is the service's flag disabled";
    EXPECT_EQ(record.Type.Weekly.rgfDaysOfTheWeek, 0x22);

    // What a record holds beside the low byte of its kind, or that is no date, does no harm.
    m_service->Triggers[0].TriggerType = static_cast<TASK_TRIGGER_TYPE>(0x12345602);
    m_service->Triggers[0].wBeginDay = 32;
    m_service->Triggers[0].wStartHour = 24;
    item.Triggers().InitTriggers();
    auto &odd = item.Triggers()[0];
    EXPECT_EQ(odd.GetType(), ttWeekly);
    EXPECT_EQ(odd.BeginDate(), 0);
    EXPECT_EQ(odd.StartTime(), 0);
    odd.SetType(ttAtLogon);
    odd.UpdateTrigger();
    EXPECT_EQ(m_service->Triggers[0].TriggerType, static_cast<TASK_TRIGGER_TYPE>(0x12345607));
}

TEST_F(RecordedTasks, triggersAreDeletedInTheServiceToo)
{
    m_service->Triggers.resize(3);
    auto &item = activeItem();
    auto &triggers = item.Triggers();
    triggers.Delete(1);
    EXPECT_EQ(m_service->TakeCalls(), "DeleteTrigger 1");
    EXPECT_EQ(triggers.Count(), 2);
    for (const int index : {-1, 2}) {
        const auto message = "L'index (" + std::to_string(index) + ") du déclencheur est hors limite !";
        EXPECT_EQ(messageOf<ETriggerError>([&] { triggers.Delete(index); }), message);
        EXPECT_EQ(messageOf<ETriggerError>([&] { triggers[index]; }), message);
    }
    m_service->Fails["DeleteTrigger"] = TaskResult::AccessDenied;
    EXPECT_THROW(triggers.Delete(0), EOleSysError);
    EXPECT_THROW(triggers.Clear(), EOleSysError);
    EXPECT_EQ(triggers.Count(), 2);
    m_service->Fails.clear();
    m_service->TakeCalls();
    triggers.Clear();
    EXPECT_EQ(m_service->TakeCalls(), "DeleteTrigger 1, DeleteTrigger 0");
    EXPECT_EQ(triggers.Count(), 0);
}

TEST_F(RecordedTasks, triggersAreToldInWords)
{
    const struct
    {
        std::size_t Count;
        const char *Summary, *Lines;
    } cases[] = {
        {0, "La tâche n'a pas été planifiée", "<La tâche n'a pas été planifiée>"},
        {1, "trigger 0", "trigger 0"},
        {2, "La tâche est planifiée plusieurs fois", "1. trigger 0|2. trigger 1"},
    };
    auto &item = activeItem();
    for (const auto &told : cases) {
        m_service->Triggers.resize(told.Count);
        item.Activate();
        EXPECT_EQ(item.TriggerString().toStdString(), told.Summary);
        QStringList lines{u"before"_s};
        item.Triggers().GetTriggerStrings(lines);
        EXPECT_EQ(lines.join(u'|').toStdString(), told.Lines);
    }
}

TEST_F(RecordedTasks, aSheetShowsThePagesThatThereAre)
{
    auto &item = activeItem();
    item.DisplayTaskPages(0, {}, u"Rien"_s);
    EXPECT_EQ(m_service->TakeCalls(), askPages);

    item.DisplayTaskPages(4711, TPageTypes(ptSettings) | ptTask, u"Export de nuit"_s);
    EXPECT_EQ(m_service->TakeCalls(),
              askPages + ", GetPage 0 persist, GetPage 2 persist, ShowSheet, GetTriggerCount");
    EXPECT_EQ(m_service->Sheet.Flags, SheetFlag::HasHelp);
    EXPECT_EQ(m_service->Sheet.Parent, 4711U);
    EXPECT_EQ(m_service->Sheet.Caption, u"Export de nuit");

    // Someone refreshes the list while the sheet is open: the item is gone.
    m_service->WhileSheetIsOpen = [this] {
        m_scheduler.Refresh();
        return 1;
    };
    item.DisplayTaskPages(0, ptTask, {});

    m_service->WhileSheetIsOpen = [] { return -1; };
    EXPECT_THROW(activeItem().DisplayTaskPages(0, ptTask, {}), EInvalidOperation);
    m_service->Fails["GetPage"] = TaskResult::NotFileBasedStorage;
    m_service->TakeCalls();
    activeItem().DisplayTaskPages(0, ptTask, {});
    EXPECT_EQ(m_service->TakeCalls(), askPages + ", GetPage 0 persist");
}

TEST_F(RecordedTasks, theDialogAsksForItsJobItsPagesAndItsFlags)
{
    const struct
    {
        const char *Caption;
        TTaskPropDlgOptions Options;
        std::uint32_t Flags;
        const char16_t *Title;
    } cases[] = {
        {"", {}, 0x101, u"Export"},
        {"Nuit", otNoApplyNow, 0x180, u"Nuit"},
        {"Nuit", TTaskPropDlgOptions(otNoContextHelp) | otDisplayIcon, 0x2000102, u"Nuit"},
    };
    m_service->Names = {u"Export.job"};
    TTaskPropertiesDialog dialog;
    dialog.setTaskScheduler(&m_scheduler);
    dialog.setTaskName(u"Export.job"_s);
    m_service->TakeCalls();
    EXPECT_TRUE(dialog.Execute());
    EXPECT_EQ(m_service->TakeCalls(),
              "Activate Export.job, Activate Export.job, GetTriggerCount, " + askPages +
                  ", GetPage 1 persist, GetPage 2 persist, ShowSheet, GetTriggerCount");
    for (const auto &shown : cases) {
        dialog.setCaption(QString::fromUtf8(shown.Caption));
        dialog.setOptions(shown.Options);
        m_service->WhileSheetIsOpen = [] { return 0; };
        EXPECT_FALSE(dialog.Execute());
        EXPECT_EQ(m_service->Sheet.Flags, shown.Flags);
        EXPECT_EQ(m_service->Sheet.Caption, shown.Title);
    }

    EXPECT_EQ(messageOf<ETaskDialogError>([&] { dialog.setPages({}); }),
              "Une page, au moins, doit être spécifiée.");
    EXPECT_EQ(dialog.Pages(), TPageTypes(ptSchedule) | ptSettings);
    dialog.setTaskName(u"Inconnue.job"_s);
    EXPECT_EQ(messageOf<ETaskDialogError>([&] { dialog.Execute(); }),
              "La tâche \"Inconnue.job ne peut pas être activée\".");
    {
        TTaskScheduler other(nullptr, m_service);
        dialog.setTaskScheduler(&other);
    }
    EXPECT_EQ(messageOf<ETaskDialogError>([&] { dialog.Execute(); }),
              "Le gestionnaire de tâches planifiées est introuvable !");
}

TEST_F(RecordedTasks, applyReadsTheTriggersAndTellsTheHost)
{
    m_service->Names = {u"Export.job"};
    TTaskPropertiesDialog dialog;
    dialog.setTaskScheduler(&m_scheduler);
    dialog.setTaskName(u"Export"_s);
    m_service->WhileSheetIsOpen = [this] {
        for (int press = 0; press < 2; ++press) {
            m_service->Triggers.emplace_back();
            m_service->Sheet.Applied();
        }
        return 1;
    };
    dialog.Execute(); // nobody listens
    QList<int> counts;
    QObject::connect(&dialog, &TTaskPropertiesDialog::OnApply,
                     [&](TTaskPropertiesDialog *sender, TTaskItem *task) {
                         EXPECT_EQ(sender, &dialog);
                         counts << task->Triggers().Count();
                     });
    dialog.Execute();
    EXPECT_EQ(counts, (QList<int>{3, 4}));

    m_service->WhileSheetIsOpen = [this] {
        m_scheduler.Clear();
        m_service->Sheet.Applied();
        return 1;
    };
    EXPECT_TRUE(dialog.Execute());
    EXPECT_EQ(counts.size(), 2);
}
