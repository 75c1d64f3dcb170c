#include <Zelmar01/tasks/service/store/TickState.h>

#include <Zelmar01/tasks/service/Utf16.h>
#include <Zelmar01/tasks/service/store/JobSystem.h>

#include <fstream>
#include <sstream>

namespace Zelmar01 {

namespace {

std::filesystem::path stateFile(const TJobFolder &folder)
{
    return folder.Side() / "ticks";
}

} // namespace

TTickState ReadTickState(const TJobFolder &folder)
{
    TTickState state;
    LoadTickState(folder, state);
    return state;
}

TTaskResult LoadTickState(const TJobFolder &folder, TTickState &state)
{
    std::string text;
    if (const auto result = ReadWholeFile(stateFile(folder), text); Failed(result))
        return result == TaskResult::FileNotFound ? TaskResult::Ok : result;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line);
        std::string key;
        words >> key;
        if (TSeconds last = 0; key == "last" && words >> last) {
            state.Last = last;
        } else if (key == "started") {
            words >> state.Started;
        } else if (key == "boot") {
            words >> state.BootId;
        } else if (TTaskResult result = 0; key == "unusable" && words >> result && words.get() == ' ') {
            std::string name;
            std::getline(words, name);
            state.Unusable.push_back({Utf16FromUtf8(name), result});
        }
    }
    return TaskResult::Ok;
}

TTaskResult WriteTickState(const TJobFolder &folder, const TTickState &state)
{
    std::ostringstream text;
    text << "last " << state.Last.value_or(0) << "\nstarted " << state.Started << '\n';
    if (!state.BootId.empty())
        text << "boot " << state.BootId << '\n';
    for (const auto &[file, result] : state.Unusable)
        text << "unusable " << result << ' ' << Utf8FromUtf16(file) << '\n';
    return folder.StoreSide(stateFile(folder), text.str());
}

bool TicksArrive(const TTickState &state, TSeconds now)
{
    return state.Last && now - *state.Last <= MaxSilence;
}

std::string SystemBootId()
{
    std::string id;
    std::ifstream("/proc/sys/kernel/random/boot_id") >> id;
    return id;
}

} // namespace Zelmar01
