#include <Zelmar01/tasks/service/WindowsPage.h>
#include <Zelmar01/tasks/service/WindowsTask.h>

namespace Zelmar01 {

TTaskResult WindowsTask::GetClassID(TGuid &classID)
{
    return m_file ? TakeValue(*m_file, &::IPersistFile::GetClassID, classID) : TaskResult::NoInterface;
}

TTaskResult WindowsTask::IsDirty()
{
    return m_file ? m_file->IsDirty() : TaskResult::NoInterface;
}

TTaskResult WindowsTask::Load(const char16_t *file, std::uint32_t mode)
{
    if (!file)
        return TaskResult::InvalidArgument;
    return m_file ? m_file->Load(SystemText(file), mode) : TaskResult::NoInterface;
}

TTaskResult WindowsTask::Save(const char16_t *file, bool remember)
{
    return m_file ? m_file->Save(SystemText(file), remember) : TaskResult::NoInterface;
}

TTaskResult WindowsTask::SaveCompleted(const char16_t *file)
{
    return m_file ? PassText(*m_file, &::IPersistFile::SaveCompleted, file) : TaskResult::NoInterface;
}

TTaskResult WindowsTask::GetCurFile(char16_t *&file)
{
    return m_file ? TakeValue(*m_file, &::IPersistFile::GetCurFile, file) : TaskResult::NoInterface;
}

TTaskResult WindowsTask::GetPage(TASKPAGE type, bool persistChanges, std::shared_ptr<ITaskPage> &page)
{
    if (!m_pages)
        return TaskResult::NoInterface;
    HPROPSHEETPAGE found = nullptr;
    const TTaskResult result = m_pages->GetPage(static_cast<::TASKPAGE>(type), persistChanges, &found);
    if (Succeeded(result))
        page = std::make_shared<WindowsPage>(m_pages, found);
    return result;
}

} // namespace Zelmar01
