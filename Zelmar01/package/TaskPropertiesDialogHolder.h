#pragma once

#include <Zelmar01/package/ComponentHolder.h>
#include <Zelmar01/tasks/saDialogs.h>

namespace Zelmar01 {

/// The property sheet of a job on a form.
class TTaskPropertiesDialogHolder : public TComponentHolder
{
    Q_OBJECT
    Q_PROPERTY(QString Caption READ Caption WRITE setCaption)
    Q_PROPERTY(Zelmar01::TTaskPropertiesDialog::TTaskPropDlgOptions Options READ Options WRITE setOptions)
    Q_PROPERTY(Zelmar01::TTaskItem::TPageTypes Pages READ Pages WRITE setPages)
    Q_PROPERTY(QString TaskName READ TaskName WRITE setTaskName)
    Q_PROPERTY(QString TaskScheduler READ TaskScheduler WRITE setTaskScheduler)
public:
    explicit TTaskPropertiesDialogHolder(QWidget *parent = nullptr);

    /// The dialog. While it has no scheduler, it is given the one that TaskScheduler names, if the form has
    /// it by now.
    TTaskPropertiesDialog *Component() const;

    /// The object name of the scheduler on the form. Another name takes the scheduler away that there was.
    QString TaskScheduler() const { return m_schedulerName; }
    void setTaskScheduler(const QString &name);

    // The properties of the component.
    QString Caption() const { return m_dialog->Caption(); }
    void setCaption(const QString &caption) { m_dialog->setCaption(caption); }
    TTaskPropDlgOptions Options() const { return m_dialog->Options(); }
    void setOptions(TTaskPropDlgOptions options) { m_dialog->setOptions(options); }
    TPageTypes Pages() const { return m_dialog->Pages(); }
    void setPages(TPageTypes pages);
    QString TaskName() const { return m_dialog->TaskName(); }
    void setTaskName(const QString &name) { m_dialog->setTaskName(name); }

public slots:
    // For connections of a form. What it raises goes to the exception display.
    void Execute();

signals:
    void OnApply(Zelmar01::TTaskPropertiesDialog *sender, Zelmar01::TTaskItem *task);

private:
    TTaskPropertiesDialog *m_dialog;
    QString m_schedulerName;
};

} // namespace Zelmar01
