// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/kernel/KernelFile.hpp"
#include "platform/linux/kernel/KernelTree.hpp"

#include <chrono>
#include <cstdint>
#include <optional>
#include <vector>

namespace vantor::platform::linux {

/// The RAM that the machine's compressed memory disks (zram) take. Not for several threads at once.
class ZramReader {
public:
    explicit ZramReader(const KernelTree& tree) : m_tree(tree) {}

    /// Bytes in use now; a disk that cannot be read counts as none. Which disks there are is looked up once a
    /// minute only: the folder may list thousands, and a new zram disk starts out empty.
    [[nodiscard]] std::uint64_t used(std::chrono::nanoseconds now);

private:
    void findDisks();

    const KernelTree& m_tree;
    std::vector<KernelFile> m_disks;
    std::optional<std::chrono::nanoseconds> m_looked;
};

} // namespace vantor::platform::linux
