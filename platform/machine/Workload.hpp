// SPDX-License-Identifier: MIT
#pragma once

#include "platform/core/Current.hpp"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vantor::platform {

/// For how much of the time some program stood still because a resource was short: averages over the last 10
/// seconds, minute and five minutes, in percent, and the sum since boot. The kernel keeps them, so that they
/// tell of the past at once.
struct Pressure {
    double average10 = 0;
    double average60 = 0;
    double average300 = 0;
    std::uint64_t microseconds = 0;
    bool operator==(const Pressure&) const = default;
};

/// Bytes.
struct SwapSpace {
    std::uint64_t total = 0; ///< 0: none
    std::uint64_t free = 0;
    bool operator==(const SwapSpace&) const = default;
};

/// A process; its number is used again after its end, and only with its start is it the same one.
struct ProcessIdentity {
    int number = 0;
    std::uint64_t start = 0; ///< clock ticks after boot
    std::string name = {};   ///< the kernel's, at most 15 bytes, as the process set it: not yet printable
    bool operator==(const ProcessIdentity&) const = default;
};

/// What one application holds. Several groups or processes of it count together.
struct ApplicationUse {
    std::string id = {};      ///< of its desktop entry, as far as it is known: "org.gnome.Nautilus"
    std::string name = {};    ///< for people, printable
    std::string icon = {};    ///< of the desktop entry
    bool isService = false;   ///< no application: what belongs to the session as a whole
    std::uint64_t memory = 0; ///< bytes of RAM that nobody else holds: anonymous and shared memory, no cache
    std::uint64_t kernel = 0; ///< bytes that the kernel holds for it beside; 0 where that is not known
    std::uint64_t swap = 0;   ///< bytes
    std::uint64_t processorTime = 0; ///< microseconds on all processors since it started
    std::vector<ProcessIdentity> processes = {};
};

/// One process of an application.
struct ProcessUse {
    ProcessIdentity identity = {};
    std::uint64_t memory = 0;        ///< bytes, with all of what it shares
    std::uint64_t swap = 0;          ///< bytes
    std::uint64_t processorTime = 0; ///< microseconds on all processors since it started
};

/// More about an application than a list asks for.
struct ApplicationDetail {
    std::vector<ProcessUse> processes = {}; ///< the largest first
    /// The most bytes that it held since it started, with cache; absent where nobody kept that.
    std::optional<std::uint64_t> peak = {};
};

/// A processor's time since boot, in the kernel's ticks.
struct ProcessorTicks {
    std::uint64_t busy = 0;
    std::uint64_t idle = 0; ///< waiting for a disk too
    bool operator==(const ProcessorTicks&) const = default;
};

/// The state of the processors beside their shares.
struct ProcessorState {
    std::vector<ProcessorTicks> processors = {};     ///< those online, in the kernel's order
    std::optional<std::array<double, 3>> loads = {}; ///< load averages of 1, 5 and 15 minutes
    std::optional<double> hertz = {};                ///< the mean of the processors' frequencies now
    std::optional<double> celsius = {};              ///< the hottest sensor of a processor
};

/// What a list of applications is for. What that does not need may be left out, and then stays 0.
enum class ListedFor : std::uint8_t {
    memory,        ///< memory and swap, again and again
    memoryOnce,    ///< memory and swap in a single look; processes may lack their starts
    processorTime, ///< processor time, again and again
};

/// What runs on a machine for its user. Everything is read afresh and may be absent. Any thread.
class Workload {
public:
    virtual ~Workload() = default;

    /// Absent where the kernel keeps none.
    virtual std::optional<Pressure> memoryPressure() = 0;
    virtual std::optional<Pressure> processorPressure() = 0;
    virtual ProcessorState processorState() = 0;
    virtual std::optional<SwapSpace> swapSpace() = 0;
    /// This user's applications, in no order.
    virtual std::vector<ApplicationUse> applications(ListedFor purpose) = 0;
    /// What is behind a listed one; processes that have ended meanwhile are left out.
    virtual ApplicationDetail detail(const ApplicationUse& application) = 0;
};

/// The workload that a `Current<Workload>` has put in place. Without one: fatal.
Workload& currentWorkload();

} // namespace vantor::platform
