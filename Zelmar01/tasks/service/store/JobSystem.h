#pragma once

#include <Zelmar01/tasks/service/TaskResults.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Zelmar01 {

/// What the job store needs of the operating system beyond the standard library. A failure is the system's
/// error number as a result code.

/// No job file, and nothing else that the store reads, is larger.
inline constexpr std::int64_t LargestFile = 8 << 20;

/// Reads a regular file. One above LargestFile is refused with InvalidData.
TTaskResult ReadWholeFile(const std::filesystem::path &file, std::string &bytes);

/// Replaces `file` in one step, so that whoever reads it sees the old bytes or the new ones, also after the
/// power failed. They are first written to a file of a name of its own in `folder`, which is in the same file
/// system; the name begins with ".zelmar01-". Only this user can read the new file.
TTaskResult ReplaceWholeFile(const std::filesystem::path &file, const std::filesystem::path &folder,
                             std::string_view bytes);

/// The same for a new file: FileExists when there is one of this name by then, which is left alone.
TTaskResult CreateWholeFile(const std::filesystem::path &file, const std::filesystem::path &folder,
                            std::string_view bytes);

TTaskResult RemoveWholeFile(const std::filesystem::path &file);

/// Makes a folder and those above it, which only this user can enter; one that is there stays as it is.
TTaskResult MakePrivateFolder(const std::filesystem::path &folder);

/// The names of the regular files of a folder that `accepts` takes, in no order.
TTaskResult ListFiles(const std::filesystem::path &folder, bool (*accepts)(std::u16string_view name),
                      std::vector<std::u16string> &names);

/// A lock that other processes see, too. It is held as long as this lives.
class TFileLock
{
public:
    /// Waits for `patience` at most, then it is not held and the result is SharingViolation. The file is made
    /// where it is missing.
    TFileLock(const std::filesystem::path &file, std::chrono::milliseconds patience);
    ~TFileLock();
    TFileLock(const TFileLock &) = delete;
    TFileLock &operator=(const TFileLock &) = delete;

    TTaskResult Result() const { return m_result; }

private:
    std::intptr_t m_file = -1;
    TTaskResult m_result;
};

/// A name with its letters in one case, for comparing names as file systems that ignore the case do: UTF-16
/// unit by unit, whatever the user's language is.
std::u16string FoldName(std::u16string_view name);

std::filesystem::path PathFromText(std::u16string_view text);
std::u16string TextFromPath(const std::filesystem::path &path);

/// The folder for this user's data of applications; empty when the system does not say.
std::filesystem::path UserDataFolder();

/// The file of a program that is named without a folder, as the system looks for one; none when it is not
/// found.
std::optional<std::filesystem::path> SearchProgram(std::u16string_view name);

/// The name of this computer, which may have a domain behind a period.
std::u16string ComputerName();

/// The account that this process runs under; `exists` tells of any other one.
std::u16string UserAccount();
bool AccountExists(std::u16string_view account);

} // namespace Zelmar01
