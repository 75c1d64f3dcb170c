#pragma once

#include <Zelmar01/tasks/service/TaskResults.h>
#include <Zelmar01/tasks/service/store/JobFile.h>
#include <Zelmar01/tasks/service/store/JobSystem.h>

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Zelmar01 {

/// The folder of job files where none was named: that of the variable ZELMAR01_JOBS, else "zelmar01/jobs" in
/// the user's data folder ($XDG_DATA_HOME or ~/.local/share, on Windows %LOCALAPPDATA%).
std::filesystem::path DefaultJobFolder();

/// The file of the job of this name, which may end in ".job" in any letter case: `file` gets an ending where
/// there is none. InvalidArgument for null, an empty name, another ending, a name that leaves no
/// room for the records of its runs (above 250 bytes of UTF-8, on Windows 250 units), and any character that
/// parts a path or controls a terminal.
TTaskResult JobFileName(const char16_t *name, std::u16string &file);

/// Whether a job can have a file of this name.
bool IsJobFileName(std::u16string_view file);

/// A job's name without its ".job".
std::u16string_view JobTitle(std::u16string_view file);

/// A folder of job files. Names of files are looked up in any letter case; the same spelling is preferred
/// where there are several.
///
/// Files are replaced as a whole, so whoever reads them needs no lock. Who reads a file and then writes it
/// holds the lock of the folder meanwhile. What is kept beside the jobs (the lock, a file being written, the
/// records of runs and ticks) is in a subfolder of its own.
class TJobFolder
{
public:
    explicit TJobFolder(std::filesystem::path path);

    const std::filesystem::path &Path() const { return m_path; }
    /// The subfolder beside the jobs.
    std::filesystem::path Side() const;
    std::filesystem::path PathOf(std::u16string_view file) const { return m_path / PathFromText(file); }

    /// Makes the folder where it is missing.
    TTaskResult Create() const;
    /// The names of the job files, in no order.
    TTaskResult Names(std::vector<std::u16string> &names) const;
    /// The name as the folder spells it, into `found`; FileNotFound when there is none.
    TTaskResult Find(std::u16string_view file, std::u16string &found) const;

    /// Reads a job under the name that Find() gave. InvalidName for one that was listed as it looks like and
    /// stands otherwise in the folder, since it is not UTF-8.
    TTaskResult Load(std::u16string_view file, TJob &job) const;
    /// Writes a new job; FileExists when there is a file of this name by now. The caller holds the lock.
    TTaskResult Add(std::u16string_view file, const TJob &job) const;
    /// Writes a job. The caller holds the lock.
    TTaskResult Store(std::u16string_view file, const TJob &job) const;
    TTaskResult Remove(std::u16string_view file) const;

    /// Writes a file of the subfolder. The caller holds the lock.
    TTaskResult StoreSide(const std::filesystem::path &file, std::string_view bytes) const;

private:
    std::filesystem::path m_path;
};

/// The lock of a folder, held as long as this lives, by one process at a time. It is meant for the moment of
/// one change; the result tells when another process has not let go of it for seconds. What a process that
/// was killed in the middle of a change has left half-written goes with the next lock.
class TFolderLock
{
public:
    explicit TFolderLock(const TJobFolder &folder);

    TTaskResult Result() const { return Failed(m_side) ? m_side : m_lock.Result(); }

private:
    TTaskResult m_side;
    TFileLock m_lock;
};

} // namespace Zelmar01
