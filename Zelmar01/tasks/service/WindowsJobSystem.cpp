#include <Zelmar01/tasks/service/JobSystem.h>

#include <array>
#include <cstdlib>
#include <memory>

#include <windows.h>

namespace Zelmar01 {

namespace {

constexpr LONGLONG largestJobFile = 8 << 20;

class THandle
{
public:
    explicit THandle(HANDLE handle) : m_handle(handle) {}
    ~THandle() { Close(); }
    THandle(const THandle &) = delete;
    THandle &operator=(const THandle &) = delete;

    operator HANDLE() const { return m_handle; }
    bool IsOpen() const { return m_handle != INVALID_HANDLE_VALUE; }
    void Close()
    {
        if (IsOpen())
            CloseHandle(m_handle);
        m_handle = INVALID_HANDLE_VALUE;
    }

private:
    HANDLE m_handle;
};

TTaskResult lastResult()
{
    return ResultFromSystemError(static_cast<std::uint16_t>(GetLastError()));
}

std::u16string textOf(const wchar_t *text)
{
    return reinterpret_cast<const char16_t *>(text);
}

std::wstring wideOf(std::u16string_view text)
{
    return {text.begin(), text.end()};
}

} // namespace

TTaskResult ReadWholeFile(const std::filesystem::path &file, std::string &bytes)
{
    const THandle source(CreateFileW(file.c_str(), GENERIC_READ,
                                     FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                     OPEN_EXISTING, 0, nullptr));
    LARGE_INTEGER size;
    if (!source.IsOpen() || !GetFileSizeEx(source, &size))
        return lastResult();
    if (size.QuadPart > largestJobFile)
        return TaskResult::InvalidData;
    std::string all(static_cast<std::size_t>(size.QuadPart), '\0');
    DWORD got = 0;
    if (!ReadFile(source, all.data(), static_cast<DWORD>(all.size()), &got, nullptr))
        return lastResult();
    all.resize(got);
    bytes = std::move(all);
    return TaskResult::Ok;
}

TTaskResult ReplaceWholeFile(const std::filesystem::path &file, const std::filesystem::path &temporary,
                             std::string_view bytes)
{
    THandle target(CreateFileW(temporary.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                               FILE_ATTRIBUTE_NORMAL, nullptr));
    DWORD written = 0;
    bool replaced = target.IsOpen() &&
                    WriteFile(target, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) &&
                    FlushFileBuffers(target);
    const auto writeResult = lastResult();
    target.Close();
    if (replaced &&
        MoveFileExW(temporary.c_str(), file.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
        return TaskResult::Ok;
    const auto result = replaced ? lastResult() : writeResult;
    DeleteFileW(temporary.c_str());
    return result;
}

TTaskResult RemoveWholeFile(const std::filesystem::path &file)
{
    return DeleteFileW(file.c_str()) ? TaskResult::Ok : lastResult();
}

TTaskResult MakePrivateFolder(const std::filesystem::path &folder)
{
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    return error ? ResultFromSystemError(static_cast<std::uint16_t>(error.value())) : TaskResult::Ok;
}

TTaskResult ListJobFiles(const std::filesystem::path &folder, std::vector<std::u16string> &names)
{
    WIN32_FIND_DATAW entry;
    const std::unique_ptr<void, BOOL(WINAPI *)(HANDLE)> search(
        FindFirstFileExW((folder / "*.job").c_str(), FindExInfoBasic, &entry, FindExSearchNameMatch, nullptr,
                         0),
        FindClose);
    if (search.get() == INVALID_HANDLE_VALUE) {
        const auto result = lastResult();
        if (result != TaskResult::FileNotFound)
            return result;
        names.clear();
        return TaskResult::Ok;
    }
    names.clear();
    do {
        const std::wstring_view name = entry.cFileName;
        // The pattern also finds ".jobs" where short names are kept.
        if (!(entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) && name.size() >= 4 &&
            _wcsicmp(name.data() + name.size() - 4, L".job") == 0)
            names.push_back(textOf(entry.cFileName));
    } while (FindNextFileW(search.get(), &entry));
    return GetLastError() == ERROR_NO_MORE_FILES ? TaskResult::Ok : lastResult();
}

TFileLock::TFileLock(const std::filesystem::path &file, std::chrono::milliseconds patience)
    : m_result(TaskResult::Ok)
{
    using TClock = std::chrono::steady_clock;
    const auto deadline = TClock::now() + patience;
    const HANDLE handle =
        CreateFileW(file.c_str(), GENERIC_READ | GENERIC_WRITE,
                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_ALWAYS, 0, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        m_result = lastResult();
        return;
    }
    m_file = reinterpret_cast<std::intptr_t>(handle);
    OVERLAPPED start = {};
    while (!LockFileEx(handle, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &start)) {
        const auto error = GetLastError();
        if (error != ERROR_LOCK_VIOLATION && error != ERROR_IO_PENDING) {
            m_result = lastResult();
            return;
        }
        if (TClock::now() >= deadline) {
            m_result = TaskResult::SharingViolation;
            return;
        }
        Sleep(2);
    }
}

TFileLock::~TFileLock()
{
    if (m_file != -1)
        CloseHandle(reinterpret_cast<HANDLE>(m_file));
}

std::u16string FoldName(std::u16string_view name)
{
    auto wide = wideOf(name);
    const auto length = static_cast<int>(wide.size());
    LCMapStringW(LOCALE_INVARIANT, LCMAP_UPPERCASE, wide.data(), length, wide.data(), length);
    return {wide.begin(), wide.end()};
}

std::filesystem::path PathFromText(std::u16string_view text)
{
    return wideOf(text);
}

std::u16string TextFromPath(const std::filesystem::path &path)
{
    return textOf(path.c_str());
}

std::filesystem::path UserDataFolder()
{
    const wchar_t *const folder = _wgetenv(L"LOCALAPPDATA");
    return folder ? folder : L"";
}

std::optional<std::filesystem::path> SearchProgram(std::u16string_view name)
{
    std::array<wchar_t, 32768> found;
    const auto length = SearchPathW(nullptr, wideOf(name).c_str(), L".exe", static_cast<DWORD>(found.size()),
                                    found.data(), nullptr);
    if (length == 0 || length >= found.size())
        return std::nullopt;
    return std::filesystem::path(found.data());
}

std::u16string ComputerName()
{
    std::array<wchar_t, 256> name{};
    auto length = static_cast<DWORD>(name.size());
    return GetComputerNameW(name.data(), &length) ? textOf(name.data()) : std::u16string();
}

std::u16string UserAccount()
{
    std::array<wchar_t, 257> name{};
    auto length = static_cast<DWORD>(name.size());
    return GetUserNameW(name.data(), &length) ? textOf(name.data()) : std::u16string();
}

bool AccountExists(std::u16string_view name)
{
    std::array<std::byte, 128> sid;
    std::array<wchar_t, 257> domain;
    auto sidSize = static_cast<DWORD>(sid.size()), domainSize = static_cast<DWORD>(domain.size());
    SID_NAME_USE use;
    return LookupAccountNameW(nullptr, wideOf(name).c_str(), sid.data(), &sidSize, domain.data(), &domainSize,
                              &use) != 0;
}

} // namespace Zelmar01
