#include <Zelmar01/tasks/TaskItem.h>

#include <Zelmar01/tasks/ServiceCalls.h>
#include <Zelmar01/tasks/TaskScheduler.h>
#include <Zelmar01/tasks/TaskSheets.h>
#include <Zelmar01/tasks/saUtils.h>

#include <QIODevice>
#include <QMetaEnum>
#include <QPointer>

namespace Zelmar01 {

namespace {

constexpr TTaskResult statusByte = 0xFF;

TTaskFlags allFlags()
{
    TTaskFlags all;
    const auto flags = QMetaEnum::fromType<TTaskFlags>();
    for (int i = 0; i < flags.keyCount(); ++i)
        all |= static_cast<TTaskFlag>(flags.value(i));
    return all;
}

quint32 priorityClass(TTaskPriority priority)
{
    switch (priority) {
    case tpIdle:
        return PriorityClass::Idle;
    case tpHigh:
        return PriorityClass::High;
    case tpRealTime:
        return PriorityClass::RealTime;
    case tpNormal:
        break;
    }
    return PriorityClass::Normal;
}

TTaskPriority priorityOf(quint32 priorityClass)
{
    switch (priorityClass) {
    case PriorityClass::Idle:
        return tpIdle;
    case PriorityClass::High:
        return tpHigh;
    case PriorityClass::RealTime:
        return tpRealTime;
    default:
        return tpNormal;
    }
}

[[noreturn]] void failStream(const QString &message, const QIODevice &stream)
{
    throw EInOutError(message.toStdString(), {0, stream.errorString().toStdString(), {}});
}

} // namespace

TTaskItem::TTaskItem(TTaskScheduler &scheduler) : m_scheduler(scheduler), m_triggers(*this) {}

TTaskItem::~TTaskItem() = default;

ITaskService &TTaskItem::Service() const
{
    return *m_scheduler.Service();
}

ITask &TTaskItem::RequireTask() const
{
    if (!m_task)
        Error(QString::fromStdString(MessageText(TMessage::TaskNotActive)), {Name()});
    return *m_task;
}

void TTaskItem::check(TTaskResult result) const
{
    OleCheck(Service(), result);
}

QString TTaskItem::read(TTaskResult (ITask::*get)(char16_t *&)) const
{
    return ReadText(Service(), RequireTask(), get);
}

void TTaskItem::write(TTaskResult (ITask::*set)(const char16_t *), const QString &text)
{
    check((RequireTask().*set)(text.toStdU16String().c_str()));
}

std::shared_ptr<IPersistFile> TTaskItem::file() const
{
    return RequireInterface<IPersistFile>(Service(), RequireTask());
}

QString TTaskItem::Name() const
{
    return WithoutJobEnding(m_jobName);
}

QString TTaskItem::AccountName() const
{
    return read(&ITask::GetAccountInformation);
}

QString TTaskItem::ApplicationName() const
{
    return read(&ITask::GetApplicationName);
}

void TTaskItem::setApplicationName(const QString &name)
{
    write(&ITask::SetApplicationName, name);
}

QString TTaskItem::Parameters() const
{
    return read(&ITask::GetParameters);
}

void TTaskItem::setParameters(const QString &parameters)
{
    write(&ITask::SetParameters, parameters);
}

QString TTaskItem::WorkingDirectory() const
{
    return read(&ITask::GetWorkingDirectory);
}

void TTaskItem::setWorkingDirectory(const QString &directory)
{
    write(&ITask::SetWorkingDirectory, directory);
}

QString TTaskItem::Comment() const
{
    return read(&ITask::GetComment);
}

void TTaskItem::setComment(const QString &comment)
{
    write(&ITask::SetComment, comment);
}

QString TTaskItem::Creator() const
{
    return read(&ITask::GetCreator);
}

void TTaskItem::setCreator(const QString &creator)
{
    write(&ITask::SetCreator, creator);
}

TTaskFlags TTaskItem::Flags() const
{
    quint32 flags = 0;
    check(RequireTask().GetFlags(flags));
    return TTaskFlags::fromInt(flags) & allFlags();
}

void TTaskItem::setFlags(TTaskFlags flags)
{
    check(RequireTask().SetFlags((flags & allFlags()).toInt()));
}

TIdleTime TTaskItem::IdleTime() const
{
    TIdleTime time;
    check(RequireTask().GetIdleWait(time.IdleMinutes, time.DeadlineMinutes));
    return time;
}

void TTaskItem::setIdleTime(TIdleTime time)
{
    check(RequireTask().SetIdleWait(time.IdleMinutes, time.DeadlineMinutes));
}

quint32 TTaskItem::MaxRunTime() const
{
    quint32 milliseconds = 0;
    check(RequireTask().GetMaxRunTime(milliseconds));
    return milliseconds;
}

void TTaskItem::setMaxRunTime(quint32 milliseconds)
{
    check(RequireTask().SetMaxRunTime(milliseconds));
}

TTaskPriority TTaskItem::Priority() const
{
    quint32 priority = 0;
    check(RequireTask().GetPriority(priority));
    return priorityOf(priority);
}

void TTaskItem::setPriority(TTaskPriority priority)
{
    check(RequireTask().SetPriority(priorityClass(priority)));
}

TTaskStatus TTaskItem::Status() const
{
    TTaskResult status = TaskResult::Ok;
    check(RequireTask().GetStatus(status));
    return static_cast<TTaskStatus>(status & statusByte);
}

quint32 TTaskItem::ExitCode() const
{
    quint32 code = 0;
    check(RequireTask().GetExitCode(code));
    return code;
}

TDateTime TTaskItem::MostRecentRunTime() const
{
    SYSTEMTIME time;
    check(RequireTask().GetMostRecentRunTime(time));
    return SysTimeToDateTime(time);
}

TDateTime TTaskItem::NextRunTime() const
{
    SYSTEMTIME time;
    check(RequireTask().GetNextRunTime(time));
    return SysTimeToDateTime(time);
}

bool TTaskItem::IsDirty() const
{
    check(file()->IsDirty());
    return true;
}

QString TTaskItem::CurFile() const
{
    return ReadText(Service(), *file(), &IPersistFile::GetCurFile);
}

TTriggers &TTaskItem::Triggers()
{
    RequireTask();
    return m_triggers;
}

QString TTaskItem::TriggerString()
{
    auto &triggers = Triggers();
    if (triggers.Count() == 1)
        return triggers[0].AsString();
    return Format(triggers.Count() == 0 ? TMessage::NoTrigger : TMessage::SeveralTriggers);
}

void TTaskItem::Activate()
{
    if (!m_scheduler.Active())
        m_scheduler.Error(Format(TMessage::SchedulerStopped));
    m_task.reset();
    m_task = m_scheduler.openTask(m_jobName);
    if (!m_task)
        m_scheduler.Error(QString::fromStdString(MessageText(TMessage::TaskNotActivated)),
                          {m_scheduler.objectName()});
    m_triggers.InitTriggers();
}

void TTaskItem::Deactivate(bool save)
{
    RequireTask();
    if (save) {
        const auto persist = file();
        const auto dirty = persist->IsDirty();
        check(dirty);
        if (dirty == TaskResult::Ok) {
            m_triggers.UpdateTriggers();
            check(persist->Save(nullptr, true));
        }
    }
    m_task.reset();
}

void TTaskItem::Run()
{
    check(RequireTask().Run());
}

void TTaskItem::Terminate()
{
    check(RequireTask().Terminate());
}

void TTaskItem::Save()
{
    check(file()->Save(nullptr, true));
}

void TTaskItem::Save(const QString &fileName)
{
    check(file()->Save(fileName.toStdU16String().c_str(), true));
}

void TTaskItem::SetAccountInformation(const QString &accountName, const QString &password)
{
    const auto secret = password.toStdU16String();
    check(RequireTask().SetAccountInformation(accountName.toStdU16String().c_str(),
                                              password.isNull() ? nullptr : secret.c_str()));
}

void TTaskItem::EditWorkItem()
{
    check(RequireTask().EditWorkItem(0, 0));
}

void TTaskItem::DisplayTaskPages(quintptr handle, TPageTypes pages, const QString &title)
{
    const auto provider = RequireInterface<IProvideTaskPage>(Service(), RequireTask());
    TPropertySheet sheet;
    sheet.Flags = SheetFlag::HasHelp;
    sheet.Parent = handle;
    sheet.Caption = title.toStdU16String();
    sheet.Pages = TaskPages(*provider, pages);
    if (sheet.Pages.empty())
        return;
    const QPointer<TTaskItem> stillThere(this); // a timer of the host may refresh the list meanwhile
    ShowTaskSheet(m_scheduler.Service(), sheet);
    if (stillThere && Active())
        m_triggers.InitTriggers();
}

void TTaskItem::GetRunTimes(TDateTime begin, TDateTime end, quint16 &count, TDateTimeArray &times) const
{
    auto &task = RequireTask();
    const auto first = DateTimeToSystemTime(begin);
    const bool hasEnd = end >= 1.0;
    const auto last = hasEnd ? DateTimeToSystemTime(end) : SYSTEMTIME{};
    TServiceBlock<SYSTEMTIME> found(Service().Allocator());
    if (count > 0) // which the service may refuse
        check(task.GetRunTimes(first, hasEnd ? &last : nullptr, count, found.Out()));
    times.clear();
    if (!found.Get())
        count = 0;
    for (quint16 i = 0; i < count; ++i)
        times << SysTimeToDateTime(found.Get()[i]);
}

void TTaskItem::GetBinaryData(QIODevice &stream) const
{
    quint16 size = 0;
    TServiceBlock<std::uint8_t> data(Service().Allocator());
    check(RequireTask().GetWorkItemData(size, data.Out()));
    if (data.Get() && stream.write(reinterpret_cast<const char *>(data.Get()), size) != size)
        failStream(tr("Les données de la tâche n'ont pas pu être écrites"), stream);
}

void TTaskItem::SetBinaryData(QIODevice &stream)
{
    auto &task = RequireTask();
    const auto size = static_cast<quint16>(stream.size() - stream.pos());
    if (size == 0)
        return;
    auto *const data = static_cast<std::uint8_t *>(Service().Allocator().Alloc(size));
    if (!data)
        check(TaskResult::OutOfMemory);
    if (stream.read(reinterpret_cast<char *>(data), size) != size) {
        Service().Allocator().Free(data);
        failStream(tr("Les données de la tâche n'ont pas pu être lues"), stream);
    }
    // The block stays with the allocator, whatever the service makes of it.
    check(task.SetWorkItemData(size, data));
}

void TTaskItem::GetInterface(const TGuid &iid, std::shared_ptr<ITaskObject> &obj)
{
    if (!m_task)
        Activate();
    check(m_task->QueryInterface(iid, obj));
}

void TTaskItem::Error(const QString &msg) const
{
    throw ETaskError(msg.toStdString());
}

void TTaskItem::Error(const QString &fmt, const QVariantList &args) const
{
    Error(Format(fmt, args));
}

} // namespace Zelmar01
