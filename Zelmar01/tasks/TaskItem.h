#pragma once

#include <Zelmar01/core/DateTime.h>
#include <Zelmar01/tasks/TaskTriggers.h>
#include <Zelmar01/tasks/service/TaskService.h>

#include <QFlags>
#include <QList>
#include <QObject>
#include <QString>

#include <cstdint>
#include <memory>

class QIODevice;

namespace Zelmar01 {

class TTaskScheduler;

/// How long a computer must be idle before a job starts, and how long the job waits for that, in minutes.
struct TIdleTime
{
    std::uint16_t IdleMinutes = 0;
    std::uint16_t DeadlineMinutes = 0;

    bool operator==(const TIdleTime &) const = default;
};

using TDateTimeArray = QList<TDateTime>;

/// One job of the task service. A TTaskScheduler makes and owns it; it is gone with the next Refresh().
///
/// An item is inactive until Activate() opens the job, unless it comes out of CreateNewItem(). Its properties
/// are calls on the open job, nothing is kept here: writers change the job in memory, Save() or
/// Deactivate(true) writes its file.
///
/// All but Name, Activate and GetInterface raise ETaskError when the item is inactive, and EOleSysError when
/// the service refuses.
class TTaskItem : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString Name READ Name)
    Q_PROPERTY(QString AccountName READ AccountName)
    Q_PROPERTY(QString ApplicationName READ ApplicationName WRITE setApplicationName)
    Q_PROPERTY(QString Parameters READ Parameters WRITE setParameters)
    Q_PROPERTY(QString WorkingDirectory READ WorkingDirectory WRITE setWorkingDirectory)
    Q_PROPERTY(QString Comment READ Comment WRITE setComment)
    Q_PROPERTY(QString Creator READ Creator WRITE setCreator)
    Q_PROPERTY(TTaskFlags Flags READ Flags WRITE setFlags)
    Q_PROPERTY(quint32 MaxRunTime READ MaxRunTime WRITE setMaxRunTime)
    Q_PROPERTY(TTaskPriority Priority READ Priority WRITE setPriority)
    Q_PROPERTY(TTaskStatus Status READ Status)
    Q_PROPERTY(quint32 ExitCode READ ExitCode)
    Q_PROPERTY(TDateTime MostRecentRunTime READ MostRecentRunTime)
    Q_PROPERTY(TDateTime NextRunTime READ NextRunTime)
    Q_PROPERTY(bool IsDirty READ IsDirty)
    Q_PROPERTY(QString CurFile READ CurFile)
    Q_PROPERTY(QString TriggerString READ TriggerString)
public:
    /// The values are the service's bits.
    enum TTaskFlag : quint32 {
        tfInteractive = TaskFlag::Interactive,
        tfDeleteWhenDone = TaskFlag::DeleteWhenDone,
        tfDisabled = TaskFlag::Disabled,
        tfHidden = TaskFlag::Hidden,
        tfRunOnlyIfLoggedOn = TaskFlag::RunOnlyIfLoggedOn,
        tfStartOnlyIfIdle = TaskFlag::StartOnlyIfIdle,
        tfSystemRequired = TaskFlag::SystemRequired,
        tfKillOnIdleEnd = TaskFlag::KillOnIdleEnd,
        tfRestartOnIdleResume = TaskFlag::RestartOnIdleResume,
        tfDontStartIfOnBatteries = TaskFlag::DontStartIfOnBatteries,
        tfKillIfGoingOnBatteries = TaskFlag::KillIfGoingOnBatteries,
        tfRunIfConnectedToInternet = TaskFlag::RunIfConnectedToInternet,
    };
    Q_DECLARE_FLAGS(TTaskFlags, TTaskFlag)
    Q_FLAG(TTaskFlags)

    enum TTaskPriority { tpIdle, tpNormal, tpHigh, tpRealTime };
    Q_ENUM(TTaskPriority)

    /// The numbers are the low bytes of the service's status codes; there may be others.
    enum TTaskStatus : quint8 {
        tsReady,
        tsRunning,
        tsDisabled,
        tsHasNotRun,
        tsNoMoreRuns,
        tsNotScheduled,
        tsTerminated,
        tsNoValidTriggers
    };
    Q_ENUM(TTaskStatus)

    /// The pages of a job's property sheet, in the order in which they are shown.
    enum TPageType { ptTask = 1, ptSchedule = 2, ptSettings = 4 };
    Q_DECLARE_FLAGS(TPageTypes, TPageType)
    Q_FLAG(TPageTypes)

    /// An inactive item without a name, of a scheduler that must live longer. Use
    /// TTaskScheduler::CreateNewItem() and ActivateTask().
    explicit TTaskItem(TTaskScheduler &scheduler);
    ~TTaskItem() override;

    /// The job's name without ".job".
    QString Name() const;
    /// The account under which the job runs.
    QString AccountName() const;
    /// The program, its parameters and the directory it starts in.
    QString ApplicationName() const;
    void setApplicationName(const QString &name);
    QString Parameters() const;
    void setParameters(const QString &parameters);
    QString WorkingDirectory() const;
    void setWorkingDirectory(const QString &directory);
    QString Comment() const;
    void setComment(const QString &comment);
    QString Creator() const;
    void setCreator(const QString &creator);
    /// Reading leaves out what has no name here; writing clears it.
    TTaskFlags Flags() const;
    void setFlags(TTaskFlags flags);
    TIdleTime IdleTime() const;
    void setIdleTime(TIdleTime time);
    /// Milliseconds after which a run is ended; UnlimitedRunTime for never.
    quint32 MaxRunTime() const;
    void setMaxRunTime(quint32 milliseconds);
    /// tpNormal for whatever is not one of the other three.
    TTaskPriority Priority() const;
    void setPriority(TTaskPriority priority);
    TTaskStatus Status() const;
    /// The exit code of the last run.
    quint32 ExitCode() const;
    /// -693959 for a job that never ran, or that has no next run.
    TDateTime MostRecentRunTime() const;
    TDateTime NextRunTime() const;
    /// Always true: the service's two answers, changed and not changed, are both a success.
    bool IsDirty() const;
    /// The full path of the job's file.
    QString CurFile() const;
    TTriggers &Triggers();
    /// When the job starts, in words: its one trigger's text, or that there is none or are several.
    QString TriggerString();

    /// Opens the job and reads its triggers; what was changed and not saved is lost. Raises ESchedulerError:
    /// the scheduler is not active, or the job cannot be opened (with the name of the scheduler component in
    /// the message). Raises EOleSysError when the triggers cannot be read; the item is active then.
    void Activate();
    /// Closes the job. With `save`, a job that was changed gets its triggers' records and is written first. A
    /// change of the records alone is no change of the job. Triggers stay as they are until the next
    /// Activate().
    void Deactivate(bool save);

    /// Asks for a start now; Activate() again to see its status.
    void Run();
    void Terminate();
    /// Writes the job to its own file, or to another one, which is its own from then on.
    void Save();
    void Save(const QString &fileName);
    /// The account under which the job runs. A null `password` is none, which is not the same as an empty
    /// one; with an empty name it stands for the system's own account.
    void SetAccountInformation(const QString &accountName, const QString &password);
    /// The service's own modal editor.
    void EditWorkItem();

    /// Shows those of `pages` that the service has for this job in a modal sheet, and reads the triggers
    /// anew. `handle` is the parent window (a WId), 0 for the active one. Nothing happens when there is no
    /// page, as for a job that was never saved. Raises EInvalidOperation when nothing can show the sheet (see
    /// TaskSheets.h).
    void DisplayTaskPages(quintptr handle, TPageTypes pages, const QString &title);

    /// The planned starts from `begin` on, before `end` when that is 1 or more. `count` is how many are
    /// wanted, at most TaskMaxRunTimes, and then how many there are. Raises EConvertError for a bound outside
    /// the calendar.
    void GetRunTimes(TDateTime begin, TDateTime end, quint16 &count, TDateTimeArray &times) const;

    /// Writes the host's own data of the job to `stream`, where it stands, without any header. Raises
    /// EInOutError when the stream does not take them.
    void GetBinaryData(QIODevice &stream) const;
    /// Makes what is left in `stream` the host's own data of the job; nothing left changes nothing. The
    /// number of bytes is taken modulo 65536. Raises EInOutError when the stream gives less than it says it
    /// has.
    void SetBinaryData(QIODevice &stream);

    /// The open job under another interface; an inactive item is activated first. Raises EOleSysError.
    void GetInterface(const TGuid &iid, std::shared_ptr<ITaskObject> &obj);
    template<class Interface>
    std::shared_ptr<Interface> GetInterface();

    [[noreturn]] void Error(const QString &msg) const;
    [[noreturn]] void Error(const QString &fmt, const QVariantList &args) const;

    bool Active() const { return m_task != nullptr; }
    /// The open job. Raises ETaskError for an inactive item.
    ITask &RequireTask() const;
    ITaskService &Service() const;

private:
    friend class TTaskScheduler;

    void check(TTaskResult result) const;
    QString read(TTaskResult (ITask::*get)(char16_t *&)) const;
    void write(TTaskResult (ITask::*set)(const char16_t *), const QString &text);
    std::shared_ptr<IPersistFile> file() const;

    std::shared_ptr<ITask> m_task;
    TTaskScheduler &m_scheduler;
    QString m_jobName;
    TTriggers m_triggers;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(TTaskItem::TTaskFlags)
Q_DECLARE_OPERATORS_FOR_FLAGS(TTaskItem::TPageTypes)

using TTaskFlag = TTaskItem::TTaskFlag;
using TTaskFlags = TTaskItem::TTaskFlags;
using TTaskPriority = TTaskItem::TTaskPriority;
using TTaskStatus = TTaskItem::TTaskStatus;
using TPageType = TTaskItem::TPageType;
using TPageTypes = TTaskItem::TPageTypes;
using enum TTaskItem::TTaskFlag;
using enum TTaskItem::TTaskPriority;
using enum TTaskItem::TTaskStatus;
using enum TTaskItem::TPageType;

template<class Interface>
std::shared_ptr<Interface> TTaskItem::GetInterface()
{
    std::shared_ptr<ITaskObject> object;
    GetInterface(Interface::Iid, object);
    auto typed = std::dynamic_pointer_cast<Interface>(object);
    if (!typed)
        check(TaskResult::NoInterface);
    return typed;
}

} // namespace Zelmar01
