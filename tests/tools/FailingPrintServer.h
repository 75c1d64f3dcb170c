#pragma once

#include <arpa/inet.h>
#include <cerrno>
#include <netinet/in.h>
#include <string>
#include <string_view>
#include <sys/socket.h>
#include <system_error>
#include <thread>
#include <unistd.h>

/// A print server on the loopback that knows every printer, takes one document and goes away before it
/// answers.
class FailingPrintServer
{
public:
    FailingPrintServer()
    {
        m_listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        sockaddr_in address = {};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        if (bind(m_listener, reinterpret_cast<sockaddr *>(&address), size) != 0 || listen(m_listener, 4) != 0)
            throw std::system_error(errno, std::generic_category());
        getsockname(m_listener, reinterpret_cast<sockaddr *>(&address), &size);
        m_port = ntohs(address.sin_port);
        m_thread = std::thread([this] { serve(); });
    }
    ~FailingPrintServer()
    {
        shutdown(m_listener, SHUT_RDWR);
        m_thread.join();
        close(m_listener);
    }
    FailingPrintServer(const FailingPrintServer &) = delete;
    FailingPrintServer &operator=(const FailingPrintServer &) = delete;

    std::string Address() const { return "127.0.0.1:" + std::to_string(m_port); }

private:
    void serve() const
    {
        for (int client; (client = accept(m_listener, nullptr, nullptr)) >= 0; close(client))
            while (answerOne(client)) {
            }
    }

    // False when the connection ends, and at a document.
    static bool answerOne(int client)
    {
        std::string request;
        std::size_t body = std::string::npos;
        do {
            char block[4096];
            const auto count = read(client, block, sizeof block);
            if (count <= 0)
                return false;
            request.append(block, static_cast<std::size_t>(count));
            body = request.find("\r\n\r\n");
        } while (body == std::string::npos || !isWhole(request, body + 4));
        if (isChunked(request))
            return false;
        const auto answer = jobNumberOne(request.substr(body + 4));
        const auto reply = "HTTP/1.1 200 OK\r\nContent-Type: application/ipp\r\nContent-Length: " +
                           std::to_string(answer.size()) + "\r\n\r\n" + answer;
        return write(client, reply.data(), reply.size()) == static_cast<ssize_t>(reply.size());
    }

    static bool isChunked(const std::string &request)
    {
        return request.find("Transfer-Encoding: chunked") != std::string::npos;
    }

    static bool isWhole(const std::string &request, std::size_t body)
    {
        if (isChunked(request))
            return request.size() > body && request.ends_with("\r\n0\r\n\r\n");
        constexpr std::string_view field = "Content-Length: ";
        const auto at = request.find(field);
        return at == std::string::npos ||
               request.size() >= body + std::stoul(request.substr(at + field.size()));
    }

    // IPP: version, status "ok", the request's number, charset, language and job-id 1.
    static std::string jobNumberOne(const std::string &request)
    {
        using namespace std::string_literals;
        return "\x02\x00\x00\x00"s + request.substr(4, 4) + "\x01\x47\x00\x12"s + "attributes-charset" +
               "\x00\x05utf-8\x48\x00\x1b"s + "attributes-natural-language" + "\x00\x02"s +
               "fr\x02\x21\x00\x06"s + "job-id" + "\x00\x04\x00\x00\x00\x01\x03"s;
    }

    int m_listener = -1;
    int m_port = 0;
    std::thread m_thread;
};
