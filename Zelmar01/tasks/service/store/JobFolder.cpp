#include <Zelmar01/tasks/service/store/JobFolder.h>

#include <Zelmar01/tasks/service/Utf16.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>

namespace Zelmar01 {

namespace {

constexpr std::u16string_view ending = u".job";
constexpr std::u16string_view temporaryPrefix = u".zelmar01-"; // of ReplaceWholeFile and CreateWholeFile
constexpr auto lockPatience = std::chrono::seconds(5);

std::filesystem::path chosenFolder()
{
#ifdef _WIN32
    const wchar_t *const folder = _wgetenv(L"ZELMAR01_JOBS");
#else
    const char *const folder = std::getenv("ZELMAR01_JOBS");
#endif
    return folder ? folder : std::filesystem::path();
}

bool hasEnding(std::u16string_view file)
{
    const auto isSame = [](char16_t c, char16_t lower) {
        return (c >= u'A' && c <= u'Z' ? c - u'A' + u'a' : c) == lower;
    };
    return file.size() >= ending.size() &&
           std::ranges::equal(file.substr(file.size() - ending.size()), ending, isSame);
}

// Whether a name may stand for one of bytes that are not UTF-8.
bool isGarbled(std::u16string_view file)
{
    return file.find(u'\xFFFD') != file.npos;
}

// On Windows a colon would name a part of another file.
constexpr bool hasColons = std::filesystem::path::preferred_separator == '/';

bool isForbidden(char16_t c)
{
    return c < u' ' || c == u'\x7F' || c == u'/' || c == u'\\' || (c == u':' && !hasColons);
}

// The records of a job's runs have its name and an ending of five more bytes.
constexpr std::size_t longestName = 250;

bool hasRoom(std::u16string_view file)
{
#ifdef _WIN32
    return file.size() <= longestName;
#else
    constexpr std::size_t mostBytesAUnit = 3;
    return file.size() <= longestName / mostBytesAUnit || Utf8FromUtf16(file).size() <= longestName;
#endif
}

// What a process that was killed left half-written. Whoever holds the lock is the only one to write there.
void removeLeftovers(const std::filesystem::path &side)
{
    std::error_code error;
    std::filesystem::directory_iterator entry(side, error);
    while (!error && entry != std::filesystem::directory_iterator()) {
        const auto file = entry->path();
        entry.increment(error);
        std::error_code ignored;
        if (file.filename().u16string().starts_with(temporaryPrefix))
            std::filesystem::remove(file, ignored);
    }
}

} // namespace

std::filesystem::path DefaultJobFolder()
{
    std::error_code error;
    const auto folder = chosenFolder();
    return folder.empty() ? UserDataFolder() / "zelmar01" / "jobs" : std::filesystem::absolute(folder, error);
}

TTaskResult JobFileName(const char16_t *name, std::u16string &file)
{
    if (!name)
        return TaskResult::InvalidArgument;
    std::u16string withEnding = name;
    if (withEnding.find(u'.') == withEnding.npos)
        withEnding += ending;
    if (!IsJobFileName(withEnding))
        return TaskResult::InvalidArgument;
    file = std::move(withEnding);
    return TaskResult::Ok;
}

bool IsJobFileName(std::u16string_view file)
{
    return file.size() > ending.size() && hasEnding(file) && std::ranges::none_of(file, isForbidden) &&
           hasRoom(file);
}

std::u16string_view JobTitle(std::u16string_view file)
{
    return hasEnding(file) ? file.substr(0, file.size() - ending.size()) : file;
}

TJobFolder::TJobFolder(std::filesystem::path path) : m_path(std::move(path)) {}

std::filesystem::path TJobFolder::Side() const
{
    return m_path / ".zelmar01";
}

TTaskResult TJobFolder::Create() const
{
    return m_path.empty() ? TaskResult::PathNotFound : MakePrivateFolder(m_path);
}

TTaskResult TJobFolder::Names(std::vector<std::u16string> &names) const
{
    return ListFiles(m_path, IsJobFileName, names);
}

TTaskResult TJobFolder::Find(std::u16string_view file, std::u16string &found) const
{
#ifndef _WIN32
    std::error_code error;
    if (std::filesystem::is_regular_file(PathOf(file), error)) {
        found = file;
        return TaskResult::Ok;
    }
#endif
    std::vector<std::u16string> names;
    if (const auto result = Names(names); Failed(result))
        return result;
    const auto wanted = FoldName(file);
    const auto same = std::ranges::find_if(
        names, [&](const auto &name) { return name.size() == file.size() && FoldName(name) == wanted; });
    if (same == names.end())
        return TaskResult::FileNotFound;
    found = *same;
    return TaskResult::Ok;
}

TTaskResult TJobFolder::Load(std::u16string_view file, TJob &job) const
{
    std::string bytes;
    const auto result = ReadWholeFile(PathOf(file), bytes);
    if (result == TaskResult::FileNotFound && isGarbled(file))
        return TaskResult::InvalidName;
    return Succeeded(result) ? ReadJobFile(bytes, job) : result;
}

TTaskResult TJobFolder::Add(std::u16string_view file, const TJob &job) const
{
    std::string bytes;
    const auto result = WriteJobFile(job, bytes);
    return Succeeded(result) ? CreateWholeFile(PathOf(file), Side(), bytes) : result;
}

TTaskResult TJobFolder::Store(std::u16string_view file, const TJob &job) const
{
    std::string bytes;
    const auto result = WriteJobFile(job, bytes);
    return Succeeded(result) ? ReplaceWholeFile(PathOf(file), Side(), bytes) : result;
}

TTaskResult TJobFolder::Remove(std::u16string_view file) const
{
    return RemoveWholeFile(PathOf(file));
}

TTaskResult TJobFolder::StoreSide(const std::filesystem::path &file, std::string_view bytes) const
{
    return ReplaceWholeFile(file, Side(), bytes);
}

TFolderLock::TFolderLock(const TJobFolder &folder)
    : m_side(MakePrivateFolder(folder.Side())), m_lock(folder.Side() / "lock", lockPatience)
{
    if (Succeeded(Result()))
        removeLeftovers(folder.Side());
}

} // namespace Zelmar01
