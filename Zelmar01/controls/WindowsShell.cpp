#include <Zelmar01/controls/WindowsShell.h>

#include <windows.h>

#include <shellapi.h>

namespace Zelmar01 {

void WindowsShellOpen(const std::u16string &address, int showState)
{
    const std::wstring wide(address.begin(), address.end());
    ShellExecuteW(GetDesktopWindow(), L"open", wide.c_str(), nullptr, nullptr, showState);
}

} // namespace Zelmar01
