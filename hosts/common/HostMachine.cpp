// SPDX-License-Identifier: MIT
#include "hosts/common/HostMachine.hpp"

#include "platform/linux/LinuxMachine.hpp"
#include "platform/linux/user/LinuxViewer.hpp"
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

std::unique_ptr<platform::Viewer> viewerFor(bool demo, bool useLocale) {
    platform::linux::ViewerOptions options;
    options.useLocale = useLocale;
    if (demo) {
        options.folders = {}; // the same pictures for everybody
    }
    return std::make_unique<platform::linux::LinuxViewer>(options);
}

} // namespace

HostMachine::HostMachine(bool demo, bool useLocale)
    : m_machine(machineFor(demo)), m_viewer(viewerFor(demo, useLocale)) {}

} // namespace vantor::hosts::common
