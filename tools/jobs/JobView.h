#pragma once

#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/tasks/service/TaskService.h>

#include <QJsonObject>
#include <QString>
#include <QTextStream>

#include <memory>
#include <vector>

namespace Zelmar01 {

/// A result that the tool cannot go on with. what() names the job and the reason, the cause what the service
/// knows beyond that.
class EJob : public Exception
{
public:
    using Exception::Exception;
};

/// Raises EJob for a failure.
void Require(ITaskService &service, TTaskResult result, const QString &subject);

/// Writes a cause and its remedy below the line of a failure; of an empty one nothing.
void WriteCause(QTextStream &err, const TSystemCause &cause);

/// A job's name without its ".job".
QString TitleOf(std::u16string_view file);

/// A local time as "2027-01-31T04:30:00"; empty for never.
QString IsoTime(const SYSTEMTIME &time);

/// An instant in local time with its distance from UTC, "2027-01-31T04:30:00+01:00".
QString IsoInstant(std::int64_t seconds);

/// What there is to say of one job, read through the interfaces of the service. A job that cannot be opened
/// has a name and a reason alone.
class TJobView
{
public:
    TJobView(ITaskService &service, ITaskScheduler &scheduler, const QString &name);

    TTaskResult Problem = TaskResult::Ok; ///< why the job could not be opened
    QString Name;                         ///< without ".job"
    QString File, Program, Parameters, Directory, Comment, Creator, Account;
    struct TTriggerView
    {
        QString Text;     ///< in words
        QString Notation; ///< see NotationOf()
    };
    std::vector<TTriggerView> Triggers;
    std::uint32_t Flags = 0, Priority = 0, MaxRunTime = 0, ExitCode = 0;
    TTaskResult Status = TaskResult::Ok, NextResult = TaskResult::Ok, ExitResult = TaskResult::Ok;
    SYSTEMTIME NextRun, LastRun;

    bool IsLimited() const { return MaxRunTime != 0 && MaxRunTime != UnlimitedRunTime; }
    /// The status in words.
    QString StatusText() const;
    /// How the last run went, in words; empty when there was none.
    QString LastResultText() const;

    QJsonObject Summary() const;
    QJsonObject Everything() const;

private:
    void read(ITaskService &service, ITask &task);

    ITaskService &m_service;
};

/// The names of all jobs, without ".job", sorted.
QStringList JobNames(ITaskService &service, ITaskScheduler &scheduler);

} // namespace Zelmar01
