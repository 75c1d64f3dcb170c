#pragma once

#include <Zelmar01/tasks/service/store/JobFolder.h>
#include <Zelmar01/tasks/service/store/JobStore.h>

#include <support/TempFolder.h>
#include <tasks/service/Samples.h>
#include <tasks/service/ServiceFixture.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

inline std::string bytesOf(const std::filesystem::path &file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

inline void writeBytes(const std::filesystem::path &file, const std::string &bytes)
{
    std::ofstream(file, std::ios::binary) << bytes;
}

/// The names of what is in a folder, sorted.
inline std::vector<std::string> filesIn(const std::filesystem::path &folder)
{
    std::vector<std::string> names;
    for (const auto &entry : std::filesystem::directory_iterator(folder))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

/// A job store in a folder of its own, with a clock that stands where the test puts it.
class StoreTest : public ServiceFixture
{
protected:
    void SetUp() override { ASSERT_EQ(m_store.CreateScheduler(m_scheduler), Zelmar01::TaskResult::Ok); }

    std::filesystem::path path(const std::string &file) const { return m_jobs / file; }

    Zelmar01::ITaskAllocator &allocator() override { return m_store.Allocator(); }

    TempFolder m_folder;
    const std::filesystem::path m_jobs = m_folder / "jobs";
    Zelmar01::TSeconds m_now = at("2027-02-03 10:00");
    Zelmar01::TJobStore m_store{{m_jobs, {}, [this] { return m_now; }, [] { return Zelmar01::TTimeZone(); }}};
};
