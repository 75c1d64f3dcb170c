#pragma once

#include <support/TempFolder.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

/// A change of what is kept in a folder, by the library.
struct TChange
{
    using TFolder = std::filesystem::path;

    std::string Name;
    /// Makes what is there before.
    std::function<void(const TFolder &)> Prepare;
    /// Makes the change; returns what was said of its failure, nothing when it was made.
    std::function<std::string(const TFolder &)> Make;
    /// What is there, read as a program that starts reads it; begins with "error" when it cannot be read.
    std::function<std::string(const TFolder &)> Read;
    /// Whether something else than the old or the new state may be there, given as `now`, of which a reload
    /// makes no wrong use.
    std::function<bool(const std::string &before, const std::string &after, const std::string &now)> Allows =
        [](const auto &, const auto &, const auto &) { return false; };
    /// Whether it can be made again where it was made already.
    bool MayBeRepeated = true;
};

inline void PrintTo(const TChange &change, std::ostream *to)
{
    *to << change.Name;
}

/// The changes of the code file, of the cache files and of the job folder.
std::vector<TChange> FileChanges();

/// The name of a test of a change.
inline std::string NameOfChange(const testing::TestParamInfo<TChange> &change)
{
    auto name = change.param.Name;
    std::replace(name.begin(), name.end(), ' ', '_');
    return name;
}

/// The names of all files below a folder, one a line.
std::string FilesBelow(const std::filesystem::path &folder);
/// Whether all of these names are among the others.
bool AreAmong(const std::string &files, const std::string &others);

/// For fixtures: what is there before and after a change, by a look at one that nothing disturbs.
class TWatchedChange : public testing::TestWithParam<TChange>
{
protected:
    TWatchedChange()
    {
        const TempFolder folder;
        m_change.Prepare(folder.Path());
        m_before = m_change.Read(folder.Path());
        m_files = FilesBelow(folder.Path());
        EXPECT_EQ(m_change.Make(folder.Path()), "");
        m_after = m_change.Read(folder.Path());
        m_files += FilesBelow(folder.Path());
        EXPECT_NE(m_before, m_after);
    }

    const TChange m_change = GetParam();
    std::string m_before, m_after;
    std::string m_files; // those of both
};
