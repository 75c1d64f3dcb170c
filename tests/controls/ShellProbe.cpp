// The program that WindowsShellTest registers for its scheme: writes down how it was called.
#include <windows.h>

#include <cstdlib>
#include <fstream>
#include <string>

int main(int argc, char **argv)
{
    STARTUPINFOW startup{};
    GetStartupInfoW(&startup);
    const bool isGiven = (startup.dwFlags & STARTF_USESHOWWINDOW) != 0;
    const std::string name = std::getenv("ZELMAR01_SHELL_SEEN");
    {
        std::ofstream seen(name + ".new");
        seen << argc - 1 << '\n'
             << (argc > 1 ? argv[1] : "") << '\n'
             << (isGiven ? startup.wShowWindow : 0xFFFF) << '\n';
    }
    return std::rename((name + ".new").c_str(), name.c_str());
}
