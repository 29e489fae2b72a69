// SPDX-License-Identifier: MIT
#pragma once

#include "platform/posix/Descriptor.hpp"

#include <atomic>
#include <functional>
#include <string>
#include <thread>

namespace vantor::tests {

/// A server on a free port of 127.0.0.1 that answers one connection after the other and closes each.
class LoopbackServer {
public:
    /// Gives the whole answer, its head included, for the head of a request. Runs on the server's thread. An
    /// answer may repeat its last `repeat` bytes until the other side has enough.
    struct Answer {
        std::string bytes;
        std::size_t repeat = 0;
        bool dripsForEver = false; ///< a byte now and then, until the other side goes
    };
    using Answers = std::function<Answer(const std::string& request)>;

    explicit LoopbackServer(Answers answers);
    ~LoopbackServer();
    LoopbackServer(const LoopbackServer&) = delete;
    LoopbackServer& operator=(const LoopbackServer&) = delete;

    [[nodiscard]] std::string url(const std::string& path) const;
    [[nodiscard]] int port() const { return m_port; }
    [[nodiscard]] int requests() const { return m_requests; }

private:
    void run();
    void serve(int connection);

    Answers m_answers;
    platform::posix::Descriptor m_socket;
    int m_port = 0;
    std::atomic<int> m_requests{0};
    std::atomic<bool> m_isEnding{false};
    std::thread m_thread;
};

/// A whole answer of HTTP/1.1 that ends with its connection.
[[nodiscard]] std::string httpAnswer(const std::string& status, const std::string& headers,
                                     const std::string& body);

} // namespace vantor::tests
