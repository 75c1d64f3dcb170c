#include <Zelmar01/package/TaskPropertiesDialogHolder.h>

#include <Zelmar01/package/FindOnForm.h>
#include <Zelmar01/package/TaskSchedulerHolder.h>
#include <Zelmar01/tasks/UseTaskSheets.h>

namespace Zelmar01 {

TTaskPropertiesDialogHolder::TTaskPropertiesDialogHolder(QWidget *parent)
    : TComponentHolder(parent), m_dialog(new TTaskPropertiesDialog(this))
{
    UseTaskSheets();
    hold(m_dialog);
}

TTaskPropertiesDialog *TTaskPropertiesDialogHolder::Component() const
{
    if (!m_dialog->TaskScheduler()) {
        if (const auto *const holder = FindOnForm<TTaskSchedulerHolder>(this, m_schedulerName))
            m_dialog->setTaskScheduler(holder->Component());
    }
    return m_dialog;
}

void TTaskPropertiesDialogHolder::setTaskScheduler(const QString &name)
{
    if (name == m_schedulerName)
        return;
    m_schedulerName = name;
    m_dialog->setTaskScheduler(nullptr);
}

void TTaskPropertiesDialogHolder::setPages(TPageTypes pages)
{
    doing([&] { m_dialog->setPages(pages); });
}

void TTaskPropertiesDialogHolder::Execute()
{
    ShowingExceptions([&] { Component()->Execute(); });
}

} // namespace Zelmar01
