// SPDX-License-Identifier: MIT
#pragma once

#include "platform/machine/WorkloadControl.hpp"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string>

namespace vantor::platform::linux {

/// The files memory.reclaim of control groups (Documentation/admin-guide/cgroup-v2.rst). Any thread.
class ReclaimFile {
public:
    /// Asks the kernel for so many bytes of the group whose file that is, for the programs' own pages rather
    /// than for cache where the kernel can be asked so: those of Linux 6.1 take the number alone. A call with
    /// much to do cannot be interrupted within it, so ask for little.
    [[nodiscard]] ReclaimAnswer ask(const std::string& path, std::uint64_t bytes);

private:
    std::atomic<std::size_t> m_form{0}; ///< the first that the kernel may know
};

} // namespace vantor::platform::linux
