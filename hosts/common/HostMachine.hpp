// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/LinuxMachine.hpp"
#include "platform/simulated/DemoMachine.hpp"

#include <optional>

namespace vantor::hosts::common {

/// The machine that a host shows, in place while this lives: the one it runs on, or the demonstration's in
/// the same language. Make it first in main, after setlocale.
class HostMachine {
public:
    explicit HostMachine(bool demo, platform::linux::LinuxMachine::Options options = {});

    /// The machine in place.
    [[nodiscard]] platform::Machine& machine();

private:
    platform::linux::LinuxMachine m_linux;
    std::optional<platform::DemoMachine> m_demo;
    std::optional<platform::Current<platform::Machine>> m_scope;
};

} // namespace vantor::hosts::common
