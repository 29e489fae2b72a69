// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/HostMachine.hpp"
#include "platform/core/MakeForEver.hpp"

namespace vantor::tests {

/// Puts a demonstration in place for ever, in the environment's language: workers may be asking it when the
/// test ends.
inline void putDemoInPlace() {
    platform::makeForEver<hosts::common::HostMachine>(true);
}

} // namespace vantor::tests
