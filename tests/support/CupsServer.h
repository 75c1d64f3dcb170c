#pragma once

#include "TempFolder.h"

#include <string>
#include <sys/types.h>
#include <vector>

/// A print server of the test's own, in a folder of its own, on a free port of the loopback interface. Works
/// for root and for an ordinary user and leaves the system's print service alone.
class CupsServer
{
public:
    /// `settings` are further lines of its configuration. Throws std::runtime_error when it does not start.
    explicit CupsServer(const std::string &settings = {});
    ~CupsServer() { Stop(); }
    CupsServer(const CupsServer &) = delete;
    CupsServer &operator=(const CupsServer &) = delete;

    std::string Address() const { return "127.0.0.1:" + std::to_string(m_port); }

    /// Makes a raw queue that brings its jobs to a listening socket of this machine.
    void AddQueue(const std::string &name, int sinkPort);

    /// Runs a command of the print service against this server and returns what it prints. Throws
    /// std::runtime_error when it fails.
    std::string Run(const std::vector<std::string> &command) const;

    /// How many jobs of a queue the server knows: "all" of them, or the "not-completed" ones.
    std::size_t Jobs(const std::string &queue, const std::string &which) const;

    void Start();
    void Stop();
    void Kill();
    /// The server stands still, and goes on.
    void Pause() const;
    void Resume() const;

private:
    bool answersSoon();
    bool hasEnded();

    TempFolder m_folder;
    int m_port;
    pid_t m_process = -1;
};
