#include <Zelmar01/tasks/saDialogs.h>

#include <Zelmar01/core/ExceptionDisplay.h>
#include <Zelmar01/tasks/TaskSheets.h>

#include <QMetaMethod>

namespace Zelmar01 {

TTaskPropertiesDialog::TTaskPropertiesDialog(QObject *owner) : TTaskCommonDialog(owner) {}

void TTaskPropertiesDialog::setPages(TPageTypes pages)
{
    const auto set = [&] {
        if (!pages)
            throw ETaskDialogError(MessageText(TMessage::NoPage));
        m_pages = pages;
    };
    if (IsLoading())
        ShowingExceptions(set);
    else
        set();
}

void TTaskPropertiesDialog::SetPages(TPageTypes pages)
{
    Loaded();
    setPages(pages);
}

void TTaskPropertiesDialog::InitializeTask()
{
    if (!TaskScheduler())
        throw ETaskDialogError(MessageText(TMessage::NoTaskScheduler));
    m_task = TaskScheduler()->ActivateTask(m_taskName);
    if (!m_task)
        throw ETaskDialogError(Format(TMessage::DialogTaskNotActivated, {m_taskName}).toStdString());
}

bool TTaskPropertiesDialog::Execute()
{
    InitializeTask();
    const auto provider = m_task->GetInterface<IProvideTaskPage>();
    // While the sheet is open a timer of the host may free the dialog or the item.
    const QPointer<TTaskPropertiesDialog> stillThere(this);
    const QPointer<TTaskItem> task(m_task);

    TPropertySheet sheet;
    sheet.Flags = SheetFlag::UseCallback | m_options.toInt();
    if (m_caption.isEmpty())
        sheet.Flags |= SheetFlag::PropTitle;
    sheet.Caption = (m_caption.isEmpty() ? task->Name() : m_caption).toStdU16String();
    sheet.Pages = TaskPages(*provider, m_pages);
    sheet.Applied = [stillThere] {
        if (stillThere)
            stillThere->DoApply();
    };
    const bool confirmed = ShowTaskSheet(TaskScheduler()->Service(), sheet) > 0;
    if (task && task->Active())
        task->Triggers().InitTriggers();
    return confirmed;
}

void TTaskPropertiesDialog::DoApply()
{
    if (!m_task || !isSignalConnected(QMetaMethod::fromSignal(&TTaskPropertiesDialog::OnApply)))
        return;
    m_task->Triggers().InitTriggers();
    emit OnApply(this, m_task);
}

} // namespace Zelmar01
