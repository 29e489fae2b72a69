// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace vantor::platform::linux_machine {

/// Where the user's files are, after the XDG base directory rules: a variable that is unset, empty or no
/// absolute path counts as unset. Any of them may be empty on a machine without a home.
struct UserFolders {
    std::string home;
    std::string config;    ///< $XDG_CONFIG_HOME, else ~/.config
    std::string cache;     ///< $XDG_CACHE_HOME, else ~/.cache
    std::string data;      ///< $XDG_DATA_HOME, else ~/.local/share
    std::string suiteFile; ///< $VANTOR_SUITE_FILE: the preference file itself

    /// From this process's environment; without HOME the home is the one in the user database.
    static UserFolders fromEnvironment();
};

/// The least that the kernel says of its memory without any file: sysinfo(2). Bytes.
struct PlainMemory {
    std::uint64_t total = 0;
    std::uint64_t free = 0;
};

/// What a Linux machine is made of. The default is the machine that the program runs on; tests put trees of
/// captured files and their own clock in.
struct MachineOptions {
    std::string procRoot = "/proc";
    std::string sysRoot = "/sys";
    UserFolders folders = UserFolders::fromEnvironment();
    /// The real locale and catalogues (process-wide, see Translations.hpp); off, there are no translations.
    bool useLocale = true;

    std::uint64_t pageSize = livePageSize();
    std::uint64_t ticksPerSecond = liveTicksPerSecond();
    /// Monotone time that stands still while the machine sleeps, as the processor's ticks do.
    std::function<std::chrono::nanoseconds()> clock = liveClock;
    std::function<void(std::chrono::nanoseconds)> pause = livePause;
    std::function<std::optional<PlainMemory>()> plainMemory = livePlainMemory;

    static std::uint64_t livePageSize();
    static std::uint64_t liveTicksPerSecond();
    static std::chrono::nanoseconds liveClock();
    static void livePause(std::chrono::nanoseconds time);
    static std::optional<PlainMemory> livePlainMemory();
};

} // namespace vantor::platform::linux_machine
