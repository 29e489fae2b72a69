// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/HostMachine.hpp"

#include <memory>
#include <vector>

namespace vantor::tests {

/// Puts a demonstration in place, in the environment's language. Never destroyed, as in the program: workers
/// may be asking it when the test ends.
inline void putDemoInPlace() {
    static auto& demos = *new std::vector<std::unique_ptr<hosts::common::HostMachine>>;
    demos.push_back(std::make_unique<hosts::common::HostMachine>(true));
}

} // namespace vantor::tests
