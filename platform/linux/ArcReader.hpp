// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/figures/ArcStats.hpp"
#include "platform/linux/kernel/KernelFile.hpp"
#include "platform/linux/kernel/KernelTree.hpp"

#include <chrono>
#include <optional>

namespace vantor::platform::linux {

/// Reads what the cache of ZFS takes. Not for several threads at once.
class ArcReader {
public:
    explicit ArcReader(const KernelTree& tree)
        : m_file(tree.path("proc/spl/kstat/zfs/arcstats"), Shape::manyRecords) {}

    /// The cache now; absent where ZFS is not loaded, which is looked at again once a minute.
    [[nodiscard]] std::optional<ArcStats> read(std::chrono::nanoseconds now);

private:
    KernelFile m_file;
    std::optional<std::chrono::nanoseconds> m_missed; ///< when the file was last found missing
};

} // namespace vantor::platform::linux
