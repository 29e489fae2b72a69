// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/figures/SplitCounter.hpp"
#include "platform/linux/records/TickScale.hpp"
#include "platform/machine/Machine.hpp"
#include "platform/remote/readings/Figures.hpp"

#include <array>
#include <memory>
#include <mutex>
#include <string>

namespace vantor::platform::remote {

/// Another machine behind the platform's calls. All answers come from memory, none waits for the network: a
/// reading comes in every few seconds, while the samplers ask when they please. So the last interval is
/// played again. Each question for the processor's ticks adds the interval's ticks once more, and each one
/// for the interfaces a second's worth of the interval's traffic: the shares and rates that are shown are
/// those of the interval, whenever they are asked for, and the counters never fall. The memory, the volume
/// and `networkTotals` are the last reading's own. Any thread.
class RemoteMachine final : public Machine {
public:
    /// Made with a first reading's figures: without a memory record the samplers cannot go on.
    explicit RemoteMachine(const NodeFigures& figures);

    /// Newer figures. What they lack has failed: its last figures stay, and `failures` names it.
    void show(const NodeFigures& figures);
    /// Another machine's first figures: nothing of the one before is kept but that counters never fall.
    void turnTo(const NodeFigures& figures);
    /// Nothing new can be had: every source has failed for this reason.
    void lose(const std::string& reason);

    kern_return_t hostPageSize(std::uint64_t& size) override;
    kern_return_t hostVirtualMemory(vm_statistics64& record) override;
    kern_return_t hostCpuLoad(host_cpu_load_info& record) override;
    std::uint64_t physicalMemory() override;
    bool isiOSAppOnMac() override { return false; }
    std::optional<std::vector<InterfaceAddress>> interfaceAddresses() override;
    std::optional<NetworkTotals> networkTotals() override;
    /// Where the fullest volume is mounted.
    std::shared_ptr<const std::vector<std::string>> documentDirectories() override;
    std::optional<VolumeCapacities> volumeCapacities(const std::string& path) override;
    std::vector<SourceFailure> failures() override;

private:
    /// What is shown, whole and unchanging.
    struct Shown {
        linux::MemorySplit memory;
        linux::ProcessorTimes processor;
        NodeRates network;
        std::optional<TrafficTotals> traffic;
        std::optional<VolumeCapacities> volume;
        std::shared_ptr<const std::vector<std::string>> folders;
        std::vector<SourceFailure> failures;
    };
    /// What a block of the global queue was told first holds for all that it asks: its four storage figures
    /// must be of one moment.
    struct Held {
        std::uint64_t workItem = 0;
        std::shared_ptr<const Shown> shown;
    };

    [[nodiscard]] static std::shared_ptr<const Shown> shownFrom(const NodeFigures& figures,
                                                                const Shown* before);
    [[nodiscard]] std::shared_ptr<const Shown> shown();

    std::mutex m_mutex;
    std::shared_ptr<const Shown> m_shown;
    std::array<Held, 8> m_held; ///< more than there are workers
    std::size_t m_nextHeld = 0;
    linux::TickScale m_scale;
    double m_received = 0; ///< bytes, of the seconds that were played
    double m_sent = 0;
    linux::SplitCounter m_receivedCounter;
    linux::SplitCounter m_sentCounter;
};

} // namespace vantor::platform::remote
