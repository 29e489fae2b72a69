// SPDX-License-Identifier: MIT
#pragma once

#include "platform/machine/Workload.hpp"

#include <vector>

namespace vantor::tests {

/// A workload whose answers are written down.
class FixedWorkload final : public platform::Workload {
public:
    std::optional<platform::Pressure> memoryPressure() override { return {}; }
    std::optional<platform::Pressure> processorPressure() override { return {}; }
    platform::ProcessorState processorState() override { return state; }
    std::optional<platform::SwapSpace> swapSpace() override { return {}; }
    std::vector<platform::ApplicationUse> applications(platform::ListedFor /*purpose*/) override {
        return uses;
    }
    platform::ApplicationDetail detail(const platform::ApplicationUse& /*application*/) override {
        return {};
    }

    std::vector<platform::ApplicationUse> uses;
    platform::ProcessorState state;
};

} // namespace vantor::tests
