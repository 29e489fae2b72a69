// SPDX-License-Identifier: MIT
#include "BareCalls.hpp"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <utility>

namespace vantor::costs {

namespace {

// The kernel makes the text at each pread from the start, so the files stay open.
int openText(const char* path) {
    const int descriptor = ::open(path, O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) {
        std::abort();
    }
    return descriptor;
}

std::array<char, 65536> text;

} // namespace

BareCalls::BareCalls(std::string documents, std::string storeFile)
    : m_documents(std::move(documents)),
      m_storeFile(std::move(storeFile)),
      m_mounts(openText("/proc/self/mountinfo")),
      m_memory(openText("/proc/meminfo")),
      m_processor(openText("/proc/stat")),
      m_network(openText("/proc/net/dev")) {
    for (const auto& disk : std::filesystem::directory_iterator("/sys/block")) {
        if (disk.path().filename().string().starts_with("zram")) {
            m_compressed.push_back(openText((disk.path() / "mm_stat").c_str()));
        }
    }
}

BareCalls::~BareCalls() {
    for (const int descriptor : {m_mounts, m_memory, m_processor, m_network}) {
        ::close(descriptor);
    }
    for (const int descriptor : m_compressed) {
        ::close(descriptor);
    }
}

/// Whether a mount came or went (then the volume may be another one), and the volume.
void BareCalls::askVolume() const {
    struct pollfd question {};
    question.fd = m_mounts;
    question.events = POLLPRI;
    ::poll(&question, 1, 0);
    struct statvfs about {};
    ::statvfs(m_documents.c_str(), &about);
}

/// One preference, read afresh and whole: the second look at the state tells whether somebody wrote
/// meanwhile.
void BareCalls::readStore() const {
    const int descriptor =
        ::open(m_storeFile.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC | O_NOATIME);
    if (descriptor < 0) {
        return;
    }
    struct stat about {};
    ::fstat(descriptor, &about);
    [[maybe_unused]] const ssize_t got = ::read(descriptor, text.data(), text.size());
    ::fstat(descriptor, &about);
    ::close(descriptor);
}

void BareCalls::refresh() const {
    const auto read = [](int descriptor, std::size_t most, off_t from) {
        return ::pread(descriptor, text.data(), most, from);
    };
    // Storage: total, used and free depend on one preference; used is asked for twice, for its text and for
    // the ring.
    askVolume();
    for (int i = 0; i < 5; ++i) {
        readStore();
    }
    read(m_memory, 4096, 0);
    for (const int disk : m_compressed) {
        read(disk, 512, 0);
    }
    readStore(); // whether inactive memory counts as free
    read(m_processor, 256, 0);
    const ssize_t length = read(m_network, 8192, 0);
    read(m_network, 8192, length); // only an empty answer ends the list
    // Display: what the memory and the storage section show, and each of the three rings' own colour.
    for (int i = 0; i < 5; ++i) {
        readStore();
    }
}

} // namespace vantor::costs
