#include <Zelmar01/tasks/service/store/StoredNames.h>

#include <algorithm>

namespace Zelmar01 {

TStoredNames::TStoredNames(std::shared_ptr<TStoreContext> store, std::vector<std::u16string> names)
    : m_store(std::move(store)), m_names(std::make_shared<std::vector<std::u16string>>(std::move(names)))
{
}

TTaskResult TStoredNames::QueryInterface(const TGuid &iid, std::shared_ptr<ITaskObject> &object)
{
    if (iid != IEnumWorkItems::Iid)
        return TaskResult::NoInterface;
    object = shared_from_this();
    return TaskResult::Ok;
}

TTaskResult TStoredNames::Next(std::uint32_t count, char16_t ***names, std::uint32_t *fetched)
{
    if (count == 0 || !names || (count > 1 && !fetched))
        return TaskResult::InvalidArgument;
    const auto found = std::min<std::size_t>(count, m_names->size() - m_next);
    char16_t **list = nullptr;
    auto &allocator = m_store->Allocator;
    if (found > 0) {
        list = static_cast<char16_t **>(allocator.Alloc(found * sizeof *list));
        bool complete = list != nullptr;
        for (std::size_t i = 0; complete && i < found; ++i) {
            list[i] = AllocText(allocator, (*m_names)[m_next + i]);
            if (!list[i]) {
                std::for_each(list, list + i, [&](char16_t *name) { allocator.Free(name); });
                complete = false;
            }
        }
        if (!complete) {
            allocator.Free(list);
            return TaskResult::OutOfMemory;
        }
    }
    m_next += found;
    *names = list;
    if (fetched)
        *fetched = static_cast<std::uint32_t>(found);
    return found == count ? TaskResult::Ok : TaskResult::False;
}

TTaskResult TStoredNames::Skip(std::uint32_t count)
{
    const auto skipped = std::min<std::size_t>(count, m_names->size() - m_next);
    m_next += skipped;
    return skipped == count ? TaskResult::Ok : TaskResult::False;
}

TTaskResult TStoredNames::Reset()
{
    m_next = 0;
    return TaskResult::Ok;
}

TTaskResult TStoredNames::Clone(std::shared_ptr<IEnumWorkItems> &copy)
{
    copy = std::make_shared<TStoredNames>(*this);
    return TaskResult::Ok;
}

} // namespace Zelmar01
