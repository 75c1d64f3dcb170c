#include <Zelmar01/tasks/service/store/PowerSupply.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace Zelmar01 {

namespace {

std::string firstWord(const std::filesystem::path &file)
{
    std::string word;
    std::ifstream(file) >> word;
    return word;
}

} // namespace

bool IsOnBattery()
{
    const char *const chosen = std::getenv("ZELMAR01_POWER_SUPPLY");
    const std::filesystem::path folder = chosen ? chosen : "/sys/class/power_supply";
    std::error_code error;
    bool isDischarging = false;
    for (std::filesystem::directory_iterator supply(folder, error), end; !error && supply != end;
         supply.increment(error)) {
        const auto &path = supply->path();
        if (firstWord(path / "type") != "Battery") {
            if (firstWord(path / "online") == "1")
                return false;
        } else if (firstWord(path / "scope") != "Device") { // such as that of a mouse
            isDischarging = isDischarging || firstWord(path / "status") == "Discharging";
        }
    }
    return isDischarging;
}

} // namespace Zelmar01
