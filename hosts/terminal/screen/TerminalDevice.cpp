// SPDX-License-Identifier: MIT
#include "hosts/terminal/screen/TerminalDevice.hpp"

#include "platform/posix/Environment.hpp"
#include "platform/posix/WithoutWaiting.hpp"

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <optional>

namespace vantor::hosts::terminal {

namespace {

constexpr Size usual{80, 24};
constexpr Size largest{1000, 500}; // more cells than any screen shows as text

int openAgain(int given) {
    std::array<char, 256> name{};
    if (::ttyname_r(given, name.data(), name.size()) != 0) {
        return -1;
    }
    return ::open(name.data(), O_RDWR | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
}

int variable(const char* name, int otherwise) {
    const std::string text = platform::posix::environmentText(name);
    int number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number > 0 ? number : otherwise;
}

} // namespace

TerminalDevice::TerminalDevice(int given) : m_given(given), m_own(openAgain(given)) {}

Size TerminalDevice::size() const {
    winsize window{};
    Size size;
    if (::ioctl(number(), TIOCGWINSZ, &window) == 0) {
        size = {window.ws_col, window.ws_row};
    }
    size.width = size.width > 0 ? size.width : variable("COLUMNS", usual.width);
    size.height = size.height > 0 ? size.height : variable("LINES", usual.height);
    return {std::min(size.width, largest.width), std::min(size.height, largest.height)};
}

bool TerminalDevice::write(std::string_view bytes) {
    m_waiting.append(bytes);
    std::size_t done = 0;
    bool isThere = true;
    std::optional<platform::posix::WithoutWaiting> withoutWaiting;
    if (!m_own.isOpen() && !m_waiting.empty()) {
        withoutWaiting.emplace(m_given);
    }
    while (isThere && done < m_waiting.size()) {
        const ::ssize_t written = ::write(number(), m_waiting.data() + done, m_waiting.size() - done);
        if (written >= 0) {
            done += static_cast<std::size_t>(written);
        } else if (errno == EAGAIN) {
            break;
        } else {
            isThere = errno == EINTR;
        }
    }
    m_waiting.erase(0, done);
    return isThere;
}

bool TerminalDevice::read(std::string& bytes) const {
    pollfd ready{number(), POLLIN, 0};
    std::array<char, 1024> buffer{};
    constexpr std::size_t most = 4096;
    while (bytes.size() < most && ::poll(&ready, 1, 0) > 0 &&
           (ready.revents & (POLLIN | POLLHUP | POLLERR)) != 0) {
        const ::ssize_t count = ::read(number(), buffer.data(), buffer.size());
        if (count > 0) {
            bytes.append(buffer.data(), static_cast<std::size_t>(count));
        } else if (count == 0 || (errno != EINTR && errno != EAGAIN)) {
            return false;
        }
    }
    return true;
}

} // namespace vantor::hosts::terminal
