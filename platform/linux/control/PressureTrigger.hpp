// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/kernel/KernelTree.hpp"
#include "platform/posix/Descriptor.hpp"

namespace vantor::platform::linux {

/// Tells that memory gets short: that some program stood still for want of it for a tenth of two seconds
/// (Documentation/accounting/psi.rst). Where the kernel watches for that it costs nothing meanwhile; kernels
/// that take no trigger from an ordinary user tell the average of ten seconds, and those without pressure
/// tell nothing. One thread at a time.
class PressureTrigger {
public:
    explicit PressureTrigger(KernelTree tree = KernelTree("/"));

    /// To be waited for with POLLPRI; -1: ask `isShort` every ten seconds instead.
    [[nodiscard]] int number() const { return m_descriptor.number(); }
    /// Whether memory is short: where there is a number, to be asked only by whom it has woken.
    [[nodiscard]] bool isShort();

private:
    const KernelTree m_tree;
    posix::Descriptor m_descriptor;
};

} // namespace vantor::platform::linux
