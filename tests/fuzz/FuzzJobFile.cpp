// Any bytes as a job file: no crash, no hang, what is accepted is written back byte for byte, and its
// triggers give times in their order.

#include "Fuzz.h"

#include <Zelmar01/tasks/service/RunTimes.h>
#include <Zelmar01/tasks/service/TriggerText.h>
#include <Zelmar01/tasks/service/Triggers.h>
#include <Zelmar01/tasks/service/store/CommandLine.h>
#include <Zelmar01/tasks/service/store/JobFile.h>

#include <algorithm>
#include <cstdlib>

using namespace Zelmar01;

namespace {

void require(bool promise)
{
    if (!promise)
        std::abort();
}

std::string fileOf(const TJob &job)
{
    std::string bytes;
    require(WriteJobFile(job, bytes) == TaskResult::Ok);
    return bytes;
}

void lookAtTimes(const TJob &job)
{
    static const TTimeZone zone(ParseZoneRule("CET-1CEST,M3.5.0,M10.5.0/3").value());
    const TRunTimes times(std::span(job.Triggers).first(std::min<std::size_t>(job.Triggers.size(), 48)), 0);
    TSeconds from = 1'800'000'000;
    for (int i = 0; i < 5; ++i) {
        const auto start = times.Next(from, zone);
        if (!start)
            break;
        require(*start >= from);
        from = *start + 1;
    }
    SYSTEMTIME next;
    require(Succeeded(NextRunTime(times, from, zone, next)));
}

void asJobFile(const std::string &input)
{
    TJob job;
    job.ExitCode = 4711;
    if (Failed(ReadJobFile(input, job))) {
        require(job.ExitCode == 4711 && job.Triggers.empty());
        return;
    }
    require(fileOf(job) == input);
    for (const auto &trigger : job.Triggers) {
        require(!TriggerText(trigger).empty());
        const auto stored = StoredTrigger(trigger);
        require(CheckTrigger(&trigger) == CheckTrigger(&stored));
    }
    const auto arguments = SplitParameters(job.Parameters.value_or(u""));
    require(SplitParameters(JoinParameters(arguments)) == arguments);
    lookAtTimes(job);
}

TJob sample(TASK_TRIGGER_TYPE kind)
{
    TJob job;
    job.ApplicationName = u"/bin/true";
    job.Parameters = u"-a \"b c\" d\\\"e";
    job.Comment.reset();
    job.UserData = {1, 2, 3};
    TASK_TRIGGER trigger;
    trigger.wBeginYear = 2027;
    trigger.wBeginMonth = 1;
    trigger.wBeginDay = 31;
    trigger.wStartHour = 2;
    trigger.wStartMinute = 30;
    trigger.MinutesInterval = 7;
    trigger.MinutesDuration = 3000;
    trigger.TriggerType = kind;
    trigger.Type.Words = {2, 0x3E, 0xFFF, 0};
    job.Triggers = {trigger, trigger};
    return job;
}

} // namespace

const std::vector<std::string> &FuzzSeeds()
{
    static const std::vector<std::string> seeds = [] {
        std::vector<std::string> files;
        for (const auto kind : {TASK_TIME_TRIGGER_ONCE, TASK_TIME_TRIGGER_DAILY, TASK_TIME_TRIGGER_WEEKLY,
                                TASK_TIME_TRIGGER_MONTHLYDATE, TASK_TIME_TRIGGER_MONTHLYDOW})
            files.push_back(fileOf(sample(kind)));
        files.push_back(files.front() + std::string("\1\0\1\0", 4) + std::string(64, 's'));
        return files;
    }();
    return seeds;
}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    asJobFile({reinterpret_cast<const char *>(data), size});
    return 0;
}
