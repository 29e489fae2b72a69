// SPDX-License-Identifier: MIT
#pragma once

#include "platform/machine/WorkloadControl.hpp"
#include "platform/posix/Descriptor.hpp"

#include <utility>

namespace vantor::platform::linux {

/// A process by its descriptor (pidfd_open(2), Linux 5.3), whose number cannot come to stand for another one.
class ProcessHold final : public ProcessHandle {
public:
    /// Whatever process has that number now; `isOpen` is false where there is none, or no such call. Only
    /// what is read of the process after this is known to be of the one that is held.
    explicit ProcessHold(int number);

    [[nodiscard]] bool isOpen() const { return m_descriptor.isOpen(); }
    std::string signal(EndSignal which) override;
    bool isRunning() override;

private:
    posix::Descriptor m_descriptor;
};

} // namespace vantor::platform::linux
