#pragma once

#include <Zelmar01/core/Component.h>
#include <Zelmar01/tasks/TaskItem.h>
#include <Zelmar01/tasks/TaskScheduler.h>

#include <QPointer>
#include <QString>

namespace Zelmar01 {

/// What dialogs about a job have in common: the scheduler whose job it is.
class TTaskCommonDialog : public TComponent
{
    Q_OBJECT
public:
    using TComponent::TComponent;

    /// Null when none is set, or when it was destroyed. The host owns it.
    TTaskScheduler *TaskScheduler() const { return m_taskScheduler; }
    void setTaskScheduler(TTaskScheduler *scheduler) { m_taskScheduler = scheduler; }

private:
    QPointer<TTaskScheduler> m_taskScheduler;
};

/// The property sheet of a job: the system's own on Windows, elsewhere three pages of this library. Pages
/// save the job when they are applied, with what the host had changed in it before.
///
/// A host with windows calls UseTaskSheets() (UseTaskSheets.h) once at its start.
class TTaskPropertiesDialog : public TTaskCommonDialog
{
    Q_OBJECT
    Q_PROPERTY(QString Caption READ Caption WRITE setCaption)
    Q_PROPERTY(TTaskPropDlgOptions Options READ Options WRITE setOptions)
    Q_PROPERTY(Zelmar01::TTaskItem::TPageTypes Pages READ Pages WRITE setPages)
    Q_PROPERTY(QString TaskName READ TaskName WRITE setTaskName)
public:
    /// No Apply button, no help button in the title bar, the application's icon in the title bar. The values
    /// are the sheet's flags.
    enum TTaskPropDlgOption : quint32 {
        otNoApplyNow = SheetFlag::NoApplyNow,
        otNoContextHelp = SheetFlag::NoContextHelp,
        otDisplayIcon = SheetFlag::UseIcon,
    };
    Q_DECLARE_FLAGS(TTaskPropDlgOptions, TTaskPropDlgOption)
    Q_FLAG(TTaskPropDlgOptions)

    /// `owner` frees the component.
    explicit TTaskPropertiesDialog(QObject *owner = nullptr);

    /// The title; when it is empty the sheet is titled as the properties of the job.
    QString Caption() const { return m_caption; }
    void setCaption(const QString &caption) { m_caption = caption; }

    TTaskPropDlgOptions Options() const { return m_options; }
    void setOptions(TTaskPropDlgOptions options) { m_options = options; }

    /// ptSchedule and ptSettings at first. Raises ETaskDialogError for an empty set, which changes nothing;
    /// while a form is being built the error goes to the exception display.
    TPageTypes Pages() const { return m_pages; }
    void setPages(TPageTypes pages);
    /// The writer of Pages at run time; ends loading.
    void SetPages(TPageTypes pages);

    /// The job to show, with or without ".job".
    QString TaskName() const { return m_taskName; }
    void setTaskName(const QString &name) { m_taskName = name; }
    void SetTaskName(const QString &name) { setTaskName(name); }

    /// Shows the sheet until it is closed; true when that was with OK. A job that was never saved has no
    /// pages, and the answer is false.
    ///
    /// Raises ETaskDialogError without a scheduler and for a job that it does not know, what
    /// TTaskItem::GetInterface raises, and EInvalidOperation when nothing can show the sheet.
    bool Execute();

signals:
    /// The Apply button was pressed and the job is saved; its triggers have been read anew.
    void OnApply(Zelmar01::TTaskPropertiesDialog *sender, Zelmar01::TTaskItem *task);

protected:
    /// Finds the job of TaskName.
    void InitializeTask();
    /// Raises OnApply.
    void DoApply();

private:
    QString m_caption, m_taskName;
    TTaskPropDlgOptions m_options;
    TPageTypes m_pages = TPageTypes(ptSchedule) | ptSettings;
    QPointer<TTaskItem> m_task; // owned by the scheduler
};

Q_DECLARE_OPERATORS_FOR_FLAGS(TTaskPropertiesDialog::TTaskPropDlgOptions)

using TTaskPropDlgOption = TTaskPropertiesDialog::TTaskPropDlgOption;
using TTaskPropDlgOptions = TTaskPropertiesDialog::TTaskPropDlgOptions;
using enum TTaskPropertiesDialog::TTaskPropDlgOption;

} // namespace Zelmar01
