// SPDX-License-Identifier: MIT
#pragma once

#include "TestTree.hpp"
#include "platform/linux/LinuxMachine.hpp"

#include <atomic>
#include <chrono>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <utility>

namespace vantor::tests {

/// Where a viewer with the home of a tree looks for the preferences, below the root.
inline const std::filesystem::path storeFile = "home/.config/vantor/group.vantor.plist";

/// What /proc/self/mountinfo says of a machine with one disk.
inline constexpr const char* localRoot = "1 0 8:1 / / rw - ext4 /dev/sda1 rw\n";

inline platform::posix::UserFolders homeBelow(const std::filesystem::path& root) {
    return {.home = root / "home",
            .config = root / "home/.config",
            .cache = root / "home/.cache",
            .data = root / "home/.local/share"};
}

/// A Linux machine on a folder that holds proc/, sys/ and home/, with a clock that the test moves. A pause of
/// the machine's moves it too.
class TreeMachine {
public:
    explicit TreeMachine(const std::filesystem::path& root) : m_machine(options(root)) {}

    platform::linux::LinuxMachine* operator->() { return &m_machine; }
    platform::linux::LinuxMachine& machine() { return m_machine; }
    void pass(std::chrono::nanoseconds time) { m_now += time.count(); }

    /// The names of the links that count, with their counters.
    std::map<std::string, std::pair<std::uint64_t, std::uint64_t>> countedLinks() {
        std::map<std::string, std::pair<std::uint64_t, std::uint64_t>> links;
        for (const platform::InterfaceAddress& link :
             m_machine.interfaceAddresses().value_or(std::vector<platform::InterfaceAddress>())) {
            if (link.name->starts_with("en") || link.name->starts_with("pdp_ip")) {
                links[*link.name].first += link.receivedBytes;
                links[*link.name].second += link.sentBytes;
            }
        }
        return links;
    }

    std::string failedSources() {
        std::string sources;
        for (const platform::SourceFailure& failure : m_machine.failures()) {
            sources.append(sourceName(failure.source)).append(1, ' ');
        }
        return sources;
    }

private:
    platform::linux::LinuxMachine::Options options(const std::filesystem::path& root) {
        platform::linux::LinuxMachine::Options options;
        options.tree = platform::linux::KernelTree(root);
        options.folders = homeBelow(root);
        options.pageSize = 4096;
        options.ticksPerSecond = 100;
        options.clock = [this] { return std::chrono::nanoseconds(m_now); };
        options.pause = [this](std::chrono::nanoseconds time) { pass(time); };
        options.plainMemory = [] { return std::optional<platform::linux::PlainMemory>(); };
        return options;
    }

    std::atomic<std::int64_t> m_now = std::chrono::nanoseconds(std::chrono::hours(1)).count();
    platform::linux::LinuxMachine m_machine;
};

} // namespace vantor::tests
