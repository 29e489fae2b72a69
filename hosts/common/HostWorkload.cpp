// SPDX-License-Identifier: MIT
#include "hosts/common/HostWorkload.hpp"

#include "platform/linux/control/LinuxWorkloadControl.hpp"
#include "platform/linux/workload/LinuxWorkload.hpp"
#include "platform/simulated/DemoWork.hpp"

namespace vantor::hosts::common {

namespace {

std::shared_ptr<platform::Workload> workloadFor(bool demo) {
    if (demo) {
        return std::make_shared<platform::DemoWork>();
    }
    return std::make_shared<platform::linux::LinuxWorkload>();
}

/// The demonstration's workload is its own control.
std::shared_ptr<platform::WorkloadControl> controlFor(const std::shared_ptr<platform::Workload>& workload) {
    if (auto demo = std::dynamic_pointer_cast<platform::DemoWork>(workload)) {
        return demo;
    }
    return std::make_shared<platform::linux::LinuxWorkloadControl>();
}

} // namespace

HostWorkload::HostWorkload(bool demo) : m_workload(workloadFor(demo)), m_control(controlFor(m_workload)) {}

} // namespace vantor::hosts::common
