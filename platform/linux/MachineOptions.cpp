// SPDX-License-Identifier: MIT
#include "platform/linux/MachineOptions.hpp"

#include <pwd.h>
#include <sys/sysinfo.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <string_view>
#include <thread>

namespace vantor::platform::linux_machine {

namespace {

std::string absolutePath(const char* variable) {
    const char* const value = std::getenv(variable); // NOLINT(concurrency-mt-unsafe): read once, at the start
    return value != nullptr && value[0] == '/' ? value : "";
}

std::string homeFolder() {
    std::string home = absolutePath("HOME");
    if (home.empty()) {
        struct passwd entry {};
        struct passwd* found = nullptr;
        std::array<char, 4096> texts{};
        if (::getpwuid_r(::getuid(), &entry, texts.data(), texts.size(), &found) == 0 && found != nullptr) {
            home = entry.pw_dir[0] == '/' ? entry.pw_dir : "";
        }
    }
    return home;
}

std::string folder(const char* variable, const std::string& home, std::string_view underHome) {
    std::string path = absolutePath(variable);
    if (path.empty() && !home.empty()) {
        path = home;
        path += underHome;
    }
    return path;
}

std::uint64_t positive(long value, std::uint64_t otherwise) {
    return value > 0 ? static_cast<std::uint64_t>(value) : otherwise;
}

} // namespace

UserFolders UserFolders::fromEnvironment() {
    UserFolders folders;
    folders.home = homeFolder();
    folders.config = folder("XDG_CONFIG_HOME", folders.home, "/.config");
    folders.cache = folder("XDG_CACHE_HOME", folders.home, "/.cache");
    folders.data = folder("XDG_DATA_HOME", folders.home, "/.local/share");
    if (const char* const file = std::getenv("VANTOR_SUITE_FILE")) { // NOLINT(concurrency-mt-unsafe)
        folders.suiteFile = file;
    }
    return folders;
}

std::uint64_t MachineOptions::livePageSize() {
    return positive(::sysconf(_SC_PAGESIZE), 4096);
}

std::uint64_t MachineOptions::liveTicksPerSecond() {
    return positive(::sysconf(_SC_CLK_TCK), 100);
}

std::chrono::nanoseconds MachineOptions::liveClock() {
    return std::chrono::steady_clock::now().time_since_epoch();
}

void MachineOptions::livePause(std::chrono::nanoseconds time) {
    std::this_thread::sleep_for(time);
}

std::optional<PlainMemory> MachineOptions::livePlainMemory() {
    struct sysinfo info {};
    if (::sysinfo(&info) != 0) {
        return std::nullopt;
    }
    const std::uint64_t unit = info.mem_unit;
    return PlainMemory{info.totalram * unit, (info.freeram + info.bufferram) * unit};
}

} // namespace vantor::platform::linux_machine
