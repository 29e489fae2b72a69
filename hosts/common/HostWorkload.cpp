// SPDX-License-Identifier: MIT
#include "hosts/common/HostWorkload.hpp"

#include "platform/linux/workload/LinuxWorkload.hpp"

namespace vantor::hosts::common {

HostWorkload::HostWorkload() : m_workload(std::make_unique<platform::linux::LinuxWorkload>()) {}

} // namespace vantor::hosts::common
