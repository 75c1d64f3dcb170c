#include <Zelmar01/tasks/service/store/StoredTask.h>

#include <Zelmar01/tasks/service/store/JobControl.h>
#include <Zelmar01/tasks/service/store/JobPage.h>
#include <Zelmar01/tasks/service/store/JobStatus.h>

namespace Zelmar01 {

namespace {

std::filesystem::path fullPath(const char16_t *file)
{
    std::error_code error;
    return std::filesystem::absolute(PathFromText(file), error).lexically_normal();
}

// A file outside the store's folder, which no lock guards.
TTaskResult writeElsewhere(const std::filesystem::path &file, const TJob &job, bool asNew)
{
    std::string bytes;
    if (const auto result = WriteJobFile(job, bytes); Failed(result))
        return result;
    return asNew ? CreateWholeFile(file, file.parent_path(), bytes)
                 : ReplaceWholeFile(file, file.parent_path(), bytes);
}

} // namespace

TTaskResult TStoredTask::GetClassID(TGuid &classID)
{
    classID = ClsidTask;
    return TaskResult::Ok;
}

TTaskResult TStoredTask::IsDirty()
{
    return m_dirty ? TaskResult::Ok : TaskResult::False;
}

TTaskResult TStoredTask::Load(const char16_t *file, std::uint32_t)
{
    return file && *file ? read(fullPath(file)) : TaskResult::InvalidArgument;
}

TTaskResult TStoredTask::Save(const char16_t *file, bool remember)
{
    if (!file)
        return write(m_file, !m_isSaved);
    if (!*file)
        return TaskResult::InvalidArgument;
    const auto target = fullPath(file);
    if (remember)
        return write(target, true);
    auto copy = *this;
    return copy.write(target, true);
}

TTaskResult TStoredTask::SaveCompleted(const char16_t *)
{
    return TaskResult::Ok;
}

TTaskResult TStoredTask::GetCurFile(char16_t *&file)
{
    return m_store->HandOut(TextFromPath(m_file), file);
}

TTaskResult TStoredTask::GetPage(TASKPAGE type, bool persistChanges, std::shared_ptr<ITaskPage> &page)
{
    if (type < TASKPAGE_TASK || type > TASKPAGE_SETTINGS)
        return TaskResult::InvalidArgument;
    if (!m_isSaved)
        return TaskResult::NotFileBasedStorage;
    auto description = std::make_shared<TJobPage>();
    description->Job = shared_from_this();
    description->Type = type;
    description->PersistChanges = persistChanges;
    description->Allocator = {m_store, &m_store->Allocator};
    page = std::move(description);
    return TaskResult::Ok;
}

bool TStoredTask::isInStore(const std::filesystem::path &file) const
{
    std::error_code error;
    return file.parent_path() == m_store->Folder.Path() ||
           std::filesystem::equivalent(file.parent_path(), m_store->Folder.Path(), error);
}

TTaskResult TStoredTask::read(const std::filesystem::path &file)
{
    const TJobFolder folder(file.parent_path());
    const auto name = TextFromPath(file.filename());
    TJob job;
    if (const auto result = folder.Load(name, job); Failed(result))
        return result;
    m_isRunning = isInStore(file) && JobIsRunning(m_store->Folder, name, job);
    if (isInStore(file) && !m_isRunning && job.Status == TaskResult::TaskRunning) {
        // The run may have come to its end between the two looks.
        if (const auto result = folder.Load(name, job); Failed(result))
            return result;
        m_isRunning = JobIsRunning(m_store->Folder, name, job);
        if (!m_isRunning && job.Status == TaskResult::TaskRunning)
            SetRunLost(job);
    }
    m_job = std::move(job);
    m_file = file;
    m_isSaved = true;
    m_dirty = false;
    return TaskResult::Ok;
}

TTaskResult TStoredTask::write(const std::filesystem::path &file, bool asNew)
{
    auto job = m_job;
    if (asNew)
        SetNotRunning(job);
    SettleStatus(job);
    const auto result = isInStore(file) ? writeToStore(TextFromPath(file.filename()), asNew, job)
                                        : writeElsewhere(file, job, asNew);
    if (Failed(result))
        return result;
    m_job = std::move(job);
    m_isRunning = m_isRunning && !asNew;
    m_file = file;
    m_isSaved = true;
    m_dirty = false;
    return TaskResult::Ok;
}

TTaskResult TStoredTask::writeToStore(std::u16string_view file, bool asNew, TJob &job) const
{
    const auto &folder = m_store->Folder;
    if (!IsJobFileName(file))
        return TaskResult::InvalidArgument;
    const TFolderLock lock(folder);
    if (Failed(lock.Result()))
        return lock.Result();
    std::u16string found;
    auto result = folder.Find(file, found);
    if (result != TaskResult::FileNotFound) {
        if (Failed(result) || asNew)
            return Failed(result) ? result : TaskResult::FileExists;
        TJob inFile;
        if (result = folder.Load(found, inFile); Failed(result))
            return result;
        TakeRunRecord(job, inFile);
        SettleStatus(job);
        file = found;
    }
    return result == TaskResult::FileNotFound ? folder.Add(file, job) : folder.Store(file, job);
}

} // namespace Zelmar01
