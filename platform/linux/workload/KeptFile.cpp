// SPDX-License-Identifier: MIT
#include "platform/linux/workload/KeptFile.hpp"

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <algorithm>

namespace vantor::platform::linux {

bool isMadeByTheKernel(const std::string& folder) {
    struct statfs about {};
    return ::statfs(folder.c_str(), &about) == 0 &&
           (about.f_type == PROC_SUPER_MAGIC || about.f_type == CGROUP2_SUPER_MAGIC);
}

/// The kernel hands out as many records as fit into a page: a call that brings much less was the last one.
std::string_view KeptFile::fill(std::vector<char>& buffer) const {
    constexpr std::size_t longest = std::size_t{1} << 20, page = 4096;
    std::size_t length = 0;
    while (length < longest) {
        if (buffer.size() < length + page) {
            buffer.resize(std::max(buffer.size() * 2, page));
        }
        const ssize_t got = posix::uninterrupted([&] {
            return ::pread(m_descriptor.number(), buffer.data() + length, buffer.size() - length,
                           static_cast<off_t>(length));
        });
        if (got < 0) {
            return {};
        }
        length += static_cast<std::size_t>(got);
        if (static_cast<std::size_t>(got) < page / 2) {
            break;
        }
    }
    return {buffer.data(), length};
}

std::string_view KeptFile::read(int folder, const std::string& path, std::vector<char>& buffer,
                                bool mayStay) {
    if (m_descriptor.isOpen()) {
        if (const std::string_view text = fill(buffer); !text.empty()) {
            return text;
        }
    }
    const int number = posix::uninterrupted(
        [&] { return ::openat(folder, path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK); });
    m_descriptor = posix::Descriptor(number);
    if (number < 0) {
        return {};
    }
    const std::string_view text = fill(buffer);
    if (text.empty() || !mayStay) {
        m_descriptor.reset();
    }
    return text;
}

} // namespace vantor::platform::linux
