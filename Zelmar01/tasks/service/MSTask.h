#pragma once

#include <array>
#include <cstdint>

namespace Zelmar01 {

/// The records of the task service, under the names and with the layout that it gave them. All numbers are
/// little-endian, in memory as in a job file.
///
/// Windows declares some of these names too, outside any namespace. Inside namespace Zelmar01 a plain name is
/// the one declared here and the system's own is written with a leading "::"; a source that includes both
/// does not open the namespace with a using directive. What the system's headers make macros of (result
/// codes, flags) has a spelling of its own here, in TaskResults.h and below, so the order of inclusion is
/// free.

/// A moment of local civil time. All fields 0 is "never".
struct SYSTEMTIME
{
    std::uint16_t wYear = 0, wMonth = 0; ///< months from 1
    std::uint16_t wDayOfWeek = 0;        ///< 0 is Sunday
    std::uint16_t wDay = 0, wHour = 0, wMinute = 0, wSecond = 0, wMilliseconds = 0;

    bool operator==(const SYSTEMTIME &) const = default;
};
static_assert(sizeof(SYSTEMTIME) == 16);

/// The kinds of triggers. A record may hold other values; nothing starts on them.
enum TASK_TRIGGER_TYPE : std::uint32_t {
    TASK_TIME_TRIGGER_ONCE = 0,
    TASK_TIME_TRIGGER_DAILY = 1,
    TASK_TIME_TRIGGER_WEEKLY = 2,
    TASK_TIME_TRIGGER_MONTHLYDATE = 3,
    TASK_TIME_TRIGGER_MONTHLYDOW = 4,
    TASK_EVENT_TRIGGER_ON_IDLE = 5,
    TASK_EVENT_TRIGGER_AT_SYSTEMSTART = 6,
    TASK_EVENT_TRIGGER_AT_LOGON = 7,
};

/// Every DaysInterval days from the begin date on.
struct DAILY
{
    std::uint16_t DaysInterval;
};

/// On the days of DayOfWeek, in every WeeksInterval-th week; weeks begin on Sunday and are counted from the
/// one that holds the begin date.
struct WEEKLY
{
    std::uint16_t WeeksInterval;
    std::uint16_t rgfDaysOfTheWeek; ///< bit 0 is Sunday
};

/// On the days of the month whose bits are set; a month that lacks such a day has no start for it.
struct MONTHLYDATE
{
    std::uint32_t rgfDays;   ///< bit 0 is the 1st, bit 30 the 31st
    std::uint16_t rgfMonths; ///< bit 0 is January
};

/// On the first, second, third, fourth or last of the given days of the week in a month.
struct MONTHLYDOW
{
    std::uint16_t wWhichWeek;       ///< 1 to 4, 5 for the last
    std::uint16_t rgfDaysOfTheWeek; ///< bit 0 is Sunday
    std::uint16_t rgfMonths;        ///< bit 0 is January
};

/// What goes with the kind of a trigger; once and the events have nothing here.
union TRIGGER_TYPE_UNION {
    std::array<std::uint16_t, 4> Words; ///< all of it, whatever the kind
    DAILY Daily;
    WEEKLY Weekly;
    MONTHLYDATE MonthlyDate;
    MONTHLYDOW MonthlyDOW;
};
static_assert(sizeof(TRIGGER_TYPE_UNION) == 8);

/// One trigger of a job: dates and times are local.
struct TASK_TRIGGER
{
    std::uint16_t cbTriggerSize = 48;
    std::uint16_t Reserved1 = 0;
    std::uint16_t wBeginYear = 0, wBeginMonth = 0, wBeginDay = 0; ///< the first day that may have a start
    std::uint16_t wEndYear = 0, wEndMonth = 0, wEndDay = 0;       ///< the last one, with HasEndDate
    std::uint16_t wStartHour = 0, wStartMinute = 0;
    std::uint32_t MinutesDuration = 0; ///< how long a start is repeated
    std::uint32_t MinutesInterval = 0; ///< every how many minutes; 0 for no repetition
    std::uint32_t rgFlags = 0;         ///< of TriggerFlag
    TASK_TRIGGER_TYPE TriggerType = TASK_TIME_TRIGGER_ONCE;
    TRIGGER_TYPE_UNION Type{};
    std::uint16_t Reserved2 = 0;
    std::uint16_t wRandomMinutesInterval = 0;
};
static_assert(sizeof(TASK_TRIGGER) == 48);

/// The bits of TASK_TRIGGER::rgFlags.
namespace TriggerFlag {
inline constexpr std::uint32_t HasEndDate = 0x1;
inline constexpr std::uint32_t KillAtDurationEnd = 0x2;
inline constexpr std::uint32_t Disabled = 0x4;
} // namespace TriggerFlag

/// The bits of a trigger's masks that stand for a day or a month.
namespace TriggerMask {
inline constexpr std::uint32_t AllWeekdays = 0x7F;        ///< bit 0 is Sunday
inline constexpr std::uint32_t AllMonthDays = 0x7FFFFFFF; ///< bit 0 is the 1st
inline constexpr std::uint32_t AllMonths = 0xFFF;         ///< bit 0 is January
} // namespace TriggerMask

/// The bits of a job's flags, TASK_FLAG_... of the service. GetFlags and SetFlags see PublicMask; the bits
/// above it are the service's own and stay as they are in the file.
namespace TaskFlag {
inline constexpr std::uint32_t Interactive = 0x1;
inline constexpr std::uint32_t DeleteWhenDone = 0x2;
inline constexpr std::uint32_t Disabled = 0x4;
inline constexpr std::uint32_t StartOnlyIfIdle = 0x10;
inline constexpr std::uint32_t KillOnIdleEnd = 0x20;
inline constexpr std::uint32_t DontStartIfOnBatteries = 0x40;
inline constexpr std::uint32_t KillIfGoingOnBatteries = 0x80;
inline constexpr std::uint32_t RunOnlyIfDocked = 0x100;
inline constexpr std::uint32_t Hidden = 0x200;
inline constexpr std::uint32_t RunIfConnectedToInternet = 0x400;
inline constexpr std::uint32_t RestartOnIdleResume = 0x800;
inline constexpr std::uint32_t SystemRequired = 0x1000;
inline constexpr std::uint32_t RunOnlyIfLoggedOn = 0x2000;
inline constexpr std::uint32_t PublicMask = 0xFFFF;
} // namespace TaskFlag

/// The priority classes of processes, ..._PRIORITY_CLASS of the system; a job has exactly one.
namespace PriorityClass {
inline constexpr std::uint32_t Normal = 0x20;
inline constexpr std::uint32_t Idle = 0x40;
inline constexpr std::uint32_t High = 0x80;
inline constexpr std::uint32_t RealTime = 0x100;
} // namespace PriorityClass

/// The pages of a job's property sheet.
enum TASKPAGE : int { TASKPAGE_TASK = 0, TASKPAGE_SCHEDULE = 1, TASKPAGE_SETTINGS = 2 };

/// How many run times one call may ask for.
inline constexpr std::uint16_t TaskMaxRunTimes = 1440;

/// How many triggers a job may have.
inline constexpr std::uint16_t TaskMaxTriggers = 48;

/// A maximum run time, in milliseconds, that never ends.
inline constexpr std::uint32_t UnlimitedRunTime = 0xFFFFFFFF;

/// An identifier of a class or an interface, in the system's layout.
struct TGuid
{
    std::uint32_t Data1 = 0;
    std::uint16_t Data2 = 0, Data3 = 0;
    std::array<std::uint8_t, 8> Data4{};

    bool operator==(const TGuid &) const = default;
};
static_assert(sizeof(TGuid) == 16);

/// The class of jobs and that of the scheduler.
inline constexpr TGuid ClsidTask{
    0x148BD520, 0xA2AB, 0x11CE, {0xB1, 0x1F, 0x00, 0xAA, 0x00, 0x53, 0x05, 0x03}};
inline constexpr TGuid ClsidTaskScheduler{
    0x148BD52A, 0xA2AB, 0x11CE, {0xB1, 0x1F, 0x00, 0xAA, 0x00, 0x53, 0x05, 0x03}};

} // namespace Zelmar01
