#pragma once

#include <Zelmar01/tasks/service/TaskInterfaces.h>
#include <Zelmar01/tasks/service/store/StoreContext.h>

#include <memory>

namespace Zelmar01 {

/// The scheduler of the job store: the jobs of its folder by their names.
class TStoredScheduler : public ITaskScheduler, public std::enable_shared_from_this<TStoredScheduler>
{
public:
    explicit TStoredScheduler(std::shared_ptr<TStoreContext> store);

    TTaskResult QueryInterface(const TGuid &iid, std::shared_ptr<ITaskObject> &object) override;

    /// This computer alone: null, its name with or without its domain, "localhost" or ".".
    TTaskResult SetTargetComputer(const char16_t *computer) override;
    TTaskResult GetTargetComputer(char16_t *&computer) override;
    TTaskResult Enum(std::shared_ptr<IEnumWorkItems> &names) override;
    /// A file that cannot be read as a job is refused with what is wrong with it; see ReadJobFile().
    TTaskResult Activate(const char16_t *name, const TGuid &iid,
                         std::shared_ptr<ITaskObject> &object) override;
    TTaskResult Delete(const char16_t *name) override;
    /// FileExists when there is a file of this name, damaged or not.
    TTaskResult NewWorkItem(const char16_t *name, const TGuid &clsid, const TGuid &iid,
                            std::shared_ptr<ITaskObject> &object) override;
    TTaskResult AddWorkItem(const char16_t *name, const std::shared_ptr<IScheduledWorkItem> &item) override;
    TTaskResult IsOfType(const char16_t *name, const TGuid &iid) override;

private:
    TTaskResult find(const char16_t *name, std::u16string &file) const;

    std::shared_ptr<TStoreContext> m_store;
};

} // namespace Zelmar01
