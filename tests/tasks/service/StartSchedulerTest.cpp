#include <Zelmar01/tasks/service/StartScheduler.h>

#include <gtest/gtest.h>

#include <sstream>

using namespace Zelmar01;

namespace {

// Writes down what is asked of it, and fails in one call.
class RecordingServiceSystem : public IServiceSystem
{
public:
    std::uint32_t Platform = 2;
    std::uint32_t State = 1;
    bool HasWindow = false;
    std::string FailingCall;
    std::string Calls;

    std::uint32_t PlatformId() override { return Platform; }

    TSystemHandle FindWindowA(const char *className, const char *title) override
    {
        record("FindWindow", className, title);
        return HasWindow ? 9 : 0;
    }
    std::string SearchPathA(const char *program, std::uint32_t size) override
    {
        return record("SearchPath", program, size) ? "C:\\mstask.exe" : "";
    }
    bool CreateProcessA(const std::string &program, std::uint32_t creationFlags,
                        TProcessHandles &handles) override
    {
        handles = {1, 2};
        return record("CreateProcess", program, creationFlags);
    }
    void CloseHandle(TSystemHandle handle) override { record("CloseHandle", handle); }
    TSystemHandle OpenSCManagerA(std::uint32_t access) override
    {
        return record("OpenSCManager", access) ? 3 : 0;
    }
    TSystemHandle OpenServiceA(TSystemHandle manager, const char *name, std::uint32_t access) override
    {
        return record("OpenService", manager, name, access) ? 4 : 0;
    }
    bool QueryServiceStatus(TSystemHandle service, std::uint32_t &currentState) override
    {
        currentState = State;
        return record("QueryServiceStatus", service);
    }
    bool StartServiceA(TSystemHandle service) override { return record("StartService", service); }
    void CloseServiceHandle(TSystemHandle handle) override { record("CloseServiceHandle", handle); }
    std::string SystemErrorMessage() override
    {
        record("SystemErrorMessage");
        return "refused\r\n";
    }

private:
    template<class... TArguments>
    bool record(const std::string &name, const TArguments &...arguments)
    {
        std::ostringstream call;
        call << (Calls.empty() ? "" : ", ") << name;
        ((call << ' ' << arguments), ...);
        Calls += call.str();
        return name != FailingCall;
    }
};

const std::string window = "FindWindow SAGEWINDOWCLASS SYSTEM AGENT COM WINDOW",
                  search = window + ", SearchPath mstask.exe 260",
                  create = search + ", CreateProcess C:\\mstask.exe 528", manager = "OpenSCManager 1",
                  service = manager + ", OpenService 3 Schedule 20, CloseServiceHandle 3",
                  state = service + ", QueryServiceStatus 4", launch = state + ", StartService 4",
                  closed = ", CloseServiceHandle 4", why = ", SystemErrorMessage";

} // namespace

TEST(StartScheduler, takesTheStepsOfItsPlatform)
{
    const struct
    {
        const char *Label;
        std::uint32_t Platform;
        bool HasWindow;
        std::uint32_t State;
        const char *FailingCall;
        int FailedStep;
        std::string Calls;
    } cases[] = {
        {"95, runs", 1, true, 0, "", 0, window},
        {"95, starts", 1, false, 0, "", 0, create + ", CloseHandle 1, CloseHandle 2"},
        {"95, no program", 1, false, 0, "SearchPath", 1, search + why},
        {"95, no process", 1, false, 0, "CreateProcess", 2, create + why},
        {"NT, runs", 2, false, 4, "", 0, state + closed},
        {"NT, starts", 2, false, 1, "", 0, launch + closed},
        {"NT, is starting", 2, false, 2, "", 0, launch + closed},
        {"NT, no manager", 2, false, 1, "OpenSCManager", 3, manager + why},
        {"NT, no service", 2, false, 1, "OpenService", 4, service + why},
        {"NT, no state", 2, false, 4, "QueryServiceStatus", 5, state + closed + why},
        {"NT, no start", 2, false, 1, "StartService", 6, launch + closed + why},
        {"later ones", 3, true, 4, "", 0, state + closed},
    };
    for (const auto &row : cases) {
        SCOPED_TRACE(row.Label);
        RecordingServiceSystem system;
        system.Platform = row.Platform;
        system.HasWindow = row.HasWindow;
        system.State = row.State;
        system.FailingCall = row.FailingCall;
        const auto start = StartTaskService(system);
        EXPECT_EQ(start.FailedStep, row.FailedStep);
        EXPECT_EQ(start.Text, row.FailedStep ? "refused\r\n" : "");
        EXPECT_EQ(system.Calls, row.Calls);
    }
}
