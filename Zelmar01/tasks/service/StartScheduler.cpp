#include <Zelmar01/tasks/service/StartScheduler.h>

namespace Zelmar01 {

namespace {

// As the system's headers define them.
constexpr std::uint32_t platformWindows95 = 1;   // VER_PLATFORM_WIN32_WINDOWS
constexpr std::uint32_t createNewConsole = 0x10; // CREATE_NEW_CONSOLE
constexpr std::uint32_t createNewGroup = 0x200;  // CREATE_NEW_PROCESS_GROUP
constexpr std::uint32_t managerConnect = 0x1;    // SC_MANAGER_CONNECT
constexpr std::uint32_t serviceQuery = 0x4;      // SERVICE_QUERY_STATUS
constexpr std::uint32_t serviceStart = 0x10;     // SERVICE_START
constexpr std::uint32_t serviceRunning = 4;      // SERVICE_RUNNING
constexpr std::uint32_t longestPath = 260;       // MAX_PATH

TServiceStart failedAt(int step, IServiceSystem &system)
{
    return {step, system.SystemErrorMessage()};
}

TServiceStart startProgram(IServiceSystem &system)
{
    if (system.FindWindowA("SAGEWINDOWCLASS", "SYSTEM AGENT COM WINDOW"))
        return {};
    const auto program = system.SearchPathA("mstask.exe", longestPath);
    if (program.empty())
        return failedAt(1, system);
    TProcessHandles handles;
    if (!system.CreateProcessA(program, createNewConsole | createNewGroup, handles))
        return failedAt(2, system);
    system.CloseHandle(handles.Process);
    system.CloseHandle(handles.Thread);
    return {};
}

TServiceStart startService(IServiceSystem &system)
{
    const auto manager = system.OpenSCManagerA(managerConnect);
    if (!manager)
        return failedAt(3, system);
    const auto service = system.OpenServiceA(manager, "Schedule", serviceQuery | serviceStart);
    system.CloseServiceHandle(manager);
    if (!service)
        return failedAt(4, system);
    std::uint32_t state = 0;
    const bool known = system.QueryServiceStatus(service, state);
    const bool runs = known && (state == serviceRunning || system.StartServiceA(service));
    system.CloseServiceHandle(service);
    return runs ? TServiceStart() : failedAt(known ? 6 : 5, system);
}

} // namespace

TServiceStart StartTaskService(IServiceSystem &system)
{
    return system.PlatformId() == platformWindows95 ? startProgram(system) : startService(system);
}

} // namespace Zelmar01
