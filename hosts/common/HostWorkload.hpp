// SPDX-License-Identifier: MIT
#pragma once

#include "platform/machine/Workload.hpp"

#include <memory>

namespace vantor::hosts::common {

/// What the program's user runs on this machine, in place as the workload while this lives.
class HostWorkload {
public:
    HostWorkload();

private:
    std::unique_ptr<platform::Workload> m_workload;
    platform::Current<platform::Workload> m_current{*m_workload};
};

} // namespace vantor::hosts::common
