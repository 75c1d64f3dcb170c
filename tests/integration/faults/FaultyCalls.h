#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <string>
#include <thread>

/// What a system call meets.
enum class TFault {
    Refused,      ///< it fails, as it does when a disk is full or broken or a table of the system has no room
    Lasting,      ///< so does every later one
    Short,        ///< a write takes half of its bytes; other calls are made
    DiskFull,     ///< a write takes half, and every later one fails
    Killed,       ///< the process is killed instead
    KilledBehind, ///< the process is killed behind it, in the middle of it if it is a write
};

/// Counts the system calls that this thread makes on files below a folder, on one device, or on all sockets
/// ("socket:"), as long as it lives, and has one of them meet a fault. That holds for what the library does
/// by itself and for what Qt and SQLite do for it.
class FaultyCalls
{
public:
    /// `number` counts from 1; 0 is none of them.
    FaultyCalls(const std::filesystem::path &folder, TFault fault, int number);
    ~FaultyCalls();
    FaultyCalls(const FaultyCalls &) = delete;
    FaultyCalls &operator=(const FaultyCalls &) = delete;

    int Count() const { return m_count; }
    /// The first call that met the fault, such as "write /tmp/x/a.job"; empty when none did.
    const std::string &Met() const { return m_met; }

    // For the calls.
    enum class TAnswer { Make, Refuse, Halve, Kill, KillBehind };
    bool Concerns(const std::string &path) const
    {
        return std::this_thread::get_id() == m_thread && path.starts_with(m_folder);
    }
    TAnswer Answer(const char *call, const std::string &path);

private:
    const std::thread::id m_thread = std::this_thread::get_id();
    const std::string m_folder;
    const TFault m_fault;
    const int m_number;
    int m_count = 0;
    std::string m_met;
};

/// How many files this process has open.
int OpenFiles();

/// Does `work` in a process of its own, which is killed after `life` unless that is a second or more; true
/// when it came to its end.
bool InChild(const std::function<void()> &work, std::chrono::microseconds life = std::chrono::hours(1));
