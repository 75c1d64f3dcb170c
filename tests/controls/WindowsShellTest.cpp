// Runs on Windows, under Wine: see run_under_wine.py.
#include <Zelmar01/controls/WindowsShell.h>
#include <support/TempFolder.h>

#include <gtest/gtest.h>

#include <windows.h>

#include <array>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <thread>

using namespace Zelmar01;

namespace {

constexpr auto scheme = L"Software\\Classes\\zelmar01test";

void setValue(const std::wstring &key, const wchar_t *name, const std::wstring &value)
{
    RegSetKeyValueW(HKEY_LOCAL_MACHINE, key.c_str(), name, REG_SZ, value.c_str(),
                    static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
}

std::wstring probe()
{
    std::array<wchar_t, MAX_PATH> self{};
    GetModuleFileNameW(nullptr, self.data(), MAX_PATH);
    return (std::filesystem::path(self.data()).parent_path() / "zelmar01_shell_probe.exe").wstring();
}

// What the probe has written. Just after its renaming Windows may still refuse to open the file.
std::string waitFor(const std::filesystem::path &file)
{
    std::string text;
    for (int i = 0; i < 200 && text.empty(); ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        std::ifstream seen(file, std::ios::binary);
        text.assign(std::istreambuf_iterator<char>(seen), {});
    }
    std::error_code none;
    std::filesystem::remove(file, none);
    return text;
}

} // namespace

TEST(WindowsShell, handsTheAddressWholeToTheRegisteredProgram)
{
    if (!std::getenv("ZELMAR01_TEST_PORTS"))
        GTEST_SKIP() << "registers a scheme: to be run by run_under_wine.py";
    const TempFolder folder;
    const auto seen = folder / "seen";
    SetEnvironmentVariableW(L"ZELMAR01_SHELL_SEEN", seen.c_str());
    setValue(scheme, L"", L"URL:test");
    setValue(scheme, L"URL Protocol", L"");
    setValue(std::wstring(scheme) + L"\\shell\\open\\command", L"", L"\"" + probe() + L"\" \"%1\"");

    const struct
    {
        std::u16string Address;
        int ShowState;
    } cases[] = {
        {u"zelmar01test:article?ref=BG-101&page=2", 1},
        {u"zelmar01test:a b | calc ; echo 100% &", 3}, // Wine fills in %NAME%, so there is none here
        {u"zelmar01test:--help", 7},
    };
    for (const auto &one : cases) {
        WindowsShellOpen(one.Address, one.ShowState);
        const std::string address(one.Address.begin(), one.Address.end());
        EXPECT_EQ(waitFor(seen), "1\r\n" + address + "\r\n" + std::to_string(one.ShowState) + "\r\n");
    }
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, scheme);
}

TEST(WindowsShell, staysSilentAboutWhatNothingOpens)
{
    if (!std::getenv("ZELMAR01_TEST_PORTS"))
        GTEST_SKIP() << "to be run by run_under_wine.py";
    WindowsShellOpen(u"no such file \u20AC.nothing", 1);
}
