#include "JobFolderFixture.h"

#include <QBuffer>

#include <filesystem>
#include <fstream>

using namespace Zelmar01;
using namespace Qt::StringLiterals;

namespace {

QStringList listed(TTaskScheduler &scheduler)
{
    QStringList names;
    for (int i = 0; i < scheduler.Count(); ++i)
        names << scheduler.Items(i)->Name();
    return names;
}

} // namespace

TEST_F(JobFolderTest, listsTheJobsOfItsFolder)
{
    m_scheduler.Refresh();
    EXPECT_EQ(m_scheduler.Count(), 0);
    for (const auto &name : {u"b"_s, u"A"_s, u"c"_s})
        makeJob(name);
    m_scheduler.Refresh();
    EXPECT_EQ(listed(m_scheduler), (QStringList{u"A"_s, u"b"_s, u"c"_s}));
    EXPECT_EQ(m_scheduler.IndexOf(u"A.job"_s), 0);
    EXPECT_EQ(m_scheduler.IndexOf(u"a.job"_s), -1);

    QObject::connect(
        &m_scheduler, &TTaskScheduler::OnBeforeTaskAdded,
        [](TTaskScheduler *, TTaskItem *task, bool &canAdd) { canAdd = task->Name() != "b"_L1; });
    m_scheduler.Refresh();
    EXPECT_EQ(listed(m_scheduler), (QStringList{u"A"_s, u"c"_s}));
    EXPECT_TRUE(std::filesystem::exists(m_folder / "jobs/b.job"));
    EXPECT_NE(m_scheduler.ActivateTask(u"b"_s), nullptr);
    EXPECT_EQ(listed(m_scheduler), (QStringList{u"A"_s, u"b"_s, u"c"_s}));
}

TEST_F(JobFolderTest, aJobLivesFromItsSaveToItsDeletion)
{
    auto &item = *m_scheduler.CreateNewItem(u"Export"_s);
    EXPECT_EQ(item.Flags(), tfDontStartIfOnBatteries | tfKillIfGoingOnBatteries);
    EXPECT_EQ(item.Status(), tsNotScheduled);
    EXPECT_EQ(item.NextRunTime(), -693959.0);
    EXPECT_EQ(item.MostRecentRunTime(), -693959.0);
    EXPECT_FALSE(std::filesystem::exists(m_folder / "jobs/Export.job"));
    item.Save();
    EXPECT_EQ(item.Status(), tsNoValidTriggers);
    EXPECT_EQ(item.CurFile().toStdString(), (m_folder / "jobs/Export.job").string());
    EXPECT_EQ(messageOf<ETaskError>([&] { m_scheduler.CreateNewItem(u"Export"_s); }),
              "Une tâche \"Export\" existe déjà !");

    auto &trigger = item.Triggers().Add();
    trigger.SetType(ttDaily);
    trigger.setBeginDate(EncodeDate(2027, 1, 1));
    trigger.setStartTime(EncodeTime(23, 30, 0, 0));
    trigger.setDetails({.Daily = {1}});
    item.Deactivate(true);

    item.Activate();
    EXPECT_EQ(item.Status(), tsHasNotRun);
    EXPECT_DOUBLE_EQ(item.NextRunTime(), EncodeDate(2027, 2, 3) + EncodeTime(23, 30, 0, 0));
    EXPECT_EQ(item.TriggerString(), item.Triggers()[0].AsString());
    quint16 count = 3;
    TDateTimeArray times;
    item.GetRunTimes(EncodeDate(2027, 2, 3), EncodeDate(2027, 2, 5), count, times);
    EXPECT_EQ(count, 2);
    EXPECT_DOUBLE_EQ(times.last(), EncodeDate(2027, 2, 4) + EncodeTime(23, 30, 0, 0));

    item.Triggers()[0].setEnabled(true); // the flag "disabled"
    item.Triggers()[0].UpdateTrigger();
    EXPECT_EQ(item.NextRunTime(), -693959.0);
    EXPECT_EQ(item.Status(), tsNoValidTriggers);

    m_scheduler.DeleteTask(u"Export"_s);
    EXPECT_EQ(m_scheduler.Count(), 0);
    EXPECT_FALSE(std::filesystem::exists(m_folder / "jobs/Export.job"));
    try {
        m_scheduler.DeleteTask(u"Export"_s);
        ADD_FAILURE() << "deleted twice";
    } catch (const EOleSysError &error) {
        EXPECT_EQ(error.ErrorCode(), TaskResult::FileNotFound);
        EXPECT_STREQ(error.what(), "Le fichier n'existe pas.");
    }
}

TEST_F(JobFolderTest, whatIsSetIsInTheFile)
{
    auto &item = makeJob(u"Export"_s, {1, 2});
    QByteArray bytes("\0\xFF données", 11);
    QBuffer data(&bytes);
    data.open(QIODevice::ReadOnly);
    item.SetBinaryData(data);
    item.setParameters(u"--tout \"deux mots\""_s);
    item.setComment(u"Chaque nuit\nété 💍"_s);
    item.setFlags(tfHidden | tfSystemRequired);
    item.setIdleTime({15, 90});
    item.setMaxRunTime(UnlimitedRunTime);
    item.setPriority(tpHigh);
    item.Save();

    TTaskScheduler other(nullptr, m_store);
    auto &read = *other.ActivateTask(u"Export"_s);
    EXPECT_FALSE(read.Active());
    const auto file = read.GetInterface<IPersistFile>();
    EXPECT_TRUE(read.Active());
    EXPECT_EQ(file->IsDirty(), TaskResult::False);
    EXPECT_EQ(read.Parameters(), item.Parameters());
    EXPECT_EQ(read.Comment(), u"Chaque nuit\nété 💍"_s);
    EXPECT_EQ(read.Flags(), tfHidden | tfSystemRequired);
    EXPECT_EQ(read.IdleTime(), (TIdleTime{15, 90}));
    EXPECT_EQ(read.MaxRunTime(), UnlimitedRunTime);
    EXPECT_EQ(read.Priority(), tpHigh);
    EXPECT_EQ(read.Triggers().Count(), 2);
    EXPECT_EQ(read.TriggerString(), u"La tâche est planifiée plusieurs fois"_s);
    QByteArray back;
    QBuffer stream(&back);
    stream.open(QIODevice::WriteOnly);
    read.GetBinaryData(stream);
    EXPECT_EQ(back, bytes);

    read.setFlags({});
    EXPECT_EQ(read.Flags(), TTaskFlags());
    read.Triggers().Clear();
    QStringList strings;
    read.Triggers().GetTriggerStrings(strings);
    EXPECT_EQ(strings, QStringList{u"<La tâche n'a pas été planifiée>"_s});
    auto &fresh = read.Triggers().Add();
    EXPECT_THROW(fresh.UpdateTrigger(), EOleSysError) << "a record of zeros is no trigger";
}

TEST_F(JobFolderTest, aDamagedJobIsNeverOverwritten)
{
    makeJob(u"Export"_s);
    const auto file = m_folder / "jobs/Export.job";
    std::filesystem::resize_file(file, 70);
    m_scheduler.Refresh();
    auto &item = *m_scheduler.ActivateTask(u"Export"_s);
    EXPECT_THROW(item.Activate(), ESchedulerError);
    m_scheduler.Clear();
    m_scheduler.setDuplicate(tdActivateFirst);
    EXPECT_THROW(m_scheduler.CreateNewItem(u"EXPORT"_s), EOleSysError);
    EXPECT_EQ(std::filesystem::file_size(file), 70U);
}

TEST_F(JobFolderTest, aJobThatDisappearedIsSaidToBeGone)
{
    m_scheduler.setObjectName(u"Scheduler1"_s);
    auto &item = makeJob(u"Export"_s);
    std::filesystem::remove(m_folder / "jobs/Export.job");
    EXPECT_EQ(messageOf<ESchedulerError>([&] { item.Activate(); }),
              "La tâche \"Scheduler1 ne peut pas être activée\" !");
    m_scheduler.Refresh();
    EXPECT_EQ(m_scheduler.Count(), 0);
}
