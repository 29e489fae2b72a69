// SPDX-License-Identifier: MIT
#include "hosts/command/Display.hpp"

#include "platform/posix/Descriptor.hpp"
#include "platform/posix/Environment.hpp"

#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <system_error>

namespace vantor::hosts::command {

namespace {

using platform::posix::Descriptor;
using platform::posix::environmentText;

/// What cannot be asked is taken to be served: only a plain no counts.
template<class Address>
bool isServed(int family, const Address& address, std::size_t size) {
    const Descriptor socket(::socket(family, SOCK_STREAM | SOCK_CLOEXEC, 0));
    const timeval patience{0, 200'000}; // microseconds, for connect(2) too (socket(7))
    ::setsockopt(socket.number(), SOL_SOCKET, SO_SNDTIMEO, &patience, sizeof patience);
    const int result =
        ::connect(socket.number(), reinterpret_cast<const sockaddr*>(&address), static_cast<socklen_t>(size));
    return result == 0 || (errno != ECONNREFUSED && errno != ENOENT);
}

/// A name that begins with a zero byte is one of Linux's abstract ones (unix(7)).
bool isServedAt(const std::string& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof address.sun_path) {
        return true;
    }
    std::memcpy(static_cast<void*>(address.sun_path), path.data(), path.size());
    return isServed(AF_UNIX, address, offsetof(sockaddr_un, sun_path) + path.size());
}

bool isServedAtPort(int port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return isServed(AF_INET, address, sizeof address);
}

bool hasWayland(const std::string& name) {
    const std::string folder = environmentText("XDG_RUNTIME_DIR");
    return name.starts_with('/') ? isServedAt(name) : folder.empty() || isServedAt(folder + '/' + name);
}

/// ":1" and ":1.0" are this machine's by a socket, "localhost:10.0" is what ssh hands on by a port.
bool hasX11(std::string_view name) {
    constexpr int firstPort = 6000, mostDisplays = 59535;
    const std::size_t colon = std::min(name.rfind(':'), name.size());
    const std::string_view host = name.substr(0, colon);
    const std::string_view number = name.substr(std::min(colon + 1, name.size()));
    int display = 0;
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), display);
    const bool isPlain = error == std::errc() && (end == number.data() + number.size() || *end == '.');
    if (!isPlain || display < 0 || display > mostDisplays) {
        return true;
    }
    if (host.empty() || host == "unix") {
        const std::string path = "/tmp/.X11-unix/X" + std::to_string(display);
        return isServedAt(path) || isServedAt(std::string(1, '\0') + path);
    }
    return (host != "localhost" && host != "127.0.0.1") || isServedAtPort(firstPort + display);
}

} // namespace

bool hasDisplay() {
    const std::string wayland = environmentText("WAYLAND_DISPLAY"), x11 = environmentText("DISPLAY");
    return (!wayland.empty() && hasWayland(wayland)) || (!x11.empty() && hasX11(x11));
}

} // namespace vantor::hosts::command
