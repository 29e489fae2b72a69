// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/kernel/KernelTree.hpp"
#include "platform/posix/Descriptor.hpp"

#include <string>

namespace vantor::platform::linux {

/// Tells whether file systems were mounted or unmounted since it was last asked. The kernel flags that on an
/// open /proc/self/mountinfo (proc_pid_mountinfo(5)), so that nothing needs to be read. Not for several
/// threads at once.
class MountWatch {
public:
    explicit MountWatch(const KernelTree& tree) : m_path(tree.path("proc/self/mountinfo")) {}

    /// True also for the first question, and always where the file cannot be watched.
    [[nodiscard]] bool changed();

private:
    std::string m_path;
    posix::Descriptor m_descriptor;
};

} // namespace vantor::platform::linux
