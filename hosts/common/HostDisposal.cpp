// SPDX-License-Identifier: MIT
#include "hosts/common/HostDisposal.hpp"

#include "platform/linux/removal/LinuxDisposal.hpp"

namespace vantor::hosts::common {

HostDisposal::HostDisposal() : m_disposal(std::make_unique<platform::linux::LinuxDisposal>()) {}

} // namespace vantor::hosts::common
