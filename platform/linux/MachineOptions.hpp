// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/kernel/KernelTree.hpp"
#include "platform/posix/UserFolders.hpp"

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>

namespace vantor::platform::linux {

/// The least that the kernel says of its memory without any file: sysinfo(2). Bytes.
struct PlainMemory {
    std::uint64_t total = 0;
    std::uint64_t free = 0;
};

/// What a Linux machine is made of. The default is the machine that the program runs on; tests put trees of
/// captured files and their own clock in.
struct MachineOptions {
    KernelTree tree{"/"};
    posix::UserFolders folders = posix::UserFolders::fromEnvironment();
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

} // namespace vantor::platform::linux
