// SPDX-License-Identifier: MIT
#include "hosts/common/HostMachine.hpp"

#include "platform/linux/LinuxMachine.hpp"
#include "platform/linux/kernel/LocalPaths.hpp"
#include "platform/simulated/DemoMachine.hpp"

namespace vantor::hosts::common {

namespace {

std::unique_ptr<platform::Machine> machineFor(bool demo) {
    if (demo) {
        return std::make_unique<platform::DemoMachine>();
    }
    auto machine = std::make_unique<platform::linux::LinuxMachine>();
    machine->startReleasableScan(); // before anybody samples; a short run only takes up what an earlier one
                                    // found
    return machine;
}

} // namespace

HostMachine::HostMachine(bool demo, bool useLocale)
    : m_machine(machineFor(demo)), m_viewer(demo, useLocale) {}

bool isOnThisMachine(const std::string& path) {
    static auto& paths = *new platform::linux::LocalPaths(); // never destroyed: workers may still ask
    return paths.isLocal(path);
}

} // namespace vantor::hosts::common
