#pragma once

#include "Tasks.h"

#include <Zelmar01/tasks/service/store/JobStore.h>

#include <support/TempFolder.h>

/// A scheduler over a job store in a folder of its own, on 3 February 2027 at 10:00 in UTC.
class JobFolderTest : public testing::Test
{
protected:
    void TearDown() override
    {
        Zelmar01::SetMessageBox({});
        Zelmar01::SetExceptionDisplay({});
    }

    /// A saved job with triggers on these hours of every day from 1 January 2027 on.
    Zelmar01::TTaskItem &makeJob(const QString &name, const QList<int> &hours = {23})
    {
        auto &item = *m_scheduler.CreateNewItem(name);
        item.setApplicationName(QStringLiteral("/bin/true"));
        for (const int hour : hours) {
            auto &trigger = item.Triggers().Add();
            trigger.SetType(Zelmar01::ttDaily);
            trigger.setBeginDate(Zelmar01::EncodeDate(2027, 1, 1));
            trigger.setStartTime(Zelmar01::EncodeTime(hour, 0, 0, 0));
            trigger.setDetails({.Daily = {1}});
            trigger.UpdateTrigger();
        }
        item.Save();
        return item;
    }

    static constexpr Zelmar01::TSeconds now = 1801648800;

    TempFolder m_folder;
    std::shared_ptr<Zelmar01::TJobStore> m_store =
        std::make_shared<Zelmar01::TJobStore>(Zelmar01::TJobStoreOptions{
            m_folder / "jobs", {}, [] { return now; }, [] { return Zelmar01::TTimeZone(); }});
    Zelmar01::TTaskScheduler m_scheduler{nullptr, m_store};
};
