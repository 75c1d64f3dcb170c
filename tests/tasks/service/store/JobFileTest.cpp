#include <Zelmar01/tasks/service/store/JobFile.h>

#include <tasks/service/Samples.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

using namespace Zelmar01;

namespace {

std::string fromHex(const char *hex)
{
    std::string bytes;
    unsigned value = 0;
    for (int used = 0; std::sscanf(hex, " %2x%n", &value, &used) == 1; hex += used)
        bytes += static_cast<char>(value);
    return bytes;
}

// A job written down by hand after the description of the format: without parameters, weekly, last run on
// Sunday 31 January 2027 at 12:42:05.006, with data of the service's own and a signature.
constexpr auto handWritten = R"(
    01 05 01 00  33 22 11 00 55 44 77 66 88 99 AA BB CC DD EE FF  46 00 7C 00  00 00 05 00  3C 00 0A 00
    80 00 00 00  FF FF FF FF  07 00 00 00  00 13 04 00  02 02 80 21
    EB 07 01 00 00 00 1F 00 0C 00 2A 00 05 00 06 00
    02 00
    04 00 61 00 2E 00 70 00 00 00
    00 00
    01 00 00 00
    03 00 E9 00 AC 20 00 00
    00 00
    03 00 DE AD 00
    08 00 0A 13 04 80 00 10 00 00
    01 00
    30 00 00 00  EB 07 01 00 05 00  EB 07 0C 00 1F 00  0F 00 2A 00  A0 05 00 00 3C 00 00 00
    03 00 00 00  02 00 00 00  02 00 22 00 00 00 00 00  00 00 00 00)";

std::string handWrittenJob()
{
    auto bytes = fromHex(handWritten);
    bytes[0x16] = static_cast<char>(bytes.size() - 50); // where the triggers are
    return bytes;
}

std::string signature()
{
    return fromHex("01 00 01 00") + std::string(64, '\x5A');
}

TJob jobOf(const std::string &bytes)
{
    TJob job;
    EXPECT_EQ(ReadJobFile(bytes, job), TaskResult::Ok);
    return job;
}

std::string fileOf(const TJob &job)
{
    std::string bytes;
    EXPECT_EQ(WriteJobFile(job, bytes), TaskResult::Ok);
    return bytes;
}

TJob fullJob()
{
    auto job = NewJob();
    job.ApplicationName = u"C:\\Caisse\\export.exe";
    job.Comment = std::u16string(3000, u'\xE9');
    job.Creator.reset();
    job.Parameters = u"";
    job.UserData.assign(65535, 0xA5);
    job.Flags = 0x21800242;
    job.Reserved.reset();
    job.Triggers.assign(48, repeated(weekly("2027-01-01 08:00", 2, Mon), 5, 60));
    job.Triggers[7].Reserved1 = 0x1234;
    job.Triggers[7].Type.Words = {1, 2, 3, 4};
    return job;
}

} // namespace

TEST(JobFile, fieldsLieWhereTheFormatPutsThem)
{
    const auto job = jobOf(handWrittenJob());
    EXPECT_EQ(job.ProductVersion, 0x0501);
    EXPECT_EQ(job.Uuid,
              (TGuid{0x00112233, 0x4455, 0x6677, {0x88, 0x99, 0xAA, 0xBB, 0xCC, 0xDD, 0xEE, 0xFF}}));
    EXPECT_EQ(job.ErrorRetryInterval, 5);
    EXPECT_EQ(job.IdleDeadline, 60);
    EXPECT_EQ(job.IdleWait, 10);
    EXPECT_EQ(job.Priority, PriorityClass::High);
    EXPECT_EQ(job.MaxRunTime, UnlimitedRunTime);
    EXPECT_EQ(job.ExitCode, 7U);
    EXPECT_EQ(job.Status, TaskResult::TaskReady);
    EXPECT_EQ(job.Flags, 0x21800202U);
    EXPECT_EQ(job.LastRun, (SYSTEMTIME{2027, 1, 0, 31, 12, 42, 5, 6}));
    EXPECT_EQ(job.RunningInstances, 2);
    EXPECT_EQ(job.ApplicationName, u"a.p");
    EXPECT_EQ(job.Parameters, std::nullopt);
    EXPECT_EQ(job.WorkingDirectory, u"");
    EXPECT_EQ(job.Creator, u"\xE9\x20AC");
    EXPECT_EQ(job.Comment, std::nullopt);
    EXPECT_EQ(job.UserData, (std::vector<std::uint8_t>{0xDE, 0xAD, 0x00}));
    EXPECT_EQ(job.Reserved, (TJobReserved{TaskResult::TaskNotReady, 0x1000}));
    ASSERT_EQ(job.Triggers.size(), 1U);
    const auto &trigger = job.Triggers[0];
    EXPECT_EQ(trigger.wBeginDay, 5);
    EXPECT_EQ(trigger.wEndMonth, 12);
    EXPECT_EQ(trigger.wStartHour * 60 + trigger.wStartMinute, 15 * 60 + 42);
    EXPECT_EQ(trigger.MinutesDuration, 1440U);
    EXPECT_EQ(trigger.MinutesInterval, 60U);
    EXPECT_EQ(trigger.rgFlags, TriggerFlag::HasEndDate | TriggerFlag::KillAtDurationEnd);
    EXPECT_EQ(trigger.TriggerType, TASK_TIME_TRIGGER_WEEKLY);
    EXPECT_EQ(trigger.Type.Weekly.rgfDaysOfTheWeek, Mon | Fri);
    EXPECT_TRUE(job.Signature.empty());
}

TEST(JobFile, isWrittenBackAsItWasRead)
{
    auto signedJob = handWrittenJob() + signature();
    auto misplaced = handWrittenJob();
    misplaced[0x16] = '\x33';
    auto foreignSignature = signedJob;
    foreignSignature[handWrittenJob().size()] = 2;
    for (const auto &bytes :
         {handWrittenJob(), signedJob, misplaced, foreignSignature, fileOf(fullJob()), fileOf(TJob{})})
        EXPECT_EQ(fileOf(jobOf(bytes)), bytes);

    // The offset of the triggers follows the texts, and new jobs have their own identifiers.
    auto job = jobOf(handWrittenJob());
    job.Comment = u"plus long";
    EXPECT_EQ(jobOf(fileOf(job)).TriggerOffsetBias, 0);
    EXPECT_NE(NewJob().Uuid, NewJob().Uuid);
}

TEST(JobFile, everyTruncationIsRefused)
{
    auto job = fullJob();
    job.UserData.resize(20);
    job.Triggers.resize(2);
    job.Comment = u"court";
    for (const auto &whole : {handWrittenJob(), fileOf(job)}) {
        for (std::size_t size = 0; size < whole.size(); ++size) {
            TJob untouched;
            untouched.ExitCode = 4711;
            EXPECT_EQ(ReadJobFile(whole.substr(0, size), untouched), TaskResult::HandleEndOfFile) << size;
            EXPECT_EQ(untouched.ExitCode, 4711U);
        }
        // A signature that breaks off is not one; the job is all there.
        for (std::size_t size = 0; size <= signature().size(); ++size) {
            const auto bytes = whole + signature().substr(0, size);
            const auto found = jobOf(bytes);
            EXPECT_EQ(found.Triggers.size(), jobOf(whole).Triggers.size());
            EXPECT_EQ(fileOf(found), bytes);
        }
    }
}

TEST(JobFile, damageIsRefused)
{
    struct TDamage
    {
        const char *What;
        TTaskResult Result;
        std::function<void(std::string &)> Do;
    };
    const auto set = [](std::size_t at, char value) {
        return [=](std::string &bytes) { bytes[at] = value; };
    };
    const auto triggersAt = handWrittenJob().size() - 50;
    const TDamage damages[] = {
        {"version of the file", TaskResult::UnknownObjectVersion, set(2, 2)},
        {"offset of the name", TaskResult::InvalidData, set(0x14, 0x48)},
        {"a text without its end", TaskResult::InvalidData, set(0x4E, 'x')},
        {"a text with two ends", TaskResult::InvalidData, set(0x4A, 0)},
        {"size of the reserved data", TaskResult::InvalidData, set(triggersAt - 10, 4)},
        {"size of a trigger", TaskResult::InvalidData, set(triggersAt + 2, 47)},
        {"a longer text than the file", TaskResult::HandleEndOfFile, set(0x47, 1)},
        {"more triggers than there are", TaskResult::HandleEndOfFile, set(triggersAt, 2)},
        {"fewer triggers than there are", TaskResult::InvalidData, set(triggersAt, 0)},
        {"one byte left over", TaskResult::InvalidData, [](std::string &bytes) { bytes += '\0'; }},
        {"left over behind a signature", TaskResult::InvalidData,
         [](std::string &bytes) { bytes += signature() + '\1'; }},
    };
    for (const auto &damage : damages) {
        auto bytes = handWrittenJob();
        damage.Do(bytes);
        TJob untouched;
        untouched.ExitCode = 4711;
        EXPECT_EQ(ReadJobFile(bytes, untouched), damage.Result) << damage.What;
        EXPECT_EQ(untouched.ExitCode, 4711U) << damage.What;
    }
}
