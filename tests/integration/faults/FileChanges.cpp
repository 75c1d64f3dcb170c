#include "Changes.h"

#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/descrtree/CacheFiles.h>
#include <Zelmar01/printing/CodeFile.h>
#include <Zelmar01/tasks/service/TaskAllocator.h>
#include <Zelmar01/tasks/service/store/JobLog.h>
#include <Zelmar01/tasks/service/store/JobStore.h>
#include <Zelmar01/tasks/service/store/RunFiles.h>
#include <Zelmar01/tasks/service/store/TickState.h>

#include <descrtree/Levels.h>

#include <sstream>

using namespace Zelmar01;

namespace {

using TFolder = TChange::TFolder;

// What an exception says, with its cause.
template<class Work>
std::string saidBy(Work work)
{
    try {
        work();
        return {};
    } catch (const Exception &error) {
        return std::string(error.what()) + " (" + error.Cause().Words() + ")";
    }
}

// Each code is one of its own.
TPrinterCodes codesOf(char sign)
{
    auto codes = DefaultPrinterCodes();
    char number = 0;
    for (auto &set : codes)
        for (const auto &field : PrinterCodeFields())
            set.*field.Code = TPrinterCode(std::string{sign, ++number});
    return codes;
}

// Each code in a line of its own.
std::string linesOf(const TPrinterCodes &codes)
{
    std::string lines;
    for (const auto &set : codes)
        for (const auto &field : PrinterCodeFields())
            lines += std::string(std::string_view(set.*field.Code)) + '\n';
    return lines;
}

std::string codesIn(const TFolder &folder)
{
    auto codes = codesOf('#');
    LoadCodeFile(folder / "x.PCC", codes);
    return linesOf(codes);
}

// The file is written in place: a code is that of the new file, or the program's own where it was not
// written.
bool isPartOf(const std::string &after, const std::string &now)
{
    std::istringstream written(after), found(now), own(linesOf(codesOf('#')));
    for (std::string a, b, c; std::getline(written, a) && std::getline(found, b) && std::getline(own, c);)
        if (b != a && b != c)
            return false;
    return true;
}

TChange codeFile()
{
    return {
        "code file", [](const TFolder &folder) { SaveCodeFile(folder / "x.PCC", codesOf('a')); },
        [](const TFolder &folder) { return saidBy([&] { SaveCodeFile(folder / "x.PCC", codesOf('b')); }); },
        codesIn, [](const auto &, const auto &after, const auto &now) { return isPartOf(after, now); }};
}

const TNodeTextRule rule{true, QStringLiteral("-")};

TCacheFiles cacheFilesIn(const TFolder &folder)
{
    return CacheFilesOf(QString::fromStdString((folder / "x").string()));
}

void writeCache(const TFolder &folder, const char *label)
{
    auto levels = someLevels();
    levels[2].Libelle = QString::fromLatin1(label);
    WriteCacheFiles(cacheFilesIn(folder), QStringLiteral("Corvantix"), rule, rowsOf(levels));
}

std::string cacheIn(const TFolder &folder)
{
    std::string levels;
    const auto said = saidBy([&] {
        const auto files = cacheFilesIn(folder);
        if (!files.Exist()) {
            levels = "none";
            return;
        }
        for (const auto &level : levelsOf(ReadCacheFiles(files, rule)))
            levels += level.ChaineObjet().toStdString() + '\n';
    });
    return said.empty() ? levels : "error: " + said;
}

TChange cacheFiles()
{
    return {"cache files", [](const TFolder &folder) { writeCache(folder, "OR"); },
            [](const TFolder &folder) { return saidBy([&] { writeCache(folder, "PLATINE"); }); }, cacheIn,
            // The two files do not fit: the tree is read from the database.
            [](const auto &, const auto &, const auto &now) { return now.starts_with("error: "); }};
}

TChange cacheRemoval()
{
    auto change = cacheFiles();
    change.Name = "removal of the cache files";
    change.Make = [](const TFolder &folder) {
        return saidBy([&] { RemoveCacheFiles(cacheFilesIn(folder)); });
    };
    return change;
}

// A store at work on a folder.
class TStore
{
public:
    explicit TStore(const TFolder &folder) : m_store({folder / "jobs", "/bin/false", {}, {}}) {}

    // What came of a piece of work that gives a result.
    std::string Said(const std::function<TTaskResult(ITaskScheduler &)> &work)
    {
        std::shared_ptr<ITaskScheduler> scheduler;
        auto result = m_store.CreateScheduler(scheduler);
        if (Succeeded(result))
            result = work(*scheduler);
        return Failed(result) ? m_store.DescribeResult(result) : std::string();
    }

    std::string Text(char16_t *block) { return TextFromBlock(block); }

private:
    std::string TextFromBlock(char16_t *block)
    {
        return PathFromText(TakeText(m_store.Allocator(), block)).string();
    }

    TJobStore m_store;
};

TTaskResult taskOf(ITaskScheduler &scheduler, bool isNew, std::shared_ptr<ITask> &task)
{
    std::shared_ptr<ITaskObject> object;
    const auto result = isNew ? scheduler.NewWorkItem(u"Caisse", ClsidTask, ITask::Iid, object)
                              : scheduler.Activate(u"Caisse", ITask::Iid, object);
    task = std::dynamic_pointer_cast<ITask>(object);
    return result;
}

TTaskResult saveJob(ITaskScheduler &scheduler, bool isNew, const char16_t *comment)
{
    std::shared_ptr<ITask> task;
    auto result = taskOf(scheduler, isNew, task);
    std::shared_ptr<IPersistFile> file;
    if (Succeeded(result))
        result = task->SetComment(comment);
    if (Succeeded(result))
        result = QueryInterface(*task, file);
    return Succeeded(result) ? file->Save(nullptr, true) : result;
}

void makeJob(const TFolder &folder)
{
    TStore(folder).Said([](auto &scheduler) { return saveJob(scheduler, true, u"old"); });
}

std::string jobsIn(const TFolder &folder)
{
    TStore store(folder);
    std::string comment = "no job";
    const auto said = store.Said([&](ITaskScheduler &scheduler) {
        std::shared_ptr<ITask> task;
        char16_t *text = nullptr;
        auto result = taskOf(scheduler, false, task);
        if (result == TaskResult::FileNotFound)
            return TaskResult::Ok;
        if (Succeeded(result))
            result = task->GetComment(text);
        if (Succeeded(result))
            comment = store.Text(text);
        return result;
    });
    return said.empty() ? comment : "error: " + said;
}

TChange jobChange(const char *name, void (*prepare)(const TFolder &),
                  const std::function<TTaskResult(ITaskScheduler &)> &work)
{
    return {name, prepare, [work](const TFolder &folder) { return TStore(folder).Said(work); }, jobsIn};
}

void makeJobFolder(const TFolder &folder)
{
    TStore(folder).Said([](auto &) { return TaskResult::Ok; });
}

std::string described(TTaskResult result)
{
    return Failed(result) ? ResultText(result) : std::string();
}

// A change of a file beside the jobs, by who holds the lock.
TChange sideChange(const char *name, const std::function<TTaskResult(const TJobFolder &, bool isNew)> &write,
                   const std::function<std::string(const TJobFolder &)> &read)
{
    const auto make = [write](const TFolder &folder, bool isNew) {
        const TJobFolder jobs(folder / "jobs");
        const TFolderLock lock(jobs);
        return described(Failed(lock.Result()) ? lock.Result() : write(jobs, isNew));
    };
    return {name,
            [make](const TFolder &folder) {
                makeJobFolder(folder);
                make(folder, false);
            },
            [make](const TFolder &folder) { return make(folder, true); },
            [read](const TFolder &folder) { return read(TJobFolder(folder / "jobs")); }};
}

TChange tickState()
{
    return sideChange(
        "state of the ticks",
        [](const TJobFolder &jobs, bool isNew) {
            TTickState state;
            state.Last = isNew ? 1800000060 : 1800000000;
            state.BootId = isNew ? "boot-2" : "boot-1";
            state.Unusable.assign(isNew ? 3 : 1, {u"a.job", -5});
            return WriteTickState(jobs, state);
        },
        [](const TJobFolder &jobs) {
            const auto state = ReadTickState(jobs);
            return state.Last
                       ? std::to_string(*state.Last) + state.BootId + std::to_string(state.Unusable.size())
                       : "error";
        });
}

TChange runRecord()
{
    return sideChange(
        "record of a run",
        [](const TJobFolder &jobs, bool isNew) {
            return TRunFiles(jobs, u"a.job")
                .Write({isNew ? TRunRecord::Running : TRunRecord::AtRest, isNew ? 60 : 0, "boot"});
        },
        [](const TJobFolder &jobs) {
            const auto record = TRunFiles(jobs, u"a.job").Read();
            return record.BootId.empty()
                       ? "error"
                       : std::to_string(record.Phase) + ' ' + std::to_string(record.Handled);
        });
}

TChange log()
{
    auto change = sideChange(
        "log",
        [](const TJobFolder &jobs, bool isNew) {
            return AppendToLog(jobs, {{TJobEvent::Started, isNew ? 60 : 0, u"a.job", 0, {}}});
        },
        [](const TJobFolder &jobs) {
            const auto events = ReadLog(jobs, 5);
            return events.empty() ? "error" : std::to_string(events.size());
        });
    change.MayBeRepeated = false;
    return change;
}

} // namespace

std::vector<TChange> FileChanges()
{
    std::vector<TChange> changes{
        codeFile(),
        cacheFiles(),
        cacheRemoval(),
        jobChange("new job", makeJobFolder, [](auto &scheduler) { return saveJob(scheduler, true, u"new"); }),
        jobChange(
            "first job of a folder", [](const TFolder &) {},
            [](auto &scheduler) { return saveJob(scheduler, true, u"new"); }),
        jobChange("changed job", makeJob, [](auto &scheduler) { return saveJob(scheduler, false, u"new"); }),
        jobChange("deleted job", makeJob, [](auto &scheduler) { return scheduler.Delete(u"Caisse"); }),
        tickState(),
        runRecord(),
        log(),
    };
    for (auto &change : changes)
        if (change.Name == "new job" || change.Name == "first job of a folder" ||
            change.Name == "deleted job")
            change.MayBeRepeated = false;
    return changes;
}

std::string FilesBelow(const std::filesystem::path &folder)
{
    std::string names;
    for (const auto &entry : std::filesystem::recursive_directory_iterator(folder))
        if (!entry.is_directory())
            names += entry.path().lexically_relative(folder).string() + '\n';
    return names;
}

bool AreAmong(const std::string &files, const std::string &others)
{
    std::istringstream names(files);
    for (std::string name; std::getline(names, name);)
        if (('\n' + others).find('\n' + name + '\n') == std::string::npos)
            return false;
    return true;
}
