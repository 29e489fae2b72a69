// SPDX-License-Identifier: MIT
#include "hosts/common/HostMachine.hpp"

#include "platform/linux/LinuxMachine.hpp"
#include "platform/linux/kernel/KernelTree.hpp"
#include "platform/linux/kernel/LocalPaths.hpp"
#include "platform/linux/kernel/MountTable.hpp"
#include "platform/simulated/DemoMachine.hpp"

#include <sys/utsname.h>

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

platform::linux::LocalPaths& localPaths() {
    static auto& paths = *new platform::linux::LocalPaths(); // never destroyed: workers may still ask
    return paths;
}

} // namespace

HostMachine::HostMachine(bool demo, bool useLocale)
    : m_machine(machineFor(demo)), m_viewer(demo, useLocale), m_currentMachine(*m_machine) {}

HostMachine::HostMachine(platform::Machine& other, bool useLocale)
    : m_viewer(false, useLocale), m_currentMachine(other) {}

std::optional<std::string> askAbout(const std::string& path, const std::function<std::string()>& work) {
    return localPaths().ask(path, work);
}

bool isOnThisMachine(const std::string& path) {
    return localPaths().isLocal(path);
}

bool answers(const std::string& folder, std::chrono::milliseconds limit) {
    return localPaths().answers(folder, limit);
}

std::string machineName(bool demo) {
    utsname system{};
    return demo || ::uname(&system) != 0 ? std::string("demo") : std::string(system.nodename);
}

std::string storageMountPoint(bool demo) {
    if (demo) {
        return "/";
    }
    const auto folders = platform::currentMachine().documentDirectories();
    const platform::linux::MountTable mounts(
        platform::linux::KernelTree("/").read("proc/self/mountinfo").text);
    return folders->empty() ? std::string() : mounts.pointOf(folders->front());
}

} // namespace vantor::hosts::common
