// SPDX-License-Identifier: MIT
#pragma once

#include "platform/machine/WorkloadControl.hpp"

#include <memory>

namespace vantor::hosts::common {

/// What the program's user runs on this machine, and may have done to it, both in place while this lives.
class HostWorkload {
public:
    /// `demo`: a workload that is made up, of which nothing real is ever ended or moved.
    explicit HostWorkload(bool demo = false);

private:
    std::shared_ptr<platform::Workload> m_workload;
    std::shared_ptr<platform::WorkloadControl> m_control;
    platform::Current<platform::Workload> m_currentWorkload{*m_workload};
    platform::Current<platform::WorkloadControl> m_currentControl{*m_control};
};

} // namespace vantor::hosts::common
