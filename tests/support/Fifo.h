#pragma once

#include <array>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

/// A FIFO in the place of a printer's device, with its reading end open.
class Fifo
{
public:
    explicit Fifo(std::filesystem::path path) : m_path(std::move(path))
    {
        mkfifo(m_path.c_str(), 0600);
        m_reader = open(m_path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    }
    ~Fifo() { close(m_reader); }
    Fifo(const Fifo &) = delete;
    Fifo &operator=(const Fifo &) = delete;

    const std::filesystem::path &Path() const { return m_path; }
    int Reader() const { return m_reader; }

    /// What has arrived since the last call.
    std::string Received()
    {
        std::string bytes;
        std::array<char, 4096> block;
        for (ssize_t count; (count = read(m_reader, block.data(), block.size())) > 0;)
            bytes.append(block.data(), static_cast<std::size_t>(count));
        return bytes;
    }

private:
    std::filesystem::path m_path;
    int m_reader;
};
