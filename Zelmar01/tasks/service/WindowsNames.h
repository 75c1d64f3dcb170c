#pragma once

#include <Zelmar01/tasks/service/TaskInterfaces.h>
#include <Zelmar01/tasks/service/WindowsCom.h>

#include <memory>

namespace Zelmar01 {

/// The names of the jobs that the system's service has.
class WindowsNames : public IEnumWorkItems, public std::enable_shared_from_this<WindowsNames>
{
public:
    explicit WindowsNames(std::shared_ptr<::IEnumWorkItems> names);

    TTaskResult QueryInterface(const TGuid &iid, std::shared_ptr<ITaskObject> &object) override;
    TTaskResult Next(std::uint32_t count, char16_t ***names, std::uint32_t *fetched) override;
    TTaskResult Skip(std::uint32_t count) override;
    TTaskResult Reset() override;
    TTaskResult Clone(std::shared_ptr<IEnumWorkItems> &copy) override;

private:
    std::shared_ptr<::IEnumWorkItems> m_names;
};

} // namespace Zelmar01
