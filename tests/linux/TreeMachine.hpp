// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/LinuxMachine.hpp"

#include <TestTree.hpp>

#include <chrono>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace vantor::tests {

/// A Linux machine on a folder that holds proc/, sys/ and home/, with a clock that the test moves. A pause of
/// the machine's moves it too.
class TreeMachine {
public:
    explicit TreeMachine(const std::filesystem::path& root) : m_machine(options(root)) {}

    platform::linux::LinuxMachine* operator->() { return &m_machine; }
    platform::linux::LinuxMachine& machine() { return m_machine; }
    void pass(std::chrono::nanoseconds time) { *m_now += time; }

    /// The names of the links that count, with their counters.
    std::map<std::string, std::pair<std::uint32_t, std::uint32_t>> countedLinks() {
        std::map<std::string, std::pair<std::uint32_t, std::uint32_t>> links;
        for (const platform::InterfaceAddress& link :
             m_machine.interfaceAddresses().value_or(std::vector<platform::InterfaceAddress>())) {
            if (link.name->starts_with("en") || link.name->starts_with("pdp_ip")) {
                links[*link.name] = {link.receivedBytes, link.sentBytes};
            }
        }
        return links;
    }

    std::string failedSources() {
        std::string sources;
        for (const platform::SourceFailure& failure : m_machine.failures()) {
            sources += failure.source + ' ';
        }
        return sources;
    }

private:
    platform::linux::LinuxMachine::Options options(const std::filesystem::path& root) {
        platform::linux::LinuxMachine::Options options;
        options.procRoot = root / "proc";
        options.sysRoot = root / "sys";
        options.folders = {.home = root / "home",
                           .config = root / "home/.config",
                           .cache = root / "home/.cache",
                           .data = root / "home/.local/share",
                           .suiteFile = ""};
        options.useLocale = false;
        options.pageSize = 4096;
        options.ticksPerSecond = 100;
        options.clock = [now = m_now] { return *now; };
        options.pause = [now = m_now](std::chrono::nanoseconds time) { *now += time; };
        options.plainMemory = [] { return std::optional<platform::linux::PlainMemory>(); };
        return options;
    }

    std::shared_ptr<std::chrono::nanoseconds> m_now =
        std::make_shared<std::chrono::nanoseconds>(std::chrono::hours(1));
    platform::linux::LinuxMachine m_machine;
};

/// What an interval's counters make of the processors' time, in percent.
struct Load {
    double user, system, idle, nice;
};
inline Load loadBetween(const platform::host_cpu_load_info& a, const platform::host_cpu_load_info& b) {
    const double user = b.user - a.user, system = b.system - a.system, idle = b.idle - a.idle,
                 nice = b.nice - a.nice;
    const double percent = 100 / (user + system + idle + nice);
    return {user * percent, system * percent, idle * percent, nice * percent};
}

} // namespace vantor::tests
