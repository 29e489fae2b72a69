// SPDX-License-Identifier: MIT
#include "platform/linux/sysctl/KernelTree.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>

namespace vantor::platform::linux::sysctl {

namespace {

constexpr std::size_t longestFile = std::size_t{1} << 20U;

class Descriptor {
public:
    explicit Descriptor(int number) : m_number(number) {}
    ~Descriptor() {
        if (m_number >= 0) {
            ::close(m_number);
        }
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    [[nodiscard]] int number() const { return m_number; }

private:
    int m_number;
};

} // namespace

KernelTree::Content KernelTree::read(std::string_view path) const {
    const Descriptor file(::open((m_root / path).c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (file.number() < 0) {
        return {errno, {}};
    }
    Content content;
    std::array<char, 4096> chunk{};
    for (;;) {
        const ssize_t count = ::read(file.number(), chunk.data(), chunk.size());
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            return {errno, {}};
        }
        if (count == 0) {
            return content;
        }
        content.text.append(chunk.data(), static_cast<std::size_t>(count));
        if (content.text.size() > longestFile) {
            return {EFBIG, {}};
        }
    }
}

std::optional<std::string> KernelTree::line(std::string_view path) const {
    Content content = read(path);
    if (content.error != 0) {
        return std::nullopt;
    }
    if (!content.text.empty() && (content.text.back() == '\n' || content.text.back() == '\0')) {
        content.text.pop_back();
    }
    return std::move(content.text);
}

} // namespace vantor::platform::linux::sysctl
