#pragma once

#include <Zelmar01/package/ComponentHolder.h>
#include <Zelmar01/tasks/TaskScheduler.h>

namespace Zelmar01 {

/// A task scheduler on a form.
///
///     ui.scheduler->Component()->Refresh();
class TTaskSchedulerHolder : public TComponentHolder
{
    Q_OBJECT
    Q_PROPERTY(bool Active READ Active WRITE setActive)
    Q_PROPERTY(bool AutoRefresh READ AutoRefresh WRITE setAutoRefresh)
    Q_PROPERTY(Zelmar01::TTaskScheduler::TTaskDuplicate Duplicate READ Duplicate WRITE setDuplicate)
public:
    explicit TTaskSchedulerHolder(QWidget *parent = nullptr);

    TTaskScheduler *Component() const { return m_scheduler; }

    // The properties of the component.
    bool Active() const { return m_scheduler->Active(); }
    void setActive(bool active);
    bool AutoRefresh() const { return m_scheduler->AutoRefresh(); }
    void setAutoRefresh(bool refresh) { m_scheduler->setAutoRefresh(refresh); }
    TTaskDuplicate Duplicate() const { return m_scheduler->Duplicate(); }
    void setDuplicate(TTaskDuplicate duplicate) { m_scheduler->setDuplicate(duplicate); }

public slots:
    // For connections of a form. What it raises goes to the exception display.
    void Refresh();

signals:
    void OnBeforeTaskAdded(Zelmar01::TTaskScheduler *sender, Zelmar01::TTaskItem *task, bool &canAdd);

private:
    TTaskScheduler *m_scheduler;
};

} // namespace Zelmar01
