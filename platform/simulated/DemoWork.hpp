// SPDX-License-Identifier: MIT
#pragma once

#include "platform/simulated/SimulatedWork.hpp"

namespace vantor::platform {

/// What runs on the machine of --demo: some applications that a person knows, on eight processors. What it
/// answers depends on nothing but how often it was asked, and what was done to it.
class DemoWork final : public SimulatedWork {
public:
    DemoWork();
};

} // namespace vantor::platform
