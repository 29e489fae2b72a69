// SPDX-License-Identifier: MIT
#pragma once

#include "platform/simulated/SimulatedMachine.hpp"

namespace vantor::platform {

/// The machine of --demo: a laptop of 16 GiB and 512 GB with Wi-Fi and a modem whose figures drift up and
/// down. What it answers depends on nothing but how often it was asked, so the same run gives the same
/// picture to the byte.
class DemoMachine final : public SimulatedMachine {
public:
    DemoMachine();
};

} // namespace vantor::platform
