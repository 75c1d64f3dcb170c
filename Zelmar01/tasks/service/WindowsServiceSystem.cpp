#include <Zelmar01/tasks/service/WindowsServiceSystem.h>

#include <Zelmar01/tasks/service/WindowsMessages.h>

#include <windows.h>

namespace Zelmar01 {

namespace {

TSystemHandle ours(void *handle)
{
    return reinterpret_cast<TSystemHandle>(handle);
}

SC_HANDLE serviceHandle(TSystemHandle handle)
{
    return reinterpret_cast<SC_HANDLE>(handle);
}

} // namespace

std::uint32_t WindowsServiceSystem::PlatformId()
{
    OSVERSIONINFOA version = {};
    version.dwOSVersionInfoSize = sizeof version;
    return GetVersionExA(&version) ? version.dwPlatformId : VER_PLATFORM_WIN32_NT;
}

TSystemHandle WindowsServiceSystem::FindWindowA(const char *className, const char *title)
{
    return ours(::FindWindowA(className, title));
}

std::string WindowsServiceSystem::SearchPathA(const char *program, std::uint32_t size)
{
    std::string path(size, '\0');
    const auto length = ::SearchPathA(nullptr, program, nullptr, size, path.data(), nullptr);
    path.resize(length < size ? length : 0);
    return path;
}

bool WindowsServiceSystem::CreateProcessA(const std::string &program, std::uint32_t creationFlags,
                                          TProcessHandles &handles)
{
    STARTUPINFOA start = {};
    start.cb = sizeof start;
    PROCESS_INFORMATION process = {};
    if (!::CreateProcessA(program.c_str(), nullptr, nullptr, nullptr, FALSE, creationFlags, nullptr, nullptr,
                          &start, &process))
        return false;
    handles = {ours(process.hProcess), ours(process.hThread)};
    return true;
}

void WindowsServiceSystem::CloseHandle(TSystemHandle handle)
{
    ::CloseHandle(reinterpret_cast<HANDLE>(handle));
}

TSystemHandle WindowsServiceSystem::OpenSCManagerA(std::uint32_t access)
{
    return ours(::OpenSCManagerA(nullptr, nullptr, access));
}

TSystemHandle WindowsServiceSystem::OpenServiceA(TSystemHandle manager, const char *name,
                                                 std::uint32_t access)
{
    return ours(::OpenServiceA(serviceHandle(manager), name, access));
}

bool WindowsServiceSystem::QueryServiceStatus(TSystemHandle service, std::uint32_t &currentState)
{
    SERVICE_STATUS status = {};
    if (!::QueryServiceStatus(serviceHandle(service), &status))
        return false;
    currentState = status.dwCurrentState;
    return true;
}

bool WindowsServiceSystem::StartServiceA(TSystemHandle service)
{
    return ::StartServiceA(serviceHandle(service), 0, nullptr);
}

void WindowsServiceSystem::CloseServiceHandle(TSystemHandle handle)
{
    const auto reason = GetLastError();
    ::CloseServiceHandle(serviceHandle(handle));
    SetLastError(reason);
}

std::string WindowsServiceSystem::SystemErrorMessage()
{
    return SystemMessage(GetLastError(), FORMAT_MESSAGE_FROM_SYSTEM);
}

} // namespace Zelmar01
