// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/kernel/KernelTree.hpp"
#include "platform/linux/workload/DesktopEntries.hpp"
#include "platform/linux/workload/GroupReader.hpp"
#include "platform/linux/workload/ProcessReader.hpp"
#include "platform/linux/workload/ProportionalMemory.hpp"
#include "platform/machine/Workload.hpp"
#include "platform/posix/UserFolders.hpp"

#include <sys/types.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace vantor::platform::linux {

/// What a LinuxWorkload is made of. The default is what the program's own user runs on this machine.
struct WorkloadOptions {
    KernelTree tree{"/"};
    uid_t user = ::getuid();
    std::uint64_t ticksPerSecond = static_cast<std::uint64_t>(std::max(::sysconf(_SC_CLK_TCK), 1L));
    std::vector<std::string> entryFolders =
        DesktopEntries::foldersOf(posix::UserFolders::fromEnvironment().data);
};

/// What runs on the Linux machine: control groups where the desktop makes one for each application, else
/// processes, whose memory is then their anonymous and shared pages. Pages which several processes have in
/// common count for each of them at first; where somebody goes on asking, the global queue's workers count
/// them by parts, a few processes with each question. Any thread.
class LinuxWorkload final : public Workload {
public:
    explicit LinuxWorkload(WorkloadOptions options = {})
        : m_options(std::move(options)),
          m_entries(m_options.entryFolders, m_options.tree),
          m_groups(m_options.tree, m_options.user),
          m_processes(m_options.tree, m_options.user),
          m_memory(std::make_shared<ProportionalMemory>(m_options.tree)) {}

    std::optional<Pressure> memoryPressure() override;
    std::optional<Pressure> processorPressure() override;
    ProcessorState processorState() override;
    std::optional<SwapSpace> swapSpace() override;
    std::vector<ApplicationUse> applications(ListedFor purpose) override;
    ApplicationDetail detail(const ApplicationUse& application) override;

private:
    const WorkloadOptions m_options;
    std::mutex m_mutex; // guards the next three
    DesktopEntries m_entries;
    GroupReader m_groups;
    ProcessReader m_processes;
    const std::shared_ptr<ProportionalMemory> m_memory; ///< which workers may outlive this with
};

} // namespace vantor::platform::linux
