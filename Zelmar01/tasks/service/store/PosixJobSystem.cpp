#include <Zelmar01/tasks/service/store/JobSystem.h>

#include <Zelmar01/tasks/service/Utf16.h>
#include <Zelmar01/tasks/service/store/PosixResult.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cwctype>
#include <memory>
#include <string>
#include <thread>
#include <utility>

#include <dirent.h>
#include <fcntl.h>
#include <locale.h>
#include <pwd.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Zelmar01 {

namespace {

constexpr mode_t privateFile = 0600, privateFolder = 0700;

class TDescriptor
{
public:
    explicit TDescriptor(int file) : m_file(file) {}
    ~TDescriptor()
    {
        if (m_file >= 0)
            close(m_file);
    }
    TDescriptor(const TDescriptor &) = delete;
    TDescriptor &operator=(const TDescriptor &) = delete;

    operator int() const { return m_file; }
    int Close() { return close(std::exchange(m_file, -1)); }

private:
    int m_file;
};

// Calls again what a signal broke off.
template<class TCall>
auto retried(TCall call)
{
    auto result = call();
    while (result < 0 && errno == EINTR)
        result = call();
    return result;
}

TDescriptor openFile(const std::filesystem::path &file, int flags)
{
    return TDescriptor(retried([&] { return open(file.c_str(), flags | O_CLOEXEC, privateFile); }));
}

bool writeAll(int file, std::string_view bytes)
{
    while (!bytes.empty()) {
        const auto written = retried([&] { return write(file, bytes.data(), bytes.size()); });
        if (written < 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

// Some file systems cannot do it for a folder, and lose nothing by that.
bool syncFolder(const std::filesystem::path &folder)
{
    const auto file = openFile(folder, O_RDONLY | O_DIRECTORY);
    return file >= 0 && (fsync(file) == 0 || errno == EINVAL || errno == ENOTSUP);
}

bool isRegular(int folder, const dirent &entry)
{
    struct stat status = {};
    return entry.d_type == DT_REG ||
           ((entry.d_type == DT_UNKNOWN || entry.d_type == DT_LNK) &&
            fstatat(folder, entry.d_name, &status, 0) == 0 && S_ISREG(status.st_mode));
}

// Writes what shall be there after a loss of power, too.
bool fill(TDescriptor &file, std::string_view bytes)
{
    return writeAll(file, bytes) && fsync(file) == 0 && file.Close() == 0;
}

// Gives a file another name that no file has.
bool moveToFreeName(const char *from, const char *to)
{
#ifdef __linux__
    if (renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_NOREPLACE) == 0)
        return true;
    if (errno != EINVAL && errno != ENOSYS)
        return false;
#endif
    return link(from, to) == 0 && unlink(from) == 0;
}

// Writes a file of a name of its own in `folder`, which `move` then makes `file` of.
TTaskResult writeAndMove(const std::filesystem::path &file, const std::filesystem::path &folder,
                         std::string_view bytes, bool (*move)(const char *from, const char *to))
{
    std::string temporary = folder / ".zelmar01-XXXXXX";
    TDescriptor target(mkostemp(temporary.data(), O_CLOEXEC));
    if (target < 0)
        return ResultFromErrno(errno, TaskResult::WriteFault);
    if (!fill(target, bytes) || !move(temporary.c_str(), file.c_str())) {
        const auto result = ResultFromErrno(errno, TaskResult::WriteFault);
        unlink(temporary.c_str());
        return result;
    }
    return syncFolder(file.parent_path()) ? TaskResult::Ok : ResultFromErrno(errno, TaskResult::WriteFault);
}

const char *variable(const char *name)
{
    const char *const value = std::getenv(name);
    return value ? value : "";
}

// What getpwuid_r and its like need beside their answer.
struct TAccount
{
    passwd Entry{};
    std::array<char, 16384> Buffer{};
    passwd *Found = nullptr;
};

} // namespace

TTaskResult ResultFromErrno(int error, TTaskResult other)
{
    switch (error) {
    case ENOENT:
        return TaskResult::FileNotFound;
    case ENOTDIR:
        return TaskResult::PathNotFound;
    case EEXIST:
        return TaskResult::FileExists;
    case EACCES:
    case EPERM:
    case EROFS:
        return TaskResult::AccessDenied;
    case ENOSPC:
    case EDQUOT:
        return TaskResult::DiskFull;
    case ENOMEM:
        return TaskResult::OutOfMemory;
    case ENAMETOOLONG:
    case EINVAL:
        return TaskResult::InvalidArgument;
    default:
        return other;
    }
}

TTaskResult ReadWholeFile(const std::filesystem::path &file, std::string &bytes)
{
    // A pipe in the place of a file must not make its reader wait.
    const auto source = openFile(file, O_RDONLY | O_NONBLOCK);
    struct stat status = {};
    if (source < 0 || fstat(source, &status) != 0)
        return ResultFromErrno(errno, TaskResult::ReadFault);
    if (!S_ISREG(status.st_mode) || status.st_size > LargestFile)
        return TaskResult::InvalidData;
    std::string all(static_cast<std::size_t>(status.st_size), '\0');
    std::size_t length = 0;
    while (length < all.size()) {
        const auto got = retried([&] { return read(source, all.data() + length, all.size() - length); });
        if (got < 0)
            return ResultFromErrno(errno, TaskResult::ReadFault);
        if (got == 0)
            break;
        length += static_cast<std::size_t>(got);
    }
    all.resize(length);
    bytes = std::move(all);
    return TaskResult::Ok;
}

TTaskResult ReplaceWholeFile(const std::filesystem::path &file, const std::filesystem::path &folder,
                             std::string_view bytes)
{
    return writeAndMove(file, folder, bytes,
                        [](const char *from, const char *to) { return rename(from, to) == 0; });
}

TTaskResult CreateWholeFile(const std::filesystem::path &file, const std::filesystem::path &folder,
                            std::string_view bytes)
{
    return writeAndMove(file, folder, bytes, moveToFreeName);
}

TTaskResult RemoveWholeFile(const std::filesystem::path &file)
{
    return unlink(file.c_str()) == 0 && syncFolder(file.parent_path())
               ? TaskResult::Ok
               : ResultFromErrno(errno, TaskResult::WriteFault);
}

TTaskResult MakePrivateFolder(const std::filesystem::path &folder)
{
    if (mkdir(folder.c_str(), privateFolder) == 0)
        return TaskResult::Ok;
    if (errno == ENOENT && folder.has_relative_path()) {
        if (const auto result = MakePrivateFolder(folder.parent_path()); Failed(result))
            return result;
        if (mkdir(folder.c_str(), privateFolder) == 0)
            return TaskResult::Ok;
    }
    if (errno != EEXIST)
        return ResultFromErrno(errno);
    struct stat status = {};
    return stat(folder.c_str(), &status) == 0 && S_ISDIR(status.st_mode) ? TaskResult::Ok
                                                                         : TaskResult::PathNotFound;
}

TTaskResult ListFiles(const std::filesystem::path &folder, bool (*accepts)(std::u16string_view name),
                      std::vector<std::u16string> &names)
{
    const std::unique_ptr<DIR, int (*)(DIR *)> listing(opendir(folder.c_str()), closedir);
    if (!listing)
        return ResultFromErrno(errno, TaskResult::ReadFault);
    names.clear();
    errno = 0;
    while (const dirent *const entry = readdir(listing.get())) {
        if (auto name = Utf16FromUtf8(entry->d_name);
            accepts(name) && isRegular(dirfd(listing.get()), *entry))
            names.push_back(std::move(name));
        errno = 0;
    }
    return errno == 0 ? TaskResult::Ok : ResultFromErrno(errno, TaskResult::ReadFault);
}

TFileLock::TFileLock(const std::filesystem::path &file, std::chrono::milliseconds patience)
    : m_result(TaskResult::Ok)
{
    using TClock = std::chrono::steady_clock;
    const auto deadline = TClock::now() + patience;
    m_file = retried([&] { return open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, privateFile); });
    if (m_file < 0) {
        m_result = ResultFromErrno(errno);
        return;
    }
    while (flock(static_cast<int>(m_file), LOCK_EX | LOCK_NB) != 0) {
        if ((errno != EWOULDBLOCK && errno != EINTR) || TClock::now() >= deadline) {
            m_result = errno == EWOULDBLOCK ? TaskResult::SharingViolation : ResultFromErrno(errno);
            return;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
}

TFileLock::~TFileLock()
{
    if (m_file >= 0)
        close(static_cast<int>(m_file));
}

std::u16string FoldName(std::u16string_view name)
{
    struct TLetters
    {
        locale_t Locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    };
    static const TLetters letters;
    std::u16string folded(name);
    for (auto &c : folded) {
        const auto wide = static_cast<std::wint_t>(c);
        const auto upper = letters.Locale ? towupper_l(wide, letters.Locale) : std::towupper(wide);
        if (upper < 0x10000)
            c = static_cast<char16_t>(upper);
    }
    return folded;
}

std::filesystem::path PathFromText(std::u16string_view text)
{
    return Utf8FromUtf16(text);
}

std::u16string TextFromPath(const std::filesystem::path &path)
{
    return Utf16FromUtf8(path.native());
}

std::filesystem::path UserDataFolder()
{
    if (std::filesystem::path data = variable("XDG_DATA_HOME"); data.is_absolute())
        return data;
    std::filesystem::path home = variable("HOME");
    if (home.empty()) {
        TAccount account;
        getpwuid_r(geteuid(), &account.Entry, account.Buffer.data(), account.Buffer.size(), &account.Found);
        if (account.Found)
            home = account.Found->pw_dir;
    }
    return home.empty() ? home : home / ".local/share";
}

std::optional<std::filesystem::path> SearchProgram(std::u16string_view name)
{
    const auto file = Utf8FromUtf16(name);
    if (file.empty() || file.find('/') != file.npos)
        return std::nullopt;
    const std::string folders = variable("PATH");
    for (std::size_t begin = 0; begin <= folders.size();) {
        const auto end = std::min(folders.find(':', begin), folders.size());
        const std::filesystem::path folder = folders.substr(begin, end - begin);
        struct stat status = {};
        const auto program = folder / file;
        if (folder.is_absolute() && stat(program.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
            access(program.c_str(), X_OK) == 0)
            return program;
        begin = end + 1;
    }
    return std::nullopt;
}

std::u16string ComputerName()
{
    std::array<char, 256> name{};
    return gethostname(name.data(), name.size() - 1) == 0 ? Utf16FromUtf8(name.data()) : std::u16string();
}

std::u16string UserAccount()
{
    TAccount account;
    getpwuid_r(geteuid(), &account.Entry, account.Buffer.data(), account.Buffer.size(), &account.Found);
    return Utf16FromUtf8(account.Found ? account.Found->pw_name : std::to_string(geteuid()));
}

bool AccountExists(std::u16string_view name)
{
    TAccount account;
    getpwnam_r(Utf8FromUtf16(name).c_str(), &account.Entry, account.Buffer.data(), account.Buffer.size(),
               &account.Found);
    return account.Found != nullptr;
}

} // namespace Zelmar01
