#include <Zelmar01/core/ApplicationDirectory.h>

#ifdef _WIN32
#include <string>
#include <windows.h>
#endif

namespace Zelmar01 {

namespace {

std::filesystem::path &chosenDirectory()
{
    static std::filesystem::path directory;
    return directory;
}

std::filesystem::path executable()
{
#ifdef _WIN32
    std::wstring name(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size()));
        if (length < name.size())
            return name.substr(0, length);
        name.resize(name.size() * 2);
    }
#else
    std::error_code none;
    return std::filesystem::read_symlink("/proc/self/exe", none);
#endif
}

} // namespace

std::filesystem::path ApplicationDirectory()
{
    if (!chosenDirectory().empty())
        return chosenDirectory();
    const auto directory = executable().parent_path();
    std::error_code none;
    return directory.empty() ? std::filesystem::current_path(none) : directory;
}

void SetApplicationDirectory(std::filesystem::path directory)
{
    chosenDirectory() = std::move(directory);
}

} // namespace Zelmar01
