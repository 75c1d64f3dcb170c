#pragma once

#include <Zelmar01/tasks/service/TaskService.h>

#include <cstdint>
#include <string>

namespace Zelmar01 {

/// A handle of the system; 0 when there is none.
using TSystemHandle = std::uintptr_t;

/// A process that was started.
struct TProcessHandles
{
    TSystemHandle Process = 0, Thread = 0;
};

/// What it takes on Windows to get the task service started, under the names that these calls have there.
/// Texts are bytes in the system's code page, but for that of SystemErrorMessage().
class IServiceSystem
{
public:
    virtual ~IServiceSystem() = default;

    /// The platform of GetVersionEx: 1 for the Windows 95 family.
    virtual std::uint32_t PlatformId() = 0;

    // The program that the Windows 95 family has.
    virtual TSystemHandle FindWindowA(const char *className, const char *title) = 0;
    /// The path of a program of the default search path, of less than `size` characters; empty on failure.
    virtual std::string SearchPathA(const char *program, std::uint32_t size) = 0;
    virtual bool CreateProcessA(const std::string &program, std::uint32_t creationFlags,
                                TProcessHandles &handles) = 0;
    virtual void CloseHandle(TSystemHandle handle) = 0;

    // The service that all others have.
    virtual TSystemHandle OpenSCManagerA(std::uint32_t access) = 0;
    virtual TSystemHandle OpenServiceA(TSystemHandle manager, const char *name, std::uint32_t access) = 0;
    virtual bool QueryServiceStatus(TSystemHandle service, std::uint32_t &currentState) = 0;
    virtual bool StartServiceA(TSystemHandle service) = 0;
    /// Keeps the reason of the failure before it.
    virtual void CloseServiceHandle(TSystemHandle handle) = 0;

    /// The system's text of the last failure, in UTF-8, as it is; empty when it has none.
    virtual std::string SystemErrorMessage() = 0;
};

/// Makes sure that the task service runs, in the steps that TServiceStart numbers. It waits for nothing: a
/// service that was asked to start may still be starting.
TServiceStart StartTaskService(IServiceSystem &system);

} // namespace Zelmar01
