// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/FailureBoard.hpp"
#include "platform/linux/InterfaceReader.hpp"
#include "platform/linux/MachineOptions.hpp"
#include "platform/linux/MemoryReader.hpp"
#include "platform/linux/ProcessorReader.hpp"
#include "platform/linux/ReleasableScan.hpp"
#include "platform/linux/VolumeReader.hpp"
#include "platform/machine/Machine.hpp"

#include <memory>
#include <optional>

namespace vantor::platform::linux {

/// The Linux machine that the program runs on. Everything it tells is read afresh, by readers that keep what
/// is costly to find (open descriptors, which link is what). A source that cannot be read is listed by
/// `failures` until it can. Any thread.
class LinuxMachine final : public Machine {
public:
    using Options = MachineOptions;

    LinuxMachine() : LinuxMachine(Options()) {}
    explicit LinuxMachine(Options options);
    ~LinuxMachine() override;
    LinuxMachine(const LinuxMachine&) = delete;
    LinuxMachine& operator=(const LinuxMachine&) = delete;

    /// Starts to look now and then, on a thread of the lowest priority, for what the user could release at
    /// once on the documents' volume (caches and trash); what an earlier run found is known at once. Until a
    /// host calls this, nothing counts as releasable. Call it once, before others sample.
    void startReleasableScan(ScanPace pace = {});

    kern_return_t hostPageSize(std::uint64_t& size) override;
    kern_return_t hostVirtualMemory(vm_statistics64& record) override;
    kern_return_t hostCpuLoad(host_cpu_load_info& record) override;
    std::uint64_t physicalMemory() override;
    bool isiOSAppOnMac() override;
    std::optional<std::vector<InterfaceAddress>> interfaceAddresses() override;
    std::optional<NetworkTotals> networkTotals() override;
    std::shared_ptr<const std::vector<std::string>> documentDirectories() override;
    std::optional<VolumeCapacities> volumeCapacities(const std::string& path) override;
    std::vector<SourceFailure> failures() override;

private:
    const Options m_options;
    FailureBoard m_failures;
    MemoryReader m_memory;
    ProcessorReader m_processor;
    InterfaceReader m_interfaces;
    std::shared_ptr<LocalPaths> m_paths;
    std::unique_ptr<ReleasableScan> m_releasable;
    VolumeReader m_volume;
    std::string m_documents;
    std::shared_ptr<const std::vector<std::string>> m_documentFolders; ///< none or `m_documents`
};

} // namespace vantor::platform::linux
