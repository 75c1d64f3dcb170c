#include <Zelmar01/tasks/service/TimeZone.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace Zelmar01 {

namespace {

std::optional<TTimeZone> fromFile(const std::filesystem::path &file)
{
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error))
        return std::nullopt;
    std::ifstream stream(file, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    return TTimeZone::FromZoneFile(bytes);
}

std::filesystem::path zoneFolder()
{
    const char *const folder = std::getenv("TZDIR");
    return folder && *folder ? folder : "/usr/share/zoneinfo";
}

} // namespace

std::optional<TTimeZone> TTimeZone::Named(const std::string &name)
{
    const std::filesystem::path path(name);
    if (name.empty() || path.is_absolute())
        return std::nullopt;
    for (const auto &part : path)
        if (part == "..")
            return std::nullopt;
    return fromFile(zoneFolder() / path);
}

TTimeZone TTimeZone::System()
{
    const char *const variable = std::getenv("TZ");
    if (!variable)
        return fromFile("/etc/localtime").value_or(TTimeZone());
    std::string name = variable;
    if (name.starts_with(':'))
        name.erase(0, 1);
    if (name.starts_with('/'))
        return fromFile(name).value_or(TTimeZone());
    if (auto zone = Named(name))
        return *std::move(zone);
    const auto rule = ParseZoneRule(name);
    return rule ? TTimeZone(rule->StandardOffset, {}, rule) : TTimeZone();
}

} // namespace Zelmar01
