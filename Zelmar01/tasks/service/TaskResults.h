#pragma once

#include <cstdint>
#include <string>

namespace Zelmar01 {

/// What an operation of the task service answers: below 0 it failed. The values are the service's HRESULTs.
using TTaskResult = std::int32_t;

constexpr bool Succeeded(TTaskResult result)
{
    return result >= 0;
}

constexpr bool Failed(TTaskResult result)
{
    return result < 0;
}

/// A result code written as people know it, 0x80041309.
constexpr TTaskResult ResultOf(std::uint32_t code)
{
    return static_cast<TTaskResult>(code);
}

/// The failure that a system error number stands for, such as 80 ("the file exists") for 0x80070050.
constexpr TTaskResult ResultFromSystemError(std::uint16_t number)
{
    return ResultOf(0x80070000U | number);
}

/// The result codes. The comments give the service's own names, which are macros on Windows.
namespace TaskResult {
inline constexpr TTaskResult Ok = 0;    // S_OK
inline constexpr TTaskResult False = 1; // S_FALSE

// How things are with a job.
inline constexpr TTaskResult TaskReady = 0x00041300;           // SCHED_S_TASK_READY
inline constexpr TTaskResult TaskRunning = 0x00041301;         // SCHED_S_TASK_RUNNING
inline constexpr TTaskResult TaskDisabled = 0x00041302;        // SCHED_S_TASK_DISABLED
inline constexpr TTaskResult TaskHasNotRun = 0x00041303;       // SCHED_S_TASK_HAS_NOT_RUN
inline constexpr TTaskResult TaskNoMoreRuns = 0x00041304;      // SCHED_S_TASK_NO_MORE_RUNS
inline constexpr TTaskResult TaskNotScheduled = 0x00041305;    // SCHED_S_TASK_NOT_SCHEDULED
inline constexpr TTaskResult TaskTerminated = 0x00041306;      // SCHED_S_TASK_TERMINATED
inline constexpr TTaskResult TaskNoValidTriggers = 0x00041307; // SCHED_S_TASK_NO_VALID_TRIGGERS
inline constexpr TTaskResult EventTrigger = 0x00041308;        // SCHED_S_EVENT_TRIGGER

// Failures of the service.
inline constexpr TTaskResult TriggerNotFound = ResultOf(0x80041309);     // SCHED_E_TRIGGER_NOT_FOUND
inline constexpr TTaskResult TaskNotReady = ResultOf(0x8004130A);        // SCHED_E_TASK_NOT_READY
inline constexpr TTaskResult TaskNotRunning = ResultOf(0x8004130B);      // SCHED_E_TASK_NOT_RUNNING
inline constexpr TTaskResult ServiceNotInstalled = ResultOf(0x8004130C); // SCHED_E_SERVICE_NOT_INSTALLED
inline constexpr TTaskResult CannotOpenTask = ResultOf(0x8004130D);      // SCHED_E_CANNOT_OPEN_TASK
inline constexpr TTaskResult InvalidTask = ResultOf(0x8004130E);         // SCHED_E_INVALID_TASK
inline constexpr TTaskResult AccountInformationNotSet =
    ResultOf(0x8004130F); // SCHED_E_ACCOUNT_INFORMATION_NOT_SET
inline constexpr TTaskResult AccountNameNotFound = ResultOf(0x80041310);  // SCHED_E_ACCOUNT_NAME_NOT_FOUND
inline constexpr TTaskResult AccountDbaseCorrupt = ResultOf(0x80041311);  // SCHED_E_ACCOUNT_DBASE_CORRUPT
inline constexpr TTaskResult NoSecurityServices = ResultOf(0x80041312);   // SCHED_E_NO_SECURITY_SERVICES
inline constexpr TTaskResult UnknownObjectVersion = ResultOf(0x80041313); // SCHED_E_UNKNOWN_OBJECT_VERSION
inline constexpr TTaskResult UnsupportedAccountOption =
    ResultOf(0x80041314);                                              // SCHED_E_UNSUPPORTED_ACCOUNT_OPTION
inline constexpr TTaskResult ServiceNotRunning = ResultOf(0x80041315); // SCHED_E_SERVICE_NOT_RUNNING
inline constexpr TTaskResult AlreadyRunning = ResultOf(0x8004131F);    // SCHED_E_ALREADY_RUNNING

// Failures of any object.
inline constexpr TTaskResult NotImplemented = ResultOf(0x80004001);      // E_NOTIMPL
inline constexpr TTaskResult NoInterface = ResultOf(0x80004002);         // E_NOINTERFACE
inline constexpr TTaskResult Pointer = ResultOf(0x80004003);             // E_POINTER
inline constexpr TTaskResult Fail = ResultOf(0x80004005);                // E_FAIL
inline constexpr TTaskResult Unexpected = ResultOf(0x8000FFFF);          // E_UNEXPECTED
inline constexpr TTaskResult NotFileBasedStorage = ResultOf(0x80030107); // STG_E_NOTFILEBASEDSTORAGE
inline constexpr TTaskResult ClassNotAvailable = ResultOf(0x80040111);   // CLASS_E_CLASSNOTAVAILABLE
inline constexpr TTaskResult ClassNotRegistered = ResultOf(0x80040154);  // REGDB_E_CLASSNOTREG

// System errors in the same form.
inline constexpr TTaskResult FileNotFound = ResultFromSystemError(2); // ERROR_FILE_NOT_FOUND
inline constexpr TTaskResult PathNotFound = ResultFromSystemError(3); // ERROR_PATH_NOT_FOUND
inline constexpr TTaskResult AccessDenied = ResultFromSystemError(5); // E_ACCESSDENIED
inline constexpr TTaskResult InvalidData =
    ResultFromSystemError(13); // ERROR_INVALID_DATA: a damaged job file
inline constexpr TTaskResult OutOfMemory = ResultFromSystemError(14);      // E_OUTOFMEMORY
inline constexpr TTaskResult WriteFault = ResultFromSystemError(29);       // ERROR_WRITE_FAULT
inline constexpr TTaskResult ReadFault = ResultFromSystemError(30);        // ERROR_READ_FAULT
inline constexpr TTaskResult SharingViolation = ResultFromSystemError(32); // ERROR_SHARING_VIOLATION
inline constexpr TTaskResult HandleEndOfFile =
    ResultFromSystemError(38); // ERROR_HANDLE_EOF: a truncated job file
inline constexpr TTaskResult NotSupported = ResultFromSystemError(50);    // ERROR_NOT_SUPPORTED
inline constexpr TTaskResult BadNetPath = ResultFromSystemError(53);      // ERROR_BAD_NETPATH
inline constexpr TTaskResult FileExists = ResultFromSystemError(80);      // ERROR_FILE_EXISTS
inline constexpr TTaskResult InvalidArgument = ResultFromSystemError(87); // E_INVALIDARG
inline constexpr TTaskResult DiskFull = ResultFromSystemError(112);       // ERROR_DISK_FULL
inline constexpr TTaskResult InvalidName = ResultFromSystemError(123);    // ERROR_INVALID_NAME
} // namespace TaskResult

/// The service's name of a result code, such as "SCHED_E_TRIGGER_NOT_FOUND"; for any other "0x80012345".
std::string ResultName(TTaskResult result);

/// What a result code says to a person, in French, in UTF-8; empty for one that is not in the table.
std::string ResultText(TTaskResult result);

} // namespace Zelmar01
