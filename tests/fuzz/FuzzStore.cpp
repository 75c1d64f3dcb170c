// Any bytes as what the job store keeps beside its jobs, as parameters and names of jobs, and as a time zone:
// no crash, no hang, and what was understood is kept when it is written and read again.

#include "Fuzz.h"

#include <Zelmar01/tasks/service/TimeZone.h>
#include <Zelmar01/tasks/service/Utf16.h>
#include <Zelmar01/tasks/service/store/CommandLine.h>
#include <Zelmar01/tasks/service/store/JobLog.h>
#include <Zelmar01/tasks/service/store/RunFiles.h>
#include <Zelmar01/tasks/service/store/TickState.h>

#include <support/TempFolder.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>

using namespace Zelmar01;

namespace {

void require(bool promise)
{
    if (!promise)
        std::abort();
}

void put(const std::filesystem::path &file, const std::string &bytes)
{
    std::ofstream(file, std::ios::binary | std::ios::trunc) << bytes;
}

struct TSideFiles
{
    TSideFiles()
    {
        require(Succeeded(Folder.Create()));
        require(Succeeded(MakePrivateFolder(Folder.Side() / "runs")));
    }

    TempFolder Parent;
    TJobFolder Folder{Parent / "jobs"};
    TRunFiles Run{Folder, u"a.job"};
};

void asTickState(const TJobFolder &folder, const std::string &input)
{
    put(folder.Side() / "ticks", input);
    auto state = ReadTickState(folder);
    state.Last = state.Last.value_or(0);
    require(Succeeded(WriteTickState(folder, state)));
    const auto again = ReadTickState(folder);
    require(again.Last == state.Last && again.Started == state.Started && again.BootId == state.BootId &&
            again.Unusable == state.Unusable);
}

void asLog(const TJobFolder &folder, const std::string &input)
{
    put(folder.Side() / "log", input);
    const auto events = ReadLog(folder, 20);
    put(folder.Side() / "log", {});
    require(Succeeded(AppendToLog(folder, events)));
    require(ReadLog(folder, 20) == events);
}

void asRunRecord(const TSideFiles &files, const std::string &input)
{
    put(files.Folder.Side() / "runs/a.job.run", input);
    const auto record = files.Run.Read();
    require(Succeeded(files.Run.Write(record)));
    const auto again = files.Run.Read();
    require(again.Phase == record.Phase && again.Handled == record.Handled && again.BootId == record.BootId);
}

void asTexts(const std::string &input)
{
    const auto text = Utf16FromUtf8(input);
    const auto arguments = SplitParameters(text);
    require(SplitParameters(JoinParameters(arguments)) == arguments);
    const std::vector<std::u16string> given{text, {}, text + u'\\', u'"' + text};
    require(SplitParameters(JoinParameters(given)) == given);
    if (std::u16string file; Succeeded(JobFileName(text.c_str(), file)))
        require(IsJobFileName(file) && PathFromText(file).filename() == PathFromText(file));
}

void lookAt(const TTimeZone &zone)
{
    TSeconds before = INT64_MIN;
    for (TSeconds utc = -5'000'000'000; utc < 10'000'000'000; utc += 7'776'543) {
        require(zone.ToUtc(zone.ToLocal(utc)) <= utc);
        const auto first = zone.FirstLocal(utc);
        require(zone.ToUtc(first) >= utc && zone.ToUtc(first - 1) < utc);
        const auto instant = zone.ToUtc(utc); // taken as a local time
        require(instant >= before);
        before = instant;
    }
}

void asZone(const std::string &input)
{
    if (const auto zone = TTimeZone::FromZoneFile(input))
        lookAt(*zone);
    if (const auto rule = ParseZoneRule(input))
        lookAt(TTimeZone(*rule));
}

// A zone file of the second version: no changes in the first block, and two with times of 8 bytes.
std::string zoneFile()
{
    using namespace std::string_literals;
    const auto header = [](char changes, char types, char names) {
        return "TZif2"s + std::string(15, '\0') + std::string(15, '\0') + changes + "\0\0\0"s + types +
               "\0\0\0"s + names;
    };
    const auto types = "\0\0\x0E\x10\0\0"
                       "\0\0\x1C\x20\1\4"s;
    return header(0, 1, 4) + types.substr(0, 6) + "CET\0"s + header(2, 2, 9) + "\0\0\0\0\x38\xC5\x6D\x90"s +
           "\0\0\0\0\x3A\x03\x95\x10"s + "\1\0"s + types + "CET\0CEST\0"s + "\nCET-1CEST,M3.5.0,M10.5.0/3\n";
}

} // namespace

const std::vector<std::string> &FuzzSeeds()
{
    static const std::vector<std::string> seeds{
        zoneFile(),
        "CET-1CEST,M3.5.0,M10.5.0/3",
        "<-03>3<-02>,J60/-2,300/26:30:15",
        "last 1800000000\nstarted 3\nboot 0b1f-22\nunusable -2147216629 Caisse n\xC2\xB0 1.job\n",
        "1800000000\tstarted\t0\t1799999940\ta.job\n1800000060\tmissed\t7\t-\tb c.job\n",
        "2 1800000000 0b1f-22\n",
        "-a \"b c\" \"\" d\\\"e \"x\"\"y\" \\\\srv\\p\\",
        "Sauvegarde du soir.job",
    };
    return seeds;
}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    static const TSideFiles files;
    const std::string input(reinterpret_cast<const char *>(data), size);
    asTickState(files.Folder, input);
    asLog(files.Folder, input);
    asRunRecord(files, input);
    asTexts(input);
    asZone(input);
    return 0;
}
