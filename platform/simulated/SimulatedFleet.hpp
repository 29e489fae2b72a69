// SPDX-License-Identifier: MIT
#pragma once

#include "platform/fleet/FleetSnapshot.hpp"
#include "platform/time/NSTimer.hpp"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>

namespace vantor::platform {

/// The machines of --demo-fleet: databases, web servers and the like with labels, of which few are full,
/// down, stale or tell nothing, and whose figures drift up and down every five seconds. What they tell
/// depends on nothing but how many there are and how often they were asked; only their moments are those of
/// the clocks. Main thread.
class SimulatedFleet final : public FleetSource {
public:
    static constexpr std::chrono::seconds interval{5};

    explicit SimulatedFleet(std::size_t count) : m_count(count) {}
    ~SimulatedFleet() override { pause(); }

    void start() override;
    void pause() override;
    [[nodiscard]] std::shared_ptr<const FleetSnapshot> snapshot() const override { return m_snapshot; }
    [[nodiscard]] bool isSettled() const override { return m_snapshot != nullptr; }
    void setHandler(std::function<void()> handler) override { m_handler = std::move(handler); }

    /// How often it was asked so far.
    [[nodiscard]] std::uint64_t ticks() const { return m_ticks; }
    /// What a machine tells when it is asked for that time, whether or not the fleet is. Absent where there
    /// is none of that key, or before the start.
    [[nodiscard]] std::optional<FleetMachine> machineAt(std::string_view key, std::uint64_t tick) const;

private:
    void tick();
    void tell(FleetMachine& machine, std::uint64_t number, std::uint64_t tick) const;

    std::size_t m_count;
    std::uint64_t m_ticks = 0;
    std::chrono::system_clock::time_point m_started;
    std::shared_ptr<const FleetSnapshot> m_first; ///< names and labels, ordered
    std::shared_ptr<const FleetSnapshot> m_snapshot;
    std::shared_ptr<NSTimer> m_timer;
    std::function<void()> m_handler;
};

} // namespace vantor::platform
