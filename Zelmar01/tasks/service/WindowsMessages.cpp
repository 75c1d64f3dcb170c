#include <Zelmar01/tasks/service/WindowsMessages.h>

#include <Zelmar01/tasks/service/Utf16.h>

#include <memory>

#include <windows.h>

namespace Zelmar01 {

std::string SystemMessage(std::uint32_t code, std::uint32_t flags, std::uint32_t language)
{
    wchar_t *buffer = nullptr;
    const auto length = FormatMessageW(flags | FORMAT_MESSAGE_ALLOCATE_BUFFER, nullptr, code, language,
                                       reinterpret_cast<wchar_t *>(&buffer), 0, nullptr);
    const std::unique_ptr<wchar_t, HLOCAL(WINAPI *)(HLOCAL)> text(buffer, LocalFree);
    return length ? Utf8FromUtf16({reinterpret_cast<const char16_t *>(buffer), length}) : std::string();
}

} // namespace Zelmar01
