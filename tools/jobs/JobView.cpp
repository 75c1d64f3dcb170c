#include "JobView.h"

#include "Options.h"
#include "TriggerNotation.h"

#include <Zelmar01/tasks/service/TaskAllocator.h>
#include <Zelmar01/tasks/service/store/JobFolder.h>

#include <QDateTime>
#include <QJsonArray>

using namespace Qt::StringLiterals;

namespace Zelmar01 {

namespace {

template<class TOwner>
QString textOf(ITaskService &service, TOwner &object, TTaskResult (TOwner::*get)(char16_t *&))
{
    char16_t *text = nullptr;
    return Succeeded((object.*get)(text)) ? QString::fromStdU16String(TakeText(service.Allocator(), text))
                                          : QString();
}

QJsonValue orNull(const QString &text)
{
    return text.isEmpty() ? QJsonValue() : QJsonValue(text);
}

} // namespace

void Require(ITaskService &service, TTaskResult result, const QString &subject)
{
    if (Failed(result))
        throw EJob(u"« %1 » : %2 (%3)"_s
                       .arg(subject, QString::fromStdString(service.DescribeResult(result)),
                            QString::fromStdString(ResultName(result)))
                       .toStdString(),
                   service.ExplainResult(result));
}

void WriteCause(QTextStream &err, const TSystemCause &cause)
{
    if (!cause.Text.empty())
        err << "  cause : " << QString::fromStdString(cause.Text) << '\n';
    if (!cause.Remedy.empty())
        err << u"  remède : "_s << QString::fromStdString(cause.Remedy) << '\n';
}

QString TitleOf(std::u16string_view file)
{
    return QString::fromStdU16String(std::u16string(JobTitle(file)));
}

QString IsoTime(const SYSTEMTIME &time)
{
    if (time == SYSTEMTIME{})
        return {};
    const auto part = [](int number, int width) {
        return QString::number(number).rightJustified(width, u'0');
    };
    return part(time.wYear, 4) + u'-' + part(time.wMonth, 2) + u'-' + part(time.wDay, 2) + u'T' +
           part(time.wHour, 2) + u':' + part(time.wMinute, 2) + u':' + part(time.wSecond, 2);
}

QString IsoInstant(std::int64_t seconds)
{
    const auto local = QDateTime::fromSecsSinceEpoch(seconds);
    return local.toOffsetFromUtc(local.offsetFromUtc()).toString(Qt::ISODate);
}

TJobView::TJobView(ITaskService &service, ITaskScheduler &scheduler, const QString &name)
    : Name(TitleOf(name.toStdU16String())), m_service(service)
{
    std::shared_ptr<ITaskObject> object;
    Problem = scheduler.Activate(name.toStdU16String().c_str(), ITask::Iid, object);
    if (const auto task = std::dynamic_pointer_cast<ITask>(object))
        read(service, *task);
}

void TJobView::read(ITaskService &service, ITask &task)
{
    std::shared_ptr<IPersistFile> file;
    if (Succeeded(QueryInterface(task, file)))
        File = textOf(service, *file, &IPersistFile::GetCurFile);
    if (!File.isEmpty())
        Name = TitleOf(File.section(u'/', -1).toStdU16String());
    Program = textOf(service, task, &ITask::GetApplicationName);
    Parameters = textOf(service, task, &ITask::GetParameters);
    Directory = textOf(service, task, &ITask::GetWorkingDirectory);
    Comment = textOf<IScheduledWorkItem>(service, task, &IScheduledWorkItem::GetComment);
    Creator = textOf<IScheduledWorkItem>(service, task, &IScheduledWorkItem::GetCreator);
    Account = textOf<IScheduledWorkItem>(service, task, &IScheduledWorkItem::GetAccountInformation);
    task.GetFlags(Flags);
    task.GetPriority(Priority);
    task.GetMaxRunTime(MaxRunTime);
    task.GetStatus(Status);
    NextResult = task.GetNextRunTime(NextRun);
    task.GetMostRecentRunTime(LastRun);
    ExitResult = task.GetExitCode(ExitCode);
    std::uint16_t count = 0;
    task.GetTriggerCount(count);
    for (std::uint16_t i = 0; i < count; ++i) {
        std::shared_ptr<ITaskTrigger> trigger;
        TASK_TRIGGER record;
        if (Succeeded(task.GetTrigger(i, trigger)) && Succeeded(trigger->GetTrigger(record)))
            Triggers.push_back(
                {textOf(service, *trigger, &ITaskTrigger::GetTriggerString), NotationOf(record)});
    }
}

QString TJobView::StatusText() const
{
    switch (Failed(Problem) ? Problem : Status) {
    case TaskResult::TaskReady:
        return u"prête"_s;
    case TaskResult::TaskRunning:
        return u"en cours"_s;
    case TaskResult::TaskDisabled:
        return u"désactivée"_s;
    case TaskResult::TaskHasNotRun:
        return u"jamais exécutée"_s;
    case TaskResult::TaskNoMoreRuns:
        return u"terminée"_s;
    case TaskResult::TaskTerminated:
        return u"arrêtée"_s;
    case TaskResult::TaskNoValidTriggers:
        return u"non planifiée"_s;
    default:
        return QString::fromStdString(m_service.DescribeResult(Failed(Problem) ? Problem : Status));
    }
}

QString TJobView::LastResultText() const
{
    if (LastRun == SYSTEMTIME{} || Status == TaskResult::TaskRunning)
        return {};
    return Failed(ExitResult) ? QString::fromStdString(m_service.DescribeResult(ExitResult))
                              : u"code %1"_s.arg(ExitCode);
}

QJsonObject TJobView::Summary() const
{
    if (Failed(Problem))
        return {{u"name"_s, Name},
                {u"error"_s, QString::fromStdString(ResultName(Problem))},
                {u"message"_s, QString::fromStdString(m_service.DescribeResult(Problem))}};
    const bool hasRun = LastRun != SYSTEMTIME{};
    return {{u"name"_s, Name},
            {u"status"_s, QString::fromStdString(ResultName(Status))},
            {u"nextRun"_s, orNull(IsoTime(NextRun))},
            {u"lastRun"_s, orNull(IsoTime(LastRun))},
            {u"exitCode"_s, hasRun ? QJsonValue(qint64(ExitCode)) : QJsonValue()},
            {u"startError"_s,
             Failed(ExitResult) ? QJsonValue(QString::fromStdString(ResultName(ExitResult))) : QJsonValue()}};
}

QJsonObject TJobView::Everything() const
{
    auto object = Summary();
    if (Failed(Problem))
        return object;
    QJsonArray flags;
    for (const auto &flag : FlagNames())
        if (Flags & flag.Bit)
            flags << QString::fromLatin1(flag.Name);
    object.insert(u"file"_s, File);
    object.insert(u"program"_s, Program);
    object.insert(u"parameters"_s, Parameters);
    object.insert(u"directory"_s, Directory);
    object.insert(u"comment"_s, Comment);
    object.insert(u"creator"_s, Creator);
    object.insert(u"account"_s, Account);
    object.insert(u"priority"_s, qint64(Priority));
    object.insert(u"maxRunTime"_s, IsLimited() ? QJsonValue(qint64(MaxRunTime)) : QJsonValue());
    object.insert(u"flags"_s, flags);
    QJsonArray triggers;
    for (const auto &trigger : Triggers)
        triggers << QJsonObject{{u"text"_s, trigger.Text}, {u"notation"_s, orNull(trigger.Notation)}};
    object.insert(u"triggers"_s, triggers);
    return object;
}

QStringList JobNames(ITaskService &service, ITaskScheduler &scheduler)
{
    std::shared_ptr<IEnumWorkItems> listing;
    Require(service, scheduler.Enum(listing), u"list"_s);
    QStringList names;
    char16_t **name = nullptr;
    while (listing->Next(1, &name, nullptr) == TaskResult::Ok) {
        names << QString::fromStdU16String(TakeText(service.Allocator(), name[0]));
        service.Allocator().Free(name);
    }
    names.sort(Qt::CaseInsensitive);
    return names;
}

} // namespace Zelmar01
