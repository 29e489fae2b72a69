// SPDX-License-Identifier: MIT
#include "LoopbackServer.hpp"

#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdlib>
#include <utility>

namespace vantor::tests {

LoopbackServer::LoopbackServer(Answers answers)
    : m_answers(std::move(answers)), m_socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    auto* const general = reinterpret_cast<sockaddr*>(&address);
    if (::bind(m_socket.number(), general, length) != 0 || ::listen(m_socket.number(), 16) != 0 ||
        ::getsockname(m_socket.number(), general, &length) != 0) {
        std::abort();
    }
    m_port = ntohs(address.sin_port);
    m_thread = std::thread([this] { run(); });
}

LoopbackServer::~LoopbackServer() {
    m_isEnding = true;
    ::shutdown(m_socket.number(), SHUT_RDWR); // accept comes back
    m_thread.join();
}

std::string LoopbackServer::url(const std::string& path) const {
    return "http://127.0.0.1:" + std::to_string(m_port) + path;
}

void LoopbackServer::run() {
    while (!m_isEnding) {
        const platform::posix::Descriptor connection(::accept(m_socket.number(), nullptr, nullptr));
        if (connection.isOpen()) {
            serve(connection.number());
        }
    }
}

void LoopbackServer::serve(int connection) {
    std::string request;
    char buffer[4096];
    while (request.find("\r\n\r\n") == std::string::npos) {
        const ssize_t count = ::recv(connection, buffer, sizeof buffer, 0);
        if (count <= 0) {
            return;
        }
        request.append(buffer, static_cast<std::size_t>(count));
    }
    ++m_requests;
    const Answer answer = m_answers(request);
    const auto send = [connection](std::string_view bytes) {
        while (!bytes.empty()) {
            const ssize_t count = ::send(connection, bytes.data(), bytes.size(), MSG_NOSIGNAL);
            if (count <= 0) {
                return false;
            }
            bytes.remove_prefix(static_cast<std::size_t>(count));
        }
        return true;
    };
    bool goesOn = send(answer.bytes);
    const std::string_view again = std::string_view(answer.bytes).substr(answer.bytes.size() - answer.repeat);
    while (goesOn && !again.empty() && !m_isEnding) {
        goesOn = send(again);
    }
    pollfd gone{connection, POLLIN, 0};
    while (goesOn && answer.dripsForEver && !m_isEnding) {
        goesOn = send("x") && ::poll(&gone, 1, 20) == 0;
    }
}

std::string httpAnswer(const std::string& status, const std::string& headers, const std::string& body) {
    return "HTTP/1.1 " + status + "\r\nConnection: close\r\n" + headers + "\r\n" + body;
}

} // namespace vantor::tests
