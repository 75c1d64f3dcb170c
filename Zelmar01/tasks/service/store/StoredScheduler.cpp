#include <Zelmar01/tasks/service/store/StoredScheduler.h>

#include <Zelmar01/tasks/service/store/JobControl.h>
#include <Zelmar01/tasks/service/store/StoredNames.h>
#include <Zelmar01/tasks/service/store/StoredTask.h>

#include <algorithm>

namespace Zelmar01 {

TStoredScheduler::TStoredScheduler(std::shared_ptr<TStoreContext> store) : m_store(std::move(store)) {}

TTaskResult TStoredScheduler::QueryInterface(const TGuid &iid, std::shared_ptr<ITaskObject> &object)
{
    if (iid != ITaskScheduler::Iid)
        return TaskResult::NoInterface;
    object = shared_from_this();
    return TaskResult::Ok;
}

TTaskResult TStoredScheduler::SetTargetComputer(const char16_t *computer)
{
    if (!computer)
        return TaskResult::Ok;
    std::u16string_view name = computer;
    if (name.starts_with(u"\\\\"))
        name.remove_prefix(2);
    const auto own = ComputerName();
    const auto wanted = FoldName(name);
    const bool isThisOne =
        !name.empty() && (name == u"." || wanted == FoldName(u"localhost") || wanted == FoldName(own) ||
                          wanted == FoldName(std::u16string_view(own).substr(0, own.find(u'.'))));
    return isThisOne ? TaskResult::Ok : TaskResult::BadNetPath;
}

TTaskResult TStoredScheduler::GetTargetComputer(char16_t *&computer)
{
    return m_store->HandOut(u"\\\\" + ComputerName(), computer);
}

TTaskResult TStoredScheduler::Enum(std::shared_ptr<IEnumWorkItems> &names)
{
    std::vector<std::u16string> found;
    const auto result = m_store->Folder.Names(found);
    if (Succeeded(result))
        names = std::make_shared<TStoredNames>(m_store, std::move(found));
    return result;
}

TTaskResult TStoredScheduler::Activate(const char16_t *name, const TGuid &iid,
                                       std::shared_ptr<ITaskObject> &object)
{
    std::u16string file;
    if (const auto result = find(name, file); Failed(result))
        return result;
    if (!TStoredTask::HasInterface(iid))
        return TaskResult::NoInterface;
    const auto task = std::make_shared<TStoredTask>(m_store, file);
    const auto result = task->Open();
    return Succeeded(result) ? task->QueryInterface(iid, object) : result;
}

TTaskResult TStoredScheduler::Delete(const char16_t *name)
{
    std::u16string file;
    if (const auto result = find(name, file); Failed(result))
        return result;
    const TFolderLock lock(m_store->Folder);
    if (Failed(lock.Result()))
        return lock.Result();
    const auto result = m_store->Folder.Remove(file);
    if (Succeeded(result))
        ForgetRuns(m_store->Folder, file);
    return result;
}

TTaskResult TStoredScheduler::NewWorkItem(const char16_t *name, const TGuid &clsid, const TGuid &iid,
                                          std::shared_ptr<ITaskObject> &object)
{
    if (clsid != ClsidTask)
        return TaskResult::ClassNotAvailable;
    if (iid != ITask::Iid)
        return TaskResult::NoInterface;
    std::u16string file, found;
    if (const auto result = JobFileName(name, file); Failed(result))
        return result;
    const auto result = m_store->Folder.Find(file, found);
    if (result != TaskResult::FileNotFound)
        return Failed(result) ? result : TaskResult::FileExists;
    return std::make_shared<TStoredTask>(m_store, file, NewJob())->QueryInterface(iid, object);
}

TTaskResult TStoredScheduler::AddWorkItem(const char16_t *name,
                                          const std::shared_ptr<IScheduledWorkItem> &item)
{
    const auto task = std::dynamic_pointer_cast<TStoredTask>(item);
    std::u16string file;
    if (const auto result = JobFileName(name, file); Failed(result) || !task)
        return TaskResult::InvalidArgument;
    return task->SaveAs(file);
}

TTaskResult TStoredScheduler::IsOfType(const char16_t *name, const TGuid &iid)
{
    std::u16string file;
    if (const auto result = find(name, file); Failed(result))
        return result;
    return TStoredTask::HasInterface(iid) ? TaskResult::Ok : TaskResult::False;
}

TTaskResult TStoredScheduler::find(const char16_t *name, std::u16string &file) const
{
    std::u16string wanted;
    const auto result = JobFileName(name, wanted);
    return Succeeded(result) ? m_store->Folder.Find(wanted, file) : result;
}

} // namespace Zelmar01
