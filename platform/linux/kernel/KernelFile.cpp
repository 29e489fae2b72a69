// SPDX-License-Identifier: MIT
#include "platform/linux/kernel/KernelFile.hpp"

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace vantor::platform::linux {

namespace {

constexpr std::size_t firstBuffer = 4096;
constexpr int mostCalls = 16384; // the kernel hands out a page at a time; less is a file that drips for ever

/// True where the kernel makes the text at each read, so that an open descriptor never shows an old one.
bool madeByTheKernel(int descriptor) {
    struct statfs about {};
    return ::fstatfs(descriptor, &about) == 0 &&
           (about.f_type == PROC_SUPER_MAGIC || about.f_type == SYSFS_MAGIC);
}

} // namespace

int KernelFile::open() {
    const int number = posix::uninterrupted(
        [this] { return ::open(m_path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK); });
    if (number < 0) {
        return errno;
    }
    m_descriptor = posix::Descriptor(number);
    m_keep = madeByTheKernel(number);
    return 0;
}

/// Whether a short answer can be taken for the end, which saves the call that would bring an empty one: on a
/// text of one record that ends a line and is as long as it was. (Its numbers may have become shorter.)
bool KernelFile::isWhole() const {
    constexpr std::size_t shrinks = 64;
    return m_keep && m_shape == Shape::oneRecord && m_whole > 0 && m_length + shrinks >= m_whole &&
           m_buffer[m_length - 1] == '\n';
}

/// Reads from the start into the buffer until `wanted` bytes are there or the text ends; an errno value.
int KernelFile::fill(std::size_t wanted) {
    m_length = 0;
    for (int calls = 0; m_length < wanted; ++calls) {
        if (calls == mostCalls) {
            return EFBIG;
        }
        if (m_buffer.size() < std::min(wanted, m_length + firstBuffer)) {
            m_buffer.resize(std::min(longest, std::max(m_buffer.size() * 2, firstBuffer)));
        }
        const std::size_t room = std::min(wanted, m_buffer.size()) - m_length;
        const ssize_t got = posix::uninterrupted([&] {
            return ::pread(m_descriptor.number(), m_buffer.data() + m_length, room,
                           static_cast<off_t>(m_length));
        });
        if (got < 0) {
            return errno;
        }
        m_length += static_cast<std::size_t>(got);
        const bool shortRead = static_cast<std::size_t>(got) < room;
        if (got == 0 || (shortRead && isWhole())) {
            m_whole = m_length;
            return 0;
        }
    }
    return wanted == longest ? EFBIG : 0;
}

KernelFile::Content KernelFile::read(std::size_t wanted) {
    wanted = std::min(wanted, longest);
    const bool wasOpen = m_descriptor.isOpen();
    int error = wasOpen ? 0 : open();
    if (error == 0) {
        error = fill(wanted);
    }
    if (error != 0 && wasOpen) {
        m_descriptor.reset();
        error = open();
        if (error == 0) {
            error = fill(wanted);
        }
    }
    if (error != 0 || !m_keep) {
        m_descriptor.reset();
    }
    if (error != 0) {
        return {{}, error};
    }
    return {std::string_view(m_buffer.data(), m_length), 0};
}

} // namespace vantor::platform::linux
