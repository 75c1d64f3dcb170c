#include "TcpSink.h"

#include <arpa/inet.h>
#include <array>
#include <netinet/in.h>
#include <stdexcept>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

TcpListener::TcpListener() : m_socket(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
{
    sockaddr_in address = {};
    socklen_t size = sizeof address;
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    auto *generic = reinterpret_cast<sockaddr *>(&address);
    if (m_socket < 0 || bind(m_socket, generic, size) != 0 || listen(m_socket, 16) != 0 ||
        getsockname(m_socket, generic, &size) != 0)
        throw std::runtime_error("no listening socket");
    m_port = ntohs(address.sin_port);
}

TcpListener::~TcpListener()
{
    close(m_socket);
}

TcpSink::~TcpSink()
{
    shutdown(m_listener.Socket(), SHUT_RDWR); // accept() ends
    m_thread.join();
}

std::vector<std::string> TcpSink::Take(std::size_t count, std::chrono::milliseconds patience)
{
    std::unique_lock lock(m_mutex);
    m_arrival.wait_for(lock, patience, [&] { return m_documents.size() >= count; });
    return std::exchange(m_documents, {});
}

void TcpSink::run()
{
    for (int connection; (connection = accept4(m_listener.Socket(), nullptr, nullptr, SOCK_CLOEXEC)) >= 0;) {
        std::string document;
        std::array<char, 4096> block;
        for (ssize_t count; (count = read(connection, block.data(), block.size())) > 0;)
            document.append(block.data(), static_cast<std::size_t>(count));
        close(connection);
        const std::lock_guard lock(m_mutex);
        m_documents.push_back(std::move(document));
        m_arrival.notify_all();
    }
}
