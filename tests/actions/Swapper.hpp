// SPDX-License-Identifier: MIT
#pragma once

#include "platform/posix/Descriptor.hpp"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace vantor::tests {

/// Files that a careless deletion would reach, and a thread that exchanges folders for a link to them and
/// back, all the time. The thread itself follows no link, or it would carry off what lies outside.
class Swapper {
public:
    using Way = std::vector<const char*>;

    /// `ways` lead to folders below `base`, name by name; `outside` and `link` are made.
    Swapper(std::filesystem::path base, std::vector<Way> ways, const std::filesystem::path& root)
        : m_base(std::move(base)),
          m_ways(std::move(ways)),
          m_outside(root / "outside"),
          m_link((root / "link").string()) {
        for (const char letter : {'a', 'b', 'c', 'd'}) {
            std::filesystem::create_directories(m_outside / std::string(1, letter));
            std::ofstream(m_outside / std::string(1, letter) / "kept") << "kept";
        }
        std::filesystem::create_directory_symlink(m_outside, m_link);
        m_thread = std::thread([this] {
            while (!m_ends) {
                for (const Way& way : m_ways) {
                    swap(way);
                }
            }
        });
    }
    ~Swapper() {
        m_ends = true;
        m_thread.join();
    }
    Swapper(const Swapper&) = delete;
    Swapper& operator=(const Swapper&) = delete;

    [[nodiscard]] bool hasSwapped() const { return m_swaps > 0; }
    [[nodiscard]] bool keptAll() const {
        const auto entries = std::filesystem::recursive_directory_iterator(m_outside);
        return std::count_if(begin(entries), end(entries),
                             [](const auto& entry) { return entry.is_regular_file(); }) == 4;
    }

private:
    void swap(const Way& way) {
        constexpr int flags = O_PATH | O_DIRECTORY | O_CLOEXEC;
        platform::posix::Descriptor folder(::open(m_base.c_str(), flags));
        for (std::size_t i = 0; i + 1 < way.size() && folder.isOpen(); ++i) {
            folder = platform::posix::Descriptor(::openat(folder.number(), way[i], flags | O_NOFOLLOW));
        }
        const auto exchange = [&] {
            return ::renameat2(AT_FDCWD, m_link.c_str(), folder.number(), way.back(), RENAME_EXCHANGE) == 0;
        };
        m_swaps += folder.isOpen() && exchange() ? 1 : 0;
        (void)(folder.isOpen() && exchange());
    }

    const std::filesystem::path m_base;
    const std::vector<Way> m_ways;
    const std::filesystem::path m_outside;
    const std::string m_link;
    std::atomic<bool> m_ends{false};
    std::atomic<long> m_swaps{0};
    std::thread m_thread;
};

} // namespace vantor::tests
