#include <Zelmar01/tasks/TaskSettings.h>

#include <Zelmar01/core/Translation.h>
#include <Zelmar01/tasks/ServiceCalls.h>
#include <Zelmar01/tasks/service/TaskResults.h>

#include <cstring>

namespace Zelmar01 {

namespace {

constexpr const char *notRead = Translatable("Zelmar01", "La tâche n'a pas pu être lue");
constexpr const char *notWritten = Translatable("Zelmar01", "La tâche n'a pas été enregistrée");

void check(TTaskResult result, const char *message)
{
    if (!Failed(result))
        return;
    auto reason = ResultText(result);
    if (reason.empty())
        reason = ResultName(result);
    throw EInOutError(Translate("Zelmar01", message), {result, std::move(reason), {}});
}

template<class Object>
QString read(Object &object, ITaskAllocator &allocator, TTaskResult (Object::*get)(char16_t *&))
{
    TServiceBlock<char16_t> text(allocator);
    check((object.*get)(text.Out()), notRead);
    return TextOf(text.Get());
}

void write(ITask &task, TTaskResult (ITask::*set)(const char16_t *), const QString &before,
           const QString &after)
{
    if (before != after)
        check((task.*set)(after.toStdU16String().c_str()), notWritten);
}

void writeTriggers(ITask &task, const std::vector<TASK_TRIGGER> &before,
                   const std::vector<TASK_TRIGGER> &after)
{
    for (auto count = before.size(); count > after.size(); --count)
        check(task.DeleteTrigger(static_cast<std::uint16_t>(count - 1)), notWritten);
    for (std::size_t i = 0; i < after.size(); ++i) {
        if (i < before.size() && SameTrigger(before[i], after[i]))
            continue;
        auto index = static_cast<std::uint16_t>(i);
        std::shared_ptr<ITaskTrigger> trigger;
        check(i < before.size() ? task.GetTrigger(index, trigger) : task.CreateTrigger(index, trigger),
              notWritten);
        check(trigger->SetTrigger(&after[i]), notWritten);
    }
}

void write(ITask &task, const TTaskSettings &before, const TTaskSettings &after)
{
    write(task, &ITask::SetApplicationName, before.ApplicationName, after.ApplicationName);
    write(task, &ITask::SetParameters, before.Parameters, after.Parameters);
    write(task, &ITask::SetWorkingDirectory, before.WorkingDirectory, after.WorkingDirectory);
    write(task, &ITask::SetComment, before.Comment, after.Comment);
    if (before.Flags != after.Flags)
        check(task.SetFlags(after.Flags), notWritten);
    if (before.IdleTime != after.IdleTime)
        check(task.SetIdleWait(after.IdleTime.IdleMinutes, after.IdleTime.DeadlineMinutes), notWritten);
    if (before.MaxRunTime != after.MaxRunTime)
        check(task.SetMaxRunTime(after.MaxRunTime), notWritten);
    if (before.Priority != after.Priority)
        check(task.SetPriority(after.Priority), notWritten);
    writeTriggers(task, before.Triggers, after.Triggers);
}

// What cannot be taken back stays; the error that is reported is the first one.
void takeBack(ITask &task, const TTaskSettings &before, const TTaskSettings &failed) noexcept
try {
    auto now = failed;
    std::uint16_t count = 0;
    check(task.GetTriggerCount(count), notRead);
    now.Triggers.resize(count);
    for (auto &trigger : now.Triggers)
        trigger = {.cbTriggerSize = 0}; // like no trigger that could be meant to stay
    write(task, now, before);
} catch (...) {
}

} // namespace

bool SameTrigger(const TASK_TRIGGER &a, const TASK_TRIGGER &b)
{
    return std::memcmp(&a, &b, sizeof a) == 0;
}

TTaskSettings ReadTaskSettings(ITask &task, ITaskAllocator &allocator)
{
    TTaskSettings settings;
    settings.ApplicationName = read(task, allocator, &ITask::GetApplicationName);
    settings.Parameters = read(task, allocator, &ITask::GetParameters);
    settings.WorkingDirectory = read(task, allocator, &ITask::GetWorkingDirectory);
    settings.Comment = read<ITask>(task, allocator, &ITask::GetComment);
    check(task.GetFlags(settings.Flags), notRead);
    check(task.GetIdleWait(settings.IdleTime.IdleMinutes, settings.IdleTime.DeadlineMinutes), notRead);
    check(task.GetMaxRunTime(settings.MaxRunTime), notRead);
    check(task.GetPriority(settings.Priority), notRead);
    std::uint16_t count = 0;
    check(task.GetTriggerCount(count), notRead);
    for (std::uint16_t i = 0; i < count; ++i) {
        std::shared_ptr<ITaskTrigger> trigger;
        check(task.GetTrigger(i, trigger), notRead);
        check(trigger->GetTrigger(settings.Triggers.emplace_back()), notRead);
    }
    std::shared_ptr<IPersistFile> file;
    check(QueryInterface(task, file), notRead);
    settings.File = read(*file, allocator, &IPersistFile::GetCurFile);
    TServiceBlock<char16_t> account(allocator);
    if (Succeeded(task.GetAccountInformation(account.Out())))
        settings.Account = TextOf(account.Get());
    return settings;
}

void WriteTaskSettings(ITask &task, const TTaskSettings &before, const TTaskSettings &after, bool save)
{
    try {
        write(task, before, after);
        if (!save)
            return;
        std::shared_ptr<IPersistFile> file;
        check(QueryInterface(task, file), notWritten);
        check(file->Save(nullptr, true), notWritten);
    } catch (const EInOutError &) {
        takeBack(task, before, after);
        throw;
    }
}

} // namespace Zelmar01
