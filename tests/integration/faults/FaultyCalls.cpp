#include "FaultyCalls.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <iterator>

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using TAnswer = FaultyCalls::TAnswer;

FaultyCalls *calls = nullptr;

std::string pathOf(int file)
{
    std::array<char, 4096> path{};
    const auto link = "/proc/self/fd/" + std::to_string(file);
    const auto length = syscall(SYS_readlinkat, AT_FDCWD, link.c_str(), path.data(), path.size());
    return length > 0 ? std::string(path.data(), static_cast<std::size_t>(length)) : std::string();
}

// Makes a call by `work`, or has it meet its fault. `half` is the call that takes half.
template<class TWork, class THalf>
auto made(const char *name, const std::string &path, int error, TWork work, THalf half) -> decltype(work())
{
    switch (calls && calls->Concerns(path) ? calls->Answer(name, path) : TAnswer::Make) {
    case TAnswer::Refuse:
        errno = error;
        return -1;
    case TAnswer::Halve:
        return half();
    case TAnswer::KillBehind:
        half();
        [[fallthrough]];
    case TAnswer::Kill:
        kill(getpid(), SIGKILL);
        [[fallthrough]];
    default:
        return work();
    }
}

template<class TWork>
auto made(const char *name, const std::string &path, int error, TWork work)
{
    return made(name, path, error, work, work);
}

int opened(const char *path, int flags, int mode)
{
    return made("open", path, EMFILE,
                [&] { return static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, mode)); });
}

// A write, by a call that takes some of the bytes.
template<class TSome>
ssize_t written(int file, std::size_t count, TSome some)
{
    return made(
        "write", pathOf(file), ENOSPC, [&] { return some(count); }, [&] { return some((count + 1) / 2); });
}

int cut(int file, off_t length)
{
    return made("ftruncate", pathOf(file), EIO,
                [&] { return static_cast<int>(syscall(SYS_ftruncate, file, length)); });
}

int controlled(int file, int command, void *argument)
{
    const auto work = [&] { return static_cast<int>(syscall(SYS_fcntl, file, command, argument)); };
    return command == F_SETLK ? made("lock", pathOf(file), EIO, work) : work();
}

} // namespace

FaultyCalls::FaultyCalls(const std::filesystem::path &folder, TFault fault, int number)
    : m_folder(folder.string()), m_fault(fault), m_number(number)
{
    calls = this;
}

FaultyCalls::~FaultyCalls()
{
    calls = nullptr;
}

FaultyCalls::TAnswer FaultyCalls::Answer(const char *call, const std::string &path)
{
    const bool lasts = m_fault == TFault::Lasting || m_fault == TFault::DiskFull;
    ++m_count;
    if (m_number == 0 || m_count < m_number || (m_count > m_number && !lasts))
        return TAnswer::Make;
    const bool isWrite = std::string_view(call) == "write";
    if (m_fault == TFault::DiskFull && !isWrite)
        return TAnswer::Make;
    const bool isFirst = m_met.empty();
    if (isFirst)
        m_met = call + (' ' + path);
    switch (m_fault) {
    case TFault::Short:
        return TAnswer::Halve;
    case TFault::DiskFull:
        return isFirst ? TAnswer::Halve : TAnswer::Refuse;
    case TFault::Killed:
        return TAnswer::Kill;
    case TFault::KilledBehind:
        return TAnswer::KillBehind;
    default:
        return TAnswer::Refuse;
    }
}

int OpenFiles()
{
    const std::filesystem::directory_iterator files("/proc/self/fd");
    return static_cast<int>(std::distance(begin(files), end(files)));
}

bool InChild(const std::function<void()> &work, std::chrono::microseconds life)
{
    const auto child = fork();
    if (child == 0) {
        work();
        _exit(0);
    }
    if (life < std::chrono::seconds(1)) {
        std::this_thread::sleep_for(life);
        kill(child, SIGKILL);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status);
}

// The calls of the C library that stand in front of its own. Each that has a twin for large files is one with
// it on systems with 64 bits.

extern "C" int open(const char *path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const int mode = va_arg(arguments, int);
    va_end(arguments);
    return opened(path, flags, mode);
}

extern "C" int open64(const char *path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const int mode = va_arg(arguments, int);
    va_end(arguments);
    return opened(path, flags, mode);
}

extern "C" int mkostemp(char *path, int flags)
{
    return made("mkostemp", path, ENOSPC, [&] {
        // That of the C library would make its own way past open().
        static unsigned number = 0;
        const std::string pattern = path;
        int file = -1;
        do {
            std::snprintf(path + pattern.size() - 6, 7, "%06x",
                          ((static_cast<unsigned>(getpid()) << 8U) + number++) & 0xFFFFFFU);
            file = static_cast<int>(
                syscall(SYS_openat, AT_FDCWD, path, flags | O_RDWR | O_CREAT | O_EXCL, 0600));
        } while (file < 0 && errno == EEXIST);
        return file;
    });
}

extern "C" int close(int file)
{
    const auto path = pathOf(file);
    const auto result = static_cast<int>(syscall(SYS_close, file));
    return made("close", path, EIO, [&] { return result; });
}

extern "C" ssize_t read(int file, void *bytes, std::size_t count)
{
    return made("read", pathOf(file), EIO, [&] { return syscall(SYS_read, file, bytes, count); });
}

extern "C" ssize_t pread64(int file, void *bytes, std::size_t count, off64_t offset)
{
    return made("read", pathOf(file), EIO, [&] { return syscall(SYS_pread64, file, bytes, count, offset); });
}

extern "C" ssize_t write(int file, const void *bytes, std::size_t count)
{
    return written(file, count, [&](std::size_t part) { return syscall(SYS_write, file, bytes, part); });
}

extern "C" ssize_t pwrite64(int file, const void *bytes, std::size_t count, off64_t offset)
{
    return written(file, count,
                   [&](std::size_t part) { return syscall(SYS_pwrite64, file, bytes, part, offset); });
}

extern "C" ssize_t recv(int file, void *bytes, std::size_t count, int flags)
{
    return made("recv", pathOf(file), ECONNRESET,
                [&] { return syscall(SYS_recvfrom, file, bytes, count, flags, nullptr, nullptr); });
}

extern "C" ssize_t send(int file, const void *bytes, std::size_t count, int flags)
{
    return made("send", pathOf(file), EPIPE,
                [&] { return syscall(SYS_sendto, file, bytes, count, flags, nullptr, 0); });
}

extern "C" int fsync(int file)
{
    return made("fsync", pathOf(file), EIO, [&] { return static_cast<int>(syscall(SYS_fsync, file)); });
}

extern "C" int fdatasync(int file)
{
    return made("fsync", pathOf(file), EIO, [&] { return static_cast<int>(syscall(SYS_fdatasync, file)); });
}

extern "C" int ftruncate(int file, off_t length) noexcept
{
    return cut(file, length);
}

extern "C" int ftruncate64(int file, off64_t length) noexcept
{
    return cut(file, length);
}

extern "C" int rename(const char *from, const char *to) noexcept
{
    return made("rename", to, EACCES,
                [&] { return static_cast<int>(syscall(SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, 0)); });
}

extern "C" int renameat2(int fromFolder, const char *from, int toFolder, const char *to,
                         unsigned flags) noexcept
{
    return made("rename", to, EACCES, [&] {
        return static_cast<int>(syscall(SYS_renameat2, fromFolder, from, toFolder, to, flags));
    });
}

extern "C" int unlink(const char *path) noexcept
{
    return made("unlink", path, EACCES,
                [&] { return static_cast<int>(syscall(SYS_unlinkat, AT_FDCWD, path, 0)); });
}

extern "C" int mkdir(const char *path, mode_t mode) noexcept
{
    return made("mkdir", path, ENOSPC,
                [&] { return static_cast<int>(syscall(SYS_mkdirat, AT_FDCWD, path, mode)); });
}

extern "C" int flock(int file, int operation) noexcept
{
    return made("lock", pathOf(file), ENOLCK,
                [&] { return static_cast<int>(syscall(SYS_flock, file, operation)); });
}

extern "C" int fcntl(int file, int command, ...)
{
    va_list arguments;
    va_start(arguments, command);
    void *argument = va_arg(arguments, void *);
    va_end(arguments);
    return controlled(file, command, argument);
}

extern "C" int fcntl64(int file, int command, ...)
{
    va_list arguments;
    va_start(arguments, command);
    void *argument = va_arg(arguments, void *);
    va_end(arguments);
    return controlled(file, command, argument);
}
