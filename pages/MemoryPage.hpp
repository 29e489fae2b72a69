// SPDX-License-Identifier: MIT
#pragma once

#include "platform/machine/Workload.hpp"

#include <cstdint>
#include <optional>
#include <vector>

namespace vantor {

/// What the memory of a machine is made of, in the order in which a bar shows it.
enum class MemoryPartKind : std::uint8_t {
    applications, ///< what programs hold and the kernel could only take to swap
    kernel,       ///< what the kernel holds, and pages locked in memory
    compressed,   ///< memory that holds compressed pages
    inactive,     ///< of the programs, not touched lately; a part of its own where it counts as available
    cache,        ///< what the kernel gives back at once
    free,
};

struct MemoryPart {
    MemoryPartKind kind = MemoryPartKind::free;
    std::int64_t bytes = 0;
    bool operator==(const MemoryPart&) const = default;
};

/// The memory page: what the widget's ring is made of. In bytes.
struct MemoryPage {
    std::int64_t total = 0;
    std::int64_t used = 0;         ///< what the ring shows, of `total`
    std::int64_t available = 0;    ///< the rest, which the widget calls free
    std::vector<MemoryPart> parts; ///< up to `compressed` they add up to `used`, the others to `available`
    std::optional<platform::SwapSpace> swap;
    std::optional<platform::Pressure> pressure;
    std::vector<platform::ApplicationUse> applications; ///< the largest first, services last
    std::int64_t others = 0; ///< of the applications' part, what none of the listed holds

    [[nodiscard]] double fraction() const { return static_cast<double>(used) / static_cast<double>(total); }
};

/// Asks the current machine by the widget's own sampler, and the current workload. Absent where the machine
/// does not tell. Takes as long as the list of processes asks for: some milliseconds, fewer with
/// `memoryOnce`. Any thread.
[[nodiscard]] std::optional<MemoryPage> memoryPage(platform::ListedFor purpose = platform::ListedFor::memory);

} // namespace vantor
