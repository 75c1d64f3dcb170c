#include <Zelmar01/tasks/service/WindowsNames.h>

#include <utility>

namespace Zelmar01 {

WindowsNames::WindowsNames(std::shared_ptr<::IEnumWorkItems> names) : m_names(std::move(names)) {}

TTaskResult WindowsNames::QueryInterface(const TGuid &iid, std::shared_ptr<ITaskObject> &object)
{
    if (iid != IEnumWorkItems::Iid)
        return TaskResult::NoInterface;
    object = shared_from_this();
    return TaskResult::Ok;
}

TTaskResult WindowsNames::Next(std::uint32_t count, char16_t ***names, std::uint32_t *fetched)
{
    if (count == 0 || !names || (count > 1 && !fetched))
        return TaskResult::InvalidArgument;
    wchar_t **list = nullptr;
    ULONG found = 0;
    const TTaskResult result = m_names->Next(count, &list, &found);
    if (Failed(result))
        return result;
    *names = reinterpret_cast<char16_t **>(list);
    if (fetched)
        *fetched = found;
    return result;
}

TTaskResult WindowsNames::Skip(std::uint32_t count)
{
    return m_names->Skip(count);
}

TTaskResult WindowsNames::Reset()
{
    return m_names->Reset();
}

TTaskResult WindowsNames::Clone(std::shared_ptr<IEnumWorkItems> &copy)
{
    ::IEnumWorkItems *names = nullptr;
    const TTaskResult result = m_names->Clone(&names);
    if (Succeeded(result))
        copy = std::make_shared<WindowsNames>(HoldComObject(m_names, names));
    return result;
}

} // namespace Zelmar01
