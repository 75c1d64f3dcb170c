#include <Zelmar01/tasks/service/store/JobSystem.h>

#include <array>
#include <cstdlib>
#include <memory>

#include <windows.h>

namespace Zelmar01 {

namespace {

constexpr DWORD sharePatience = 2000; // milliseconds

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

// Windows refuses to replace or remove a file while another program has it open, if only for a moment to read
// it or to look for viruses; who comes then waits.
template<typename TCall>
bool sharing(TCall call)
{
    const auto start = GetTickCount();
    while (!call()) {
        const auto error = GetLastError();
        if ((error != ERROR_ACCESS_DENIED && error != ERROR_SHARING_VIOLATION) ||
            GetTickCount() - start >= sharePatience) {
            SetLastError(error);
            return false;
        }
        Sleep(2);
    }
    return true;
}

bool fill(THandle &file, std::string_view bytes)
{
    DWORD written = 0;
    return WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) &&
           FlushFileBuffers(file);
}

// Writes a file of a name of its own in `folder`, and moves it to `file`.
TTaskResult writeAndMove(const std::filesystem::path &file, const std::filesystem::path &folder,
                         std::string_view bytes, DWORD moveFlags)
{
    for (int number = 0;; ++number) {
        const auto temporary = folder / (L".zelmar01-" + std::to_wstring(GetCurrentProcessId()) + L'-' +
                                         std::to_wstring(number));
        THandle target(CreateFileW(temporary.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                   FILE_ATTRIBUTE_NORMAL, nullptr));
        if (!target.IsOpen() && GetLastError() == ERROR_FILE_EXISTS)
            continue;
        if (!target.IsOpen())
            return lastResult();
        const bool isFilled = fill(target, bytes);
        auto result = isFilled ? TaskResult::Ok : lastResult();
        target.Close();
        if (isFilled && !sharing([&] {
                return MoveFileExW(temporary.c_str(), file.c_str(), moveFlags | MOVEFILE_WRITE_THROUGH) != 0;
            }))
            result = lastResult();
        if (Failed(result))
            DeleteFileW(temporary.c_str());
        return result == ResultFromSystemError(ERROR_ALREADY_EXISTS) ? TaskResult::FileExists : result;
    }
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
    if (size.QuadPart > LargestFile)
        return TaskResult::InvalidData;
    std::string all(static_cast<std::size_t>(size.QuadPart), '\0');
    DWORD got = 0;
    if (!ReadFile(source, all.data(), static_cast<DWORD>(all.size()), &got, nullptr))
        return lastResult();
    all.resize(got);
    bytes = std::move(all);
    return TaskResult::Ok;
}

TTaskResult ReplaceWholeFile(const std::filesystem::path &file, const std::filesystem::path &folder,
                             std::string_view bytes)
{
    return writeAndMove(file, folder, bytes, MOVEFILE_REPLACE_EXISTING);
}

TTaskResult CreateWholeFile(const std::filesystem::path &file, const std::filesystem::path &folder,
                            std::string_view bytes)
{
    return writeAndMove(file, folder, bytes, 0);
}

TTaskResult RemoveWholeFile(const std::filesystem::path &file)
{
    return sharing([&] { return DeleteFileW(file.c_str()) != 0; }) ? TaskResult::Ok : lastResult();
}

TTaskResult MakePrivateFolder(const std::filesystem::path &folder)
{
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    return error ? ResultFromSystemError(static_cast<std::uint16_t>(error.value())) : TaskResult::Ok;
}

TTaskResult ListFiles(const std::filesystem::path &folder, bool (*accepts)(std::u16string_view name),
                      std::vector<std::u16string> &names)
{
    WIN32_FIND_DATAW entry;
    const std::unique_ptr<void, BOOL(WINAPI *)(HANDLE)> search(
        FindFirstFileExW((folder / "*").c_str(), FindExInfoBasic, &entry, FindExSearchNameMatch, nullptr, 0),
        FindClose);
    if (search.get() == INVALID_HANDLE_VALUE)
        return lastResult();
    names.clear();
    do {
        auto name = textOf(entry.cFileName);
        if (!(entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) && accepts(name))
            names.push_back(std::move(name));
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
