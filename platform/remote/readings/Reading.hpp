// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/figures/MemorySplit.hpp"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vantor::platform::remote {

/// To which part of a processor's time a mode belongs.
enum class ModeKind : std::uint8_t { user, nice, idle, system };

/// The time in seconds since boot that one logical processor spent in one mode ("idle", "user", …). Kept
/// small: a wall remembers each mode of each processor of each machine.
struct ModeTime {
    std::uint64_t key = 0; ///< of the two names, by which readings of one machine are compared
    double seconds = 0;
    ModeKind kind = ModeKind::system;
};

/// A mounted file system as the node tells of it. Sizes in bytes; what the node left out is absent.
struct NodeVolume {
    std::string device;
    std::string mountPoint;
    std::string type;
    std::optional<std::uint64_t> size = {};
    std::optional<std::uint64_t> available = {}; ///< what a user can write: without what is reserved for root
    std::optional<std::uint64_t> free = {};      ///< and with it
    std::optional<std::uint64_t> purgeable =
        {}; ///< and what could be released at once, both together; macOS only
    bool isReadOnly = false;
    bool hasFailed = false; ///< the node could not ask it
};

/// A network link and its bytes since it came up. The three numbers behind them are the Linux kernel's, from
/// /sys/class/net (its Documentation/ABI/testing/sysfs-class-net), where the node tells them.
struct NodeLink {
    std::string name;
    std::optional<std::uint64_t> received;
    std::optional<std::uint64_t> sent;
    std::optional<int> protocolType; ///< ARPHRD_…: 1 Ethernet, 772 loopback, 65534 none
    std::optional<int> index;
    std::optional<int> lowerIndex;  ///< the link that it stands on; its own where there is none
    std::optional<int> addressType; ///< 0: the card's own, 1: made up, 3: set by someone
};

/// Which system answered. It is told by the names of the memory figures.
enum class NodeSystem { unknown, linux, macOS, bsd };

/// One moment of one machine: what a single answer of its exporter said. Everything may be missing.
struct Reading {
    std::chrono::nanoseconds taken{}; ///< on a steady clock that the readings of one machine share
    NodeSystem system = NodeSystem::unknown;
    std::string nodeName;              ///< what the machine calls itself: not yet printable
    std::optional<double> bootSeconds; ///< since 1970
    std::optional<linux::MemorySplit> memory;
    std::vector<ModeTime> processor; ///< each processor and mode once, ordered by key
    std::vector<NodeVolume> volumes; ///< each mount point once
    std::vector<NodeLink> links;     ///< each name once

    /// Whether there is anything of a node_exporter in it.
    [[nodiscard]] bool isEmpty() const;
};

} // namespace vantor::platform::remote
