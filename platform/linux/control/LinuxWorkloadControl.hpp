// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/control/ReclaimFile.hpp"
#include "platform/linux/kernel/KernelTree.hpp"

#include <sys/types.h>
#include <unistd.h>

namespace vantor::platform::linux {

/// What a LinuxWorkloadControl acts on.
struct ControlOptions {
    KernelTree tree{"/"};
    uid_t user = ::getuid();
};

/// What the program's user may have done to what runs on the Linux machine, with no more rights than anybody
/// has. Only groups below app.slice and background.slice are reclaimed from, since the desktop itself stands
/// still otherwise, and only those at the end of a branch: asked for an inner group, the kernel takes many
/// times what was asked for. Any thread.
class LinuxWorkloadControl final : public WorkloadControl {
public:
    explicit LinuxWorkloadControl(ControlOptions options = {}) : m_options(std::move(options)) {}

    std::optional<MemoryLevel> memoryLevel() override;
    bool hasGroups() override;
    std::vector<ReclaimableGroup> reclaimableGroups() override;
    std::optional<ReclaimableGroup> reclaimableGroup(const std::string& path) override;
    ReclaimAnswer reclaim(const std::string& path, std::uint64_t bytes) override;
    int ownNumber() override;
    std::optional<RunningProcess> process(int number) override;
    std::vector<int> processesIn(const std::string& group) override;
    std::unique_ptr<ProcessHandle> open(const RunningProcess& process) override;

private:
    [[nodiscard]] std::string reclaimPath(const std::string& group) const;

    const ControlOptions m_options;
    ReclaimFile m_reclaim;
};

} // namespace vantor::platform::linux
