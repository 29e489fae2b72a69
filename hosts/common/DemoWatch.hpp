// SPDX-License-Identifier: MIT
#pragma once

#include "platform/remote/MachineWatch.hpp"
#include "platform/simulated/SimulatedFleet.hpp"
#include "platform/time/NSTimer.hpp"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace vantor::hosts::common {

/// One machine of the made-up fleet, opened: it goes on to tell what the wall would, as often. Main thread.
class DemoWatch final : public platform::remote::MachineWatch {
public:
    /// The fleet has been started, and outlives this.
    DemoWatch(const platform::SimulatedFleet& fleet, std::string_view key);
    ~DemoWatch() override;

    void start() override;
    [[nodiscard]] const platform::remote::NodeState& state() const override { return m_state; }
    void setHandler(std::function<void()> handler) override { m_handler = std::move(handler); }

private:
    void take();

    const platform::SimulatedFleet& m_fleet;
    const std::string m_key;
    std::uint64_t m_tick;
    platform::remote::NodeState m_state;
    std::shared_ptr<platform::NSTimer> m_timer;
    std::function<void()> m_handler;
};

} // namespace vantor::hosts::common
