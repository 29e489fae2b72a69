// SPDX-License-Identifier: MIT
#include "hosts/common/FileWatch.hpp"

#include "hosts/common/HostMachine.hpp"

#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <utility>

namespace vantor::hosts::common {

namespace fs = std::filesystem;

namespace {

constexpr std::uint32_t anyChange = IN_CREATE | IN_MOVED_TO | IN_MOVED_FROM | IN_DELETE | IN_CLOSE_WRITE |
                                    IN_ATTRIB | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;

} // namespace

FileWatch::FileWatch(std::string path) : m_queue(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    std::error_code error;
    const fs::path absolute = fs::absolute(path, error);
    m_path = error ? std::move(path) : absolute.string();
    m_error = m_queue.isOpen() ? 0 : errno;
    watch();
}

void FileWatch::settle() {
    alignas(struct inotify_event) std::array<char, 4096> events{};
    while (::read(m_queue.number(), events.data(), events.size()) > 0) {
    }
    watch();
}

void FileWatch::watch() {
    if (!m_queue.isOpen()) {
        return;
    }
    if (!answers(fs::path(m_path).parent_path().string(), std::chrono::seconds(1))) {
        m_error = ETIMEDOUT;
        m_queue.reset();
        return;
    }
    std::set<int> watches;
    bool watched = watchNearest(m_path, watches);
    std::error_code error;
    if (const fs::path target = fs::weakly_canonical(m_path, error); !error && target != m_path) {
        watched = watchNearest(target.string(), watches) && watched;
    }
    for (const int old : m_watches) {
        if (!watches.contains(old)) {
            ::inotify_rm_watch(m_queue.number(), old);
        }
    }
    m_watches = std::move(watches);
    if (!watched) {
        m_error = errno;
        m_queue.reset();
    }
}

/// A folder may be made between the look for it and the watch on the one above: look again, until the
/// nearest one is the same twice.
bool FileWatch::watchNearest(const std::string& file, std::set<int>& watches) {
    constexpr int attempts = 16;
    int latest = -1;
    for (int i = 0; i < attempts; ++i) {
        int watch = -1;
        for (fs::path folder = fs::path(file).parent_path(); watch < 0; folder = folder.parent_path()) {
            watch = ::inotify_add_watch(m_queue.number(), folder.c_str(), anyChange);
            if (watch < 0 && (folder == folder.parent_path() || errno == ENOSPC || errno == ENOMEM)) {
                return false;
            }
        }
        if (watch == latest) {
            break;
        }
        latest = watch;
    }
    watches.insert(latest);
    return true;
}

} // namespace vantor::hosts::common
