#include <Zelmar01/tasks/service/StartScheduler.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <vector>

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
    std::vector<std::string> Calls;

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
        call << name;
        ((call << ' ' << arguments), ...);
        Calls.push_back(call.str());
        return name != FailingCall;
    }
};

const std::vector<std::string> program{"FindWindow SAGEWINDOWCLASS SYSTEM AGENT COM WINDOW",
                                       "SearchPath mstask.exe 260", "CreateProcess C:\\mstask.exe 528",
                                       "CloseHandle 1", "CloseHandle 2"};
const std::vector<std::string> service{"OpenSCManager 1",      "OpenService 3 Schedule 20",
                                       "CloseServiceHandle 3", "QueryServiceStatus 4",
                                       "StartService 4",       "CloseServiceHandle 4"};

// The first calls of a way, and those that follow.
std::vector<std::string> upTo(const std::vector<std::string> &way, std::size_t count,
                              const std::vector<std::string> &then = {})
{
    std::vector<std::string> calls(way.begin(), way.begin() + static_cast<std::ptrdiff_t>(count));
    calls.insert(calls.end(), then.begin(), then.end());
    return calls;
}

} // namespace

TEST(StartScheduler, takesTheStepsOfItsPlatform)
{
    const std::string why = "SystemErrorMessage", close = "CloseServiceHandle 4";
    const struct
    {
        const char *Label;
        std::uint32_t Platform;
        bool HasWindow;
        std::uint32_t State;
        const char *FailingCall;
        int FailedStep;
        std::vector<std::string> Calls;
    } cases[] = {
        {"95, runs", 1, true, 0, "", 0, upTo(program, 1)},
        {"95, starts", 1, false, 0, "", 0, program},
        {"95, no program", 1, false, 0, "SearchPath", 1, upTo(program, 2, {why})},
        {"95, no process", 1, false, 0, "CreateProcess", 2, upTo(program, 3, {why})},
        {"NT, runs", 2, false, 4, "", 0, upTo(service, 4, {close})},
        {"NT, starts", 2, false, 1, "", 0, service},
        {"NT, is starting", 2, false, 2, "", 0, service},
        {"NT, no manager", 2, false, 1, "OpenSCManager", 3, upTo(service, 1, {why})},
        {"NT, no service", 2, false, 1, "OpenService", 4, upTo(service, 3, {why})},
        {"NT, no state", 2, false, 4, "QueryServiceStatus", 5, upTo(service, 4, {close, why})},
        {"NT, no start", 2, false, 1, "StartService", 6, upTo(service, 6, {why})},
        {"later ones", 3, true, 4, "", 0, upTo(service, 4, {close})},
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
