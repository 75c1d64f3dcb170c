#pragma once

#include <Zelmar01/core/Exceptions.h>
#include <Zelmar01/tasks/service/TaskInterfaces.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace Zelmar01 {

/// How the start of the service went.
struct TServiceStart
{
    /// Which of its steps failed, 1 to 6; 0 when none did. 1 and 2 find and start the program of the Windows
    /// 95 family; 3 to 6 open the service manager, open the service, ask for its state and start it.
    int FailedStep = 0;
    /// The system's text of the failure, in UTF-8; may be empty.
    std::string Text;
};

/// The flags of a property sheet, PSH_... of the system.
namespace SheetFlag {
inline constexpr std::uint32_t PropTitle = 0x1;           ///< the caption is a name: "Properties of ..."
inline constexpr std::uint32_t UseIcon = 0x2;             ///< the application's icon
inline constexpr std::uint32_t NoApplyNow = 0x80;         ///< no Apply button
inline constexpr std::uint32_t UseCallback = 0x100;       ///< Applied is called
inline constexpr std::uint32_t HasHelp = 0x200;           ///< a Help button
inline constexpr std::uint32_t NoContextHelp = 0x2000000; ///< no help button in the title bar
} // namespace SheetFlag

/// A property sheet to be shown.
struct TPropertySheet
{
    std::uint32_t Flags = 0;   ///< of SheetFlag
    std::uintptr_t Parent = 0; ///< a window handle; 0 for none
    std::u16string Caption;
    std::vector<std::shared_ptr<ITaskPage>> Pages;
    /// Called after the Apply button has done its work; only with UseCallback.
    std::function<void()> Applied;
};

/// Who offers the task service: the system's own on Windows, a folder of job files anywhere.
///
/// Objects that came from it may outlive the pointer to it, but not its allocator: blocks must be freed while
/// the service lives.
class ITaskService
{
public:
    virtual ~ITaskService() = default;

    /// Makes sure that the service runs. A failure is for people to read, and CreateScheduler may succeed all
    /// the same.
    virtual TServiceStart StartScheduler() = 0;

    /// Connects to the service of this computer: CoCreateInstance of ClsidTaskScheduler.
    virtual TTaskResult CreateScheduler(std::shared_ptr<ITaskScheduler> &scheduler) = 0;

    /// The memory of all that the objects hand out.
    virtual ITaskAllocator &Allocator() = 0;

    /// Shows a sheet of pages that this service made, until it is closed. Above 0 when it was closed with OK,
    /// 0 when it was cancelled, below 0 when it could not be shown.
    virtual std::intptr_t ShowSheet(const TPropertySheet &sheet) = 0;

    /// What a result of this service says to a person, in UTF-8: the system's own words, or those of
    /// ResultText. Never empty.
    virtual std::string DescribeResult(TTaskResult result) = 0;

    /// What is behind a failure just met, and the way out, where this service knows more than
    /// DescribeResult() says; empty elsewhere.
    virtual TSystemCause ExplainResult(TTaskResult) { return {}; }
};

} // namespace Zelmar01
