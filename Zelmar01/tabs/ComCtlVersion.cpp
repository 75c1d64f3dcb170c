#include <Zelmar01/tabs/ComCtlVersion.h>

#ifdef _WIN32
#include <array>
#include <string>
#include <vector>
#include <windows.h>
#endif

namespace Zelmar01 {

#ifdef _WIN32

std::optional<std::uint32_t> ComCtlVersion()
{
    std::array<wchar_t, 311> folder = {};
    const auto length = GetSystemDirectoryW(folder.data(), static_cast<UINT>(folder.size()));
    if (length == 0 || length >= folder.size())
        return std::nullopt;
    const auto path = std::wstring(folder.data(), length) + L"\\ComCtl32.DLL";
    DWORD ignored = 0;
    const auto size = GetFileVersionInfoSizeW(path.c_str(), &ignored);
    std::vector<std::byte> block(size + 1);
    void *found = nullptr;
    UINT foundSize = 0;
    if (size == 0 || !GetFileVersionInfoW(path.c_str(), 0, size, block.data()) ||
        !VerQueryValueW(block.data(), L"\\", &found, &foundSize) || foundSize < sizeof(VS_FIXEDFILEINFO))
        return std::nullopt;
    return static_cast<const VS_FIXEDFILEINFO *>(found)->dwFileVersionMS;
}

#else

std::optional<std::uint32_t> ComCtlVersion()
{
    return std::nullopt;
}

#endif

} // namespace Zelmar01
