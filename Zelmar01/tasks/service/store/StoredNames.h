#pragma once

#include <Zelmar01/tasks/service/TaskInterfaces.h>
#include <Zelmar01/tasks/service/store/StoreContext.h>

#include <memory>
#include <string>
#include <vector>

namespace Zelmar01 {

/// The names of the jobs as they were when they were asked for.
class TStoredNames : public IEnumWorkItems, public std::enable_shared_from_this<TStoredNames>
{
public:
    TStoredNames(std::shared_ptr<TStoreContext> store, std::vector<std::u16string> names);

    TTaskResult QueryInterface(const TGuid &iid, std::shared_ptr<ITaskObject> &object) override;
    TTaskResult Next(std::uint32_t count, char16_t ***names, std::uint32_t *fetched) override;
    TTaskResult Skip(std::uint32_t count) override;
    TTaskResult Reset() override;
    TTaskResult Clone(std::shared_ptr<IEnumWorkItems> &copy) override;

private:
    std::shared_ptr<TStoreContext> m_store;
    std::shared_ptr<const std::vector<std::u16string>> m_names;
    std::size_t m_next = 0;
};

} // namespace Zelmar01
