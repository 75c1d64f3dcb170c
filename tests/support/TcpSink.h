#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

/// A listening socket on the loopback interface, on a port that was free.
class TcpListener
{
public:
    TcpListener();
    ~TcpListener();
    TcpListener(const TcpListener &) = delete;
    TcpListener &operator=(const TcpListener &) = delete;

    int Socket() const { return m_socket; }
    int Port() const { return m_port; }
    std::string Address() const { return "127.0.0.1:" + std::to_string(m_port); }

private:
    int m_socket, m_port;
};

/// A network printer: takes connections one by one and keeps what came over each of them as a document.
class TcpSink
{
public:
    TcpSink() : m_thread([this] { run(); }) {}
    ~TcpSink();

    int Port() const { return m_listener.Port(); }

    /// The documents that have come since the last call, as soon as there are `count` or the time is over.
    std::vector<std::string> Take(std::size_t count,
                                  std::chrono::milliseconds patience = std::chrono::milliseconds(10'000));

private:
    void run();

    TcpListener m_listener;
    std::mutex m_mutex;
    std::condition_variable m_arrival;
    std::vector<std::string> m_documents;
    std::thread m_thread;
};
