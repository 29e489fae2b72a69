// SPDX-License-Identifier: MIT
#include "platform/linux/MachineOptions.hpp"

#include "platform/time/DispatchQueue.hpp"

#include <sys/sysinfo.h>
#include <unistd.h>

#include <thread>

namespace vantor::platform::linux {

namespace {

std::uint64_t positive(long value, std::uint64_t otherwise) {
    return value > 0 ? static_cast<std::uint64_t>(value) : otherwise;
}

} // namespace

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
    dispatch_will_wait();
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

} // namespace vantor::platform::linux
