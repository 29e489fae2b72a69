// SPDX-License-Identifier: MIT
#pragma once

#include "platform/fleet/FleetSnapshot.hpp"

#include <memory>
#include <string>
#include <utility>

namespace vantor::hosts::common {

/// A source that could not be opened: silent for good, without machines, with the reason. Beside others it
/// tells a wall's reader, and a report's, that a part is missing.
class ShutSource final : public platform::FleetSource {
public:
    /// Both printable.
    ShutSource(std::string name, std::string problem) {
        platform::FleetOrigin& origin = m_snapshot->sources.emplace_back();
        origin.name = std::move(name);
        origin.problem = std::move(problem);
        origin.isSilent = true;
    }
    void start() override {}
    void pause() override {}
    [[nodiscard]] std::shared_ptr<const platform::FleetSnapshot> snapshot() const override {
        return m_snapshot;
    }
    [[nodiscard]] bool isSettled() const override { return true; }
    void setHandler(std::function<void()> /*handler*/) override {}

private:
    std::shared_ptr<platform::FleetSnapshot> m_snapshot = std::make_shared<platform::FleetSnapshot>();
};

} // namespace vantor::hosts::common
