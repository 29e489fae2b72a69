// SPDX-License-Identifier: MIT
#include "hosts/qt/SingleInstance.hpp"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

namespace vantor::hosts::qt {

namespace {

constexpr const char* tokenVariable = "XDG_ACTIVATION_TOKEN"; // lets a Wayland window come forward

std::string_view environment(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? std::string_view() : std::string_view(value);
}

/// A name in the abstract name space, which begins with a zero byte.
std::string meetingPoint(std::string_view program) {
    return std::string(1, '\0')
        .append(program)
        .append("/")
        .append(std::to_string(::getuid()))
        .append("/")
        .append(environment("WAYLAND_DISPLAY"))
        .append("/")
        .append(environment("DISPLAY"))
        .substr(0, sizeof(sockaddr_un::sun_path));
}

template<class Call>
bool withAddress(const std::string& name, Call call) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::memcpy(static_cast<void*>(address.sun_path), name.data(), name.size());
    const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + name.size());
    return call(reinterpret_cast<const sockaddr*>(&address), length) == 0;
}

bool isOwnUser(int socket) {
    ucred peer{};
    socklen_t length = sizeof peer;
    return ::getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &peer, &length) == 0 && peer.uid == ::getuid();
}

} // namespace

SingleInstance::SingleInstance(std::string_view program)
    : m_socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)) {
    if (m_socket < 0) {
        return;
    }
    const std::string name = meetingPoint(program);
    if (withAddress(name, [this](const sockaddr* address, socklen_t length) {
            return ::bind(m_socket, address, length);
        })) {
        listen();
        return;
    }
    m_second = withAddress(name, [this](const sockaddr* address,
                                        socklen_t length) { return ::connect(m_socket, address, length); }) &&
               isOwnUser(m_socket);
    if (m_second) {
        const std::string_view token = environment(tokenVariable).substr(0, 1024);
        (void)::send(m_socket, token.data(), token.size(), MSG_NOSIGNAL);
    }
}

SingleInstance::~SingleInstance() {
    m_notifier.reset();
    if (m_socket >= 0) {
        ::close(m_socket);
    }
}

void SingleInstance::listen() {
    if (::listen(m_socket, 4) == 0) {
        m_notifier = std::make_unique<QSocketNotifier>(m_socket, QSocketNotifier::Read);
        QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(),
                         [this] { accept(); });
    }
}

void SingleInstance::accept() {
    const int caller = ::accept4(m_socket, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
    if (caller < 0) {
        return;
    }
    if (isOwnUser(caller)) {
        std::array<char, 1025> token{};
        if (::recv(caller, token.data(), token.size() - 1, 0) > 0) {
            ::setenv(tokenVariable, token.data(), 1); // the toolkit takes it from here
        }
        if (m_raise) {
            m_raise();
        }
    }
    ::close(caller);
}

} // namespace vantor::hosts::qt
