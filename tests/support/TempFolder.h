#pragma once

#include <filesystem>
#include <random>
#include <string>

/// A folder of its own for a test, gone with it.
class TempFolder
{
public:
    TempFolder()
    {
        std::random_device random;
        do
            m_path = std::filesystem::temp_directory_path() / ("zelmar01-test-" + std::to_string(random()));
        while (!std::filesystem::create_directory(m_path));
    }
    ~TempFolder()
    {
        std::error_code none;
        std::filesystem::remove_all(m_path, none);
    }
    TempFolder(const TempFolder &) = delete;
    TempFolder &operator=(const TempFolder &) = delete;

    const std::filesystem::path &Path() const { return m_path; }
    std::filesystem::path operator/(const std::string &name) const { return m_path / name; }

private:
    std::filesystem::path m_path;
};
