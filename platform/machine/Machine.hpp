// SPDX-License-Identifier: MIT
#pragma once

#include "platform/core/AssociatedState.hpp"
#include "platform/core/Current.hpp"
#include "platform/machine/HostStatistics.hpp"
#include "platform/machine/InterfaceAddress.hpp"
#include "platform/machine/NetworkTotals.hpp"
#include "platform/machine/Source.hpp"
#include "platform/machine/VolumeCapacities.hpp"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vantor::platform {

/// The machine that is measured, behind the platform's calls: the real one or a scripted one. The free
/// functions of this folder ask the current machine, so that code above speaks only the platform's own names;
/// several machines may be shown side by side, each current where its own reports run. Any thread.
class Machine : public AssociatedState {
public:
    virtual ~Machine() = default;

    /// The bytes of one page in `hostVirtualMemory`. Like the two calls below it gives KERN_SUCCESS, or any
    /// other number and leaves its argument as it was.
    virtual kern_return_t hostPageSize(std::uint64_t& size) = 0;
    /// The page counts. The widget cannot go on without them: where they cannot be read, give the last ones.
    virtual kern_return_t hostVirtualMemory(vm_statistics64& record) = 0;
    /// The processor's ticks since boot. No counter may ever fall, which is fatal above, and some time should
    /// pass between two answers: where none did, a report asks again at once.
    virtual kern_return_t hostCpuLoad(host_cpu_load_info& record) = 0;

    /// Installed memory in bytes.
    virtual std::uint64_t physicalMemory() = 0;
    /// Whether this is a phone's program on a Mac; false on every other machine.
    virtual bool isiOSAppOnMac() = 0;

    /// The interface address entries; absent when the system cannot list them.
    virtual std::optional<std::vector<InterfaceAddress>> interfaceAddresses() = 0;

    /// The counters behind those entries in their full width, as of the last time that they were listed;
    /// absent where the machine has none but the entries'.
    virtual std::optional<NetworkTotals> networkTotals() { return std::nullopt; }

    /// The user's document folders, as paths; usually one. Shared, since a report asks eight times.
    virtual std::shared_ptr<const std::vector<std::string>> documentDirectories() = 0;
    /// The capacities of the volume that holds a path; absent when the query failed.
    virtual std::optional<VolumeCapacities> volumeCapacities(const std::string& path) = 0;

    /// What cannot be read at the moment, one entry a source, in the order of `allSources`.
    virtual std::vector<SourceFailure> failures() = 0;
};

/// The machine that a `Current<Machine>` has put in place: on this thread, or where the running block was
/// submitted. Without one: fatal.
Machine& currentMachine();

} // namespace vantor::platform
