#include <Zelmar01/tasks/service/store/JobLog.h>

#include <Zelmar01/tasks/service/Utf16.h>
#include <Zelmar01/tasks/service/store/TextNumbers.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <string_view>

namespace Zelmar01 {

namespace {

constexpr std::array<const char *, TJobEvent::KindCount> kindNames{
    "started", "ended",         "terminated",      "limit-reached", "power-failed", "start-failed", "deleted",
    "missed",  "still-running", "held-on-battery", "start-lost",    "run-lost",     "unreadable"};

constexpr std::size_t largestLog = 256 << 10;

std::filesystem::path logFile(const TJobFolder &folder)
{
    return folder.Side() / "log";
}

std::string lineOf(const TJobEvent &event)
{
    return std::to_string(event.At) + '\t' + EventName(event.Kind) + '\t' + std::to_string(event.Value) +
           '\t' + (event.Start ? std::to_string(*event.Start) : "-") + '\t' + Utf8FromUtf16(event.File) +
           '\n';
}

std::optional<TJobEvent> eventOf(std::string_view line)
{
    std::array<std::string_view, 5> fields;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        const auto end = i + 1 < fields.size() ? line.find('\t') : line.size();
        if (end == line.npos)
            return std::nullopt;
        fields[i] = line.substr(0, end);
        line.remove_prefix(std::min(end + 1, line.size()));
    }
    const auto kind = std::ranges::find(kindNames, fields[1]);
    const auto at = NumberFromText<TSeconds>(fields[0]);
    const auto value = NumberFromText<std::int64_t>(fields[2]);
    if (kind == kindNames.end() || !at || !value)
        return std::nullopt;
    return TJobEvent{static_cast<TJobEvent::TKind>(kind - kindNames.begin()), *at, Utf16FromUtf8(fields[4]),
                     *value, NumberFromText<TSeconds>(fields[3])};
}

} // namespace

bool TJobEvent::IsProblem() const
{
    return Kind == LimitReached || Kind == PowerFailed || Kind == StartFailed || Kind >= Missed;
}

const char *EventName(TJobEvent::TKind kind)
{
    return kindNames[kind];
}

TTaskResult AppendToLog(const TJobFolder &folder, const std::vector<TJobEvent> &events)
{
    if (events.empty())
        return TaskResult::Ok;
    std::string log;
    if (const auto result = ReadWholeFile(logFile(folder), log);
        Failed(result) && result != TaskResult::FileNotFound)
        return result;
    for (const auto &event : events)
        log += lineOf(event);
    if (log.size() > largestLog)
        log.erase(0, log.find('\n', log.size() - largestLog / 2) + 1);
    return folder.StoreSide(logFile(folder), log);
}

std::vector<TJobEvent> ReadLog(const TJobFolder &folder, std::size_t count)
{
    std::string log;
    ReadWholeFile(logFile(folder), log);
    std::vector<TJobEvent> events;
    std::string_view rest = log;
    while (!rest.empty()) {
        const auto end = std::min(rest.find('\n'), rest.size());
        if (auto event = eventOf(rest.substr(0, end)))
            events.push_back(*std::move(event));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    if (events.size() > count)
        events.erase(events.begin(), events.end() - static_cast<std::ptrdiff_t>(count));
    return events;
}

} // namespace Zelmar01
