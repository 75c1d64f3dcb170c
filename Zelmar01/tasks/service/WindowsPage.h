#pragma once

#include <Zelmar01/tasks/service/TaskService.h>

#include <cstdint>
#include <memory>

#include <windows.h>

#include <prsht.h>

namespace Zelmar01 {

/// A page of the system's property sheets. It is destroyed with this, unless a sheet has had it.
class WindowsPage : public ITaskPage
{
public:
    /// `job` is kept as long as the page is.
    WindowsPage(std::shared_ptr<const void> job, HPROPSHEETPAGE page);
    ~WindowsPage() override;
    WindowsPage(const WindowsPage &) = delete;
    WindowsPage &operator=(const WindowsPage &) = delete;

    bool IsLeft() const { return m_page != nullptr; }

    /// Hands the page over to a sheet.
    HPROPSHEETPAGE Take();

private:
    std::shared_ptr<const void> m_job;
    HPROPSHEETPAGE m_page;
};

/// See ITaskService::ShowSheet. A sheet can be shown once; its owner takes no input meanwhile. What
/// Applied raises is raised here, when the sheet has been closed.
std::intptr_t ShowWindowsSheet(const TPropertySheet &sheet);

} // namespace Zelmar01
