#pragma once

#include <Zelmar01/core/Component.h>
#include <Zelmar01/tasks/TaskErrors.h>
#include <Zelmar01/tasks/TaskItem.h>
#include <Zelmar01/tasks/service/TaskService.h>

#include <QString>

#include <memory>
#include <vector>

namespace Zelmar01 {

/// The jobs of the task service: the system's own on Windows, elsewhere those of a folder of job files.
///
///     TTaskScheduler scheduler;
///     auto *job = scheduler.CreateNewItem(u"Export de nuit"_s);
///     job->setApplicationName(u"/usr/bin/boutique-export"_s);
///     auto &trigger = job->Triggers().Add();
///     trigger.SetType(ttDaily);
///     trigger.setBeginDate(EncodeDate(2027, 1, 4));
///     trigger.setStartTime(EncodeTime(23, 30, 0, 0));
///     trigger.setDetails({.Daily = {1}});
///     trigger.UpdateTrigger();
///     job->Save();
///
/// The list of items is filled by Refresh() and grows by what the host creates and activates. A name may be
/// given with or without ".job". All operations that need the service raise ESchedulerError ("Le gestionnaire
/// de tâches planifiées est arrêté !") when the component is not active, and EOleSysError when the service
/// refuses.
class TTaskScheduler : public TComponent
{
    Q_OBJECT
    Q_PROPERTY(bool Active READ Active WRITE setActive)
    Q_PROPERTY(bool AutoRefresh READ AutoRefresh WRITE setAutoRefresh)
    Q_PROPERTY(TTaskDuplicate Duplicate READ Duplicate WRITE setDuplicate)
    Q_PROPERTY(
        QString TargetComputer READ GetTargetComputer WRITE SetTargetComputer DESIGNABLE false STORED false)
    Q_PROPERTY(int Count READ Count DESIGNABLE false STORED false)
public:
    /// What CreateNewItem does about a job that there is already.
    enum TTaskDuplicate { tdError, tdActivateFirst };
    Q_ENUM(TTaskDuplicate)

    /// Connects to the service; `owner` frees the component. `service` offers the task service; without one
    /// the platform's own does (see DefaultTaskService()).
    ///
    /// Raises like Open(), but while a form is being built an error goes to the exception display, and the
    /// component is inactive.
    explicit TTaskScheduler(QObject *owner = nullptr, std::shared_ptr<ITaskService> service = {});
    ~TTaskScheduler() override;

    /// Whether there is a connection to the service. Setting it calls Open() or Close().
    bool Active() const { return m_scheduler != nullptr; }
    void setActive(bool active);

    /// Whether CreateNewItem and ActivateTask call Refresh() first.
    bool AutoRefresh() const { return m_autoRefresh; }
    void setAutoRefresh(bool refresh) { m_autoRefresh = refresh; }

    TTaskDuplicate Duplicate() const { return m_duplicate; }
    void setDuplicate(TTaskDuplicate duplicate) { m_duplicate = duplicate; }

    /// Starts the service if need be and connects anew; a connection that there was is dropped first. A start
    /// that fails is shown in a message box and raises ESchedulerError when the system does not say why; when
    /// it does, connecting is tried all the same.
    void Open();
    /// Drops the connection. The items stay.
    void Close();

    /// Reads the names of all jobs anew. All items that there were are gone.
    void Refresh();
    /// Empties the list. The jobs stay.
    void Clear();

    /// The place of a job in the list, or where it belongs. `s` is a file name, with ".job" and in its exact
    /// spelling: the list is sorted whatever the letter case is, but is not searched so.
    bool Find(const QString &s, int &index) const;
    /// -1 when the list has no such file name.
    int IndexOf(const QString &s) const;

    /// A new job, which is in no file before its Save(). Its flags are tfDontStartIfOnBatteries and
    /// tfKillIfGoingOnBatteries. When there is such a job already, listed or not, Duplicate decides:
    /// ETaskError is raised, or its item returned, active when the list did not have it (its triggers are not
    /// read then).
    TTaskItem *CreateNewItem(const QString &taskName);
    /// The item of a job, as it is; a job that the list does not have is looked for and listed, inactive.
    /// Null when there is no such job.
    TTaskItem *ActivateTask(const QString &taskName);
    /// Deletes a job and its item.
    void DeleteTask(const QString &taskName);

    int Count() const { return static_cast<int>(m_items.size()); }
    /// Raises ESchedulerError for an index out of range.
    TTaskItem *GetItem(int index);
    TTaskItem *Items(int index) { return GetItem(index); }

    /// The computer whose jobs these are, with two backslashes before its name. Empty while not active.
    QString GetTargetComputer() const;
    /// An empty name is this computer. The list stays as it is until Refresh().
    void SetTargetComputer(const QString &value);

    /// Makes sure that the service runs. False, after a message box, when that failed without a word of the
    /// system; a failure with a text counts as a start, for the connection will tell.
    bool StartScheduler();

    [[noreturn]] void Error(const QString &msg) const;
    [[noreturn]] void Error(const QString &fmt, const QVariantList &args) const;

    const std::shared_ptr<ITaskService> &Service() const { return m_service; }

signals:
    /// A job is about to be listed by Refresh(). A receiver that clears `canAdd` keeps it out of the list.
    void OnBeforeTaskAdded(Zelmar01::TTaskScheduler *sender, Zelmar01::TTaskItem *task, bool &canAdd);

private:
    friend class TTaskItem;

    ITaskScheduler &requireScheduler() const;
    // Null when the service cannot open it.
    std::shared_ptr<ITask> openTask(const QString &fileName) const;
    std::unique_ptr<TTaskItem> makeItem(const QString &fileName);
    void addItem(const QString &fileName);
    TTaskItem *insertItem(int index, const QString &fileName);
    void sortItems();
    [[noreturn]] void failDuplicate(const QString &taskName) const;

    std::shared_ptr<ITaskService> m_service;
    std::shared_ptr<ITaskScheduler> m_scheduler;
    // A job of the list; its item is made when somebody asks for it.
    struct TEntry
    {
        QString FileName;
        std::unique_ptr<TTaskItem> Item;
    };
    std::vector<TEntry> m_items;
    bool m_autoRefresh = false;
    TTaskDuplicate m_duplicate = tdError;
};

using TTaskDuplicate = TTaskScheduler::TTaskDuplicate;
using enum TTaskScheduler::TTaskDuplicate;

} // namespace Zelmar01
