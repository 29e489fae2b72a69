// SPDX-License-Identifier: MIT
#pragma once

#include "platform/machine/Workload.hpp"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vantor::platform {

/// The memory of a machine as a whole, in bytes.
struct MemoryLevel {
    std::uint64_t total = 0;
    std::uint64_t available = 0; ///< to new programs without swapping, as the kernel reckons it
    bool operator==(const MemoryLevel&) const = default;
};

/// A group of an application, with no group below it, whose pages this program's user may move to swap.
struct ReclaimableGroup {
    std::string path = {};           ///< names it in the calls below
    std::uint64_t inactive = 0;      ///< bytes of the programs' own memory that were not touched lately
    std::uint64_t processorTime = 0; ///< microseconds that it has used
};

enum class ReclaimAnswer : std::uint8_t {
    done,    ///< that much was taken back, or more
    less,    ///< no more is to be had, or the group is gone
    refused, ///< the system does not allow it
};

/// A process as it runs now.
struct RunningProcess {
    ProcessIdentity identity = {};
    int parent = 0;
    int session = 0;          ///< the number of the process that leads its session
    bool isThisUsers = false; ///< it runs for the same user as this program
    std::string program = {}; ///< the name of the file that it runs
    /// Its control group below the user's own service manager ("app.slice/app-org.x-1.scope"); empty where it
    /// is elsewhere, such as in a login session's.
    std::string group = {};
};

enum class EndSignal : std::uint8_t {
    terminate, ///< asks the process to end (SIGTERM)
    kill,      ///< ends it (SIGKILL)
};

/// One process, which no later process of the same number can be taken for. One thread at a time.
class ProcessHandle {
public:
    virtual ~ProcessHandle() = default;
    /// Why it could not be told, in English; empty where it was, and where it has ended already.
    virtual std::string signal(EndSignal which) = 0;
    virtual bool isRunning() = 0;
};

/// What a user may have done to what runs on a machine. Everything is asked afresh. Any thread; a call of
/// `reclaim` takes as long as the swap's disk does.
class WorkloadControl {
public:
    virtual ~WorkloadControl() = default;

    /// Absent where the machine does not tell.
    virtual std::optional<MemoryLevel> memoryLevel() = 0;

    /// Whether applications' memory is counted by groups at all.
    virtual bool hasGroups() = 0;
    /// The user's applications' groups without this program's own, in no order.
    virtual std::vector<ReclaimableGroup> reclaimableGroups() = 0;
    /// One of them as it is now; absent once it is gone.
    virtual std::optional<ReclaimableGroup> reclaimableGroup(const std::string& path) = 0;
    /// Has the kernel move up to so many bytes out of a group, those not lately used first.
    virtual ReclaimAnswer reclaim(const std::string& path, std::uint64_t bytes) = 0;

    /// The number of the process that asks.
    virtual int ownNumber() = 0;
    /// Absent where it has ended.
    virtual std::optional<RunningProcess> process(int number) = 0;
    /// The processes in a group below the user's own service manager now.
    virtual std::vector<int> processesIn(const std::string& group) = 0;
    /// A hold on a process; null where that number does not stand for it any more, or it went to another
    /// group.
    virtual std::unique_ptr<ProcessHandle> open(const RunningProcess& process) = 0;
};

/// The one that a `Current<WorkloadControl>` has put in place. Without one: fatal.
WorkloadControl& currentWorkloadControl();

} // namespace vantor::platform
