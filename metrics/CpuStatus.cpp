// SPDX-License-Identifier: MIT
#include "metrics/CpuStatus.hpp"

#include "platform/core/Checked.hpp"
#include "platform/machine/Machine.hpp"

#include <array>
#include <cstdint>
#include <mutex>

namespace vantor {

namespace {

using Ticks = platform::host_cpu_load_info;

/// The counters of the previous sample, one set a machine.
struct PreviousCpuTicks {
    std::mutex mutex;
    Ticks ticks{0, 0, 0, 0};
};

Ticks currentTicks() {
    std::array<std::uint32_t, platform::HOST_CPU_LOAD_INFO_COUNT> words{};
    platform::mach_msg_type_number_t count = platform::HOST_CPU_LOAD_INFO_COUNT;
    // The result is not looked at: a host that cannot tell leaves zeros, and zeros after a sample are a fall.
    platform::host_statistics(platform::mach_host_self(), platform::HOST_CPU_LOAD_INFO, words.data(), &count);
    return {words[0], words[1], words[2], words[3]};
}

double elapsed(std::uint32_t now, std::uint32_t before) {
    return platform::checkedSubtract(now, before, "a processor tick counter went backwards");
}

} // namespace

CpuUsage CpuStatus::getCpuUsage() {
    auto& previous = platform::currentMachine().associated<PreviousCpuTicks>();
    // From the reading to the store: a sample that overtook another would see its counters fall.
    const std::scoped_lock lock(previous.mutex);
    const Ticks now = currentTicks();
    const double user = elapsed(now.user, previous.ticks.user);
    const double system = elapsed(now.system, previous.ticks.system);
    const double idle = elapsed(now.idle, previous.ticks.idle);
    const double nice = elapsed(now.nice, previous.ticks.nice);
    previous.ticks = now;
    const double total = ((user + system) + idle) + nice;
    const auto share = [total](double ticks) { return ticks / total * 100.0; };
    return {share(system), share(user), share(idle), share(nice)};
}

} // namespace vantor
