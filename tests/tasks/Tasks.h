#pragma once

#include "RecordingTaskService.h"

#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/core/MessageBoxes.h>
#include <Zelmar01/tasks/saDialogs.h>
#include <Zelmar01/tasks/saTask.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

/// The message of the error of this class that `work` raises; what was raised instead, or "nothing".
template<class Error, class Work>
std::string messageOf(Work &&work)
{
    try {
        work();
    } catch (const Error &error) {
        return error.what();
    } catch (const std::exception &other) {
        return std::string("another error: ") + other.what();
    }
    return "nothing";
}

/// A scheduler over the recording service.
class RecordedTasks : public testing::Test
{
protected:
    void TearDown() override
    {
        Zelmar01::SetMessageBox({});
        Zelmar01::SetExceptionDisplay({});
    }

    /// The item of a job that the service knows, active, without a trace of how it came here.
    Zelmar01::TTaskItem &activeItem()
    {
        m_service->Names = {u"Export.job"};
        auto *const item = m_scheduler.ActivateTask(QStringLiteral("Export"));
        item->Activate();
        m_service->TakeCalls();
        return *item;
    }

    std::shared_ptr<RecordingTaskService> m_service = std::make_shared<RecordingTaskService>();
    Zelmar01::TTaskScheduler m_scheduler{nullptr, m_service};
};
