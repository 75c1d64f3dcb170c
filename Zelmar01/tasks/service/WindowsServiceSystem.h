#pragma once

#include <Zelmar01/tasks/service/StartScheduler.h>

namespace Zelmar01 {

/// The calls themselves.
class WindowsServiceSystem : public IServiceSystem
{
public:
    std::uint32_t PlatformId() override;
    TSystemHandle FindWindowA(const char *className, const char *title) override;
    std::string SearchPathA(const char *program, std::uint32_t size) override;
    bool CreateProcessA(const std::string &program, std::uint32_t creationFlags,
                        TProcessHandles &handles) override;
    void CloseHandle(TSystemHandle handle) override;
    TSystemHandle OpenSCManagerA(std::uint32_t access) override;
    TSystemHandle OpenServiceA(TSystemHandle manager, const char *name, std::uint32_t access) override;
    bool QueryServiceStatus(TSystemHandle service, std::uint32_t &currentState) override;
    bool StartServiceA(TSystemHandle service) override;
    void CloseServiceHandle(TSystemHandle handle) override;
    std::string SystemErrorMessage() override;
};

} // namespace Zelmar01
