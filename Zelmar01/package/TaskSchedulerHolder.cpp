#include <Zelmar01/package/TaskSchedulerHolder.h>

namespace Zelmar01 {

TTaskSchedulerHolder::TTaskSchedulerHolder(QWidget *parent)
    : TComponentHolder(parent), m_scheduler(new TTaskScheduler(this))
{
    hold(m_scheduler);
}

void TTaskSchedulerHolder::setActive(bool active)
{
    doing([&] { m_scheduler->setActive(active); });
}

void TTaskSchedulerHolder::Refresh()
{
    ShowingExceptions([&] { m_scheduler->Refresh(); });
}

} // namespace Zelmar01
