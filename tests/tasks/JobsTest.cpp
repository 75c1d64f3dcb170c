#include "JobFolderFixture.h"

#include <support/Environment.h>

#include <filesystem>

using namespace Zelmar01;
using namespace Qt::StringLiterals;

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
    item.setComment(u"Chaque nuit\nété 💍"_s);
    item.setFlags(tfHidden | tfSystemRequired);
    item.setIdleTime({15, 90});
    item.setPriority(tpHigh);
    item.Deactivate(true);

    EXPECT_EQ(item.GetInterface<IPersistFile>()->IsDirty(), TaskResult::False) << "opened anew";
    EXPECT_EQ(item.Comment(), u"Chaque nuit\nété 💍"_s);
    EXPECT_EQ(item.Flags(), tfHidden | tfSystemRequired);
    EXPECT_EQ(item.IdleTime(), (TIdleTime{15, 90}));
    EXPECT_EQ(item.Priority(), tpHigh);
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

    auto &fresh = item.Triggers().Add();
    EXPECT_THROW(fresh.UpdateTrigger(), EOleSysError) << "a record of zeros is no trigger";

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

TEST_F(JobFolderTest, aMissingRunnerIsNamedWithTheWayOut)
{
    const struct
    {
        const char *Option, *Variable, *Text, *Remedy; // parts of the cause
    } cases[] = {
        {"", "/none/runner", "/none/runner", "ZELMAR01_JOB_RUNNER"},
        {"/none/own", "/none/runner", "/none/own", "zelmar01-job-runner"},
        {"", "", "zelmar01-job-runner", "ZELMAR01_JOB_RUNNER"},
    };
    makeJob(u"Export"_s);
    const EnvironmentSetting path("PATH", "/none");
    for (const auto &row : cases) {
        const EnvironmentSetting variable("ZELMAR01_JOB_RUNNER", row.Variable);
        TTaskScheduler scheduler(
            nullptr, std::make_shared<TJobStore>(TJobStoreOptions{m_store->Folder(), row.Option, {}, {}}));
        auto &item = *scheduler.ActivateTask(u"Export"_s);
        item.Activate();
        try {
            item.Run();
            ADD_FAILURE() << "run by nobody";
        } catch (const EOleSysError &error) {
            EXPECT_EQ(error.ErrorCode(), TaskResult::ServiceNotInstalled);
            EXPECT_NE(error.Cause().Text.find(row.Text), std::string::npos) << error.Cause().Text;
            EXPECT_NE(error.Cause().Remedy.find(row.Remedy), std::string::npos) << error.Cause().Remedy;
        }
    }
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
