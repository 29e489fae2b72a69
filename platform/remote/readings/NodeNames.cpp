// SPDX-License-Identifier: MIT
#include "platform/remote/readings/NodeNames.hpp"

#include <algorithm>

namespace vantor::platform::remote {

namespace {

std::uint64_t less(std::uint64_t a, std::uint64_t b) {
    return a > b ? a - b : 0;
}

/// Sums of figures from outside that stay below `most` each do not overflow.
std::uint64_t within(const std::optional<std::uint64_t>& bytes, std::uint64_t most) {
    return std::min(bytes.value_or(0), most);
}

/// macOS counts what programs hold, what is wired and what is compressed as used, the rest as given back.
std::optional<std::uint64_t> freeOnMac(const OtherMemory& memory, std::uint64_t total) {
    if (!memory.internal || !memory.wired) {
        return std::nullopt;
    }
    const std::uint64_t programs = less(*memory.internal, memory.purgeable.value_or(0));
    return less(less(less(total, programs), *memory.wired), memory.compressed.value_or(0));
}

/// The BSDs give inactive and cached pages back at once.
std::optional<std::uint64_t> freeOnBSD(const OtherMemory& memory, std::uint64_t total) {
    if (!memory.free) {
        return std::nullopt;
    }
    const std::uint64_t used =
        less(less(less(total, *memory.free), memory.inactive.value_or(0)), memory.cache.value_or(0));
    return total - used;
}

} // namespace

std::optional<linux::MemorySplit> memorySplit(const OtherMemory& memory) {
    const std::uint64_t total = memory.total.value_or(memory.size.value_or(0));
    const std::optional<std::uint64_t> free =
        memory.total ? freeOnMac(memory, total) : freeOnBSD(memory, total);
    if (total == 0 || !free) {
        return std::nullopt;
    }
    linux::MemorySplit split;
    split.total = total;
    split.free = std::min(*free, total);
    split.active = within(memory.active, total);
    // On the BSDs these pages are in `free` already.
    split.inactive = memory.total ? within(memory.inactive, total - split.free) : 0;
    split.wired = within(memory.wired, total);
    split.purgeable =
        memory.total ? within(memory.purgeable, split.free) : less(split.free, within(memory.free, total));
    split.compressed = within(memory.compressed, total);
    return split;
}

ModeKind kindOfMode(std::string_view mode) {
    if (mode == "user") { // guests' time is in it
        return ModeKind::user;
    }
    if (mode == "nice") {
        return ModeKind::nice;
    }
    return mode == "idle" || mode == "iowait" || mode == "wait" ? ModeKind::idle : ModeKind::system;
}

} // namespace vantor::platform::remote
