// SPDX-License-Identifier: MIT
#pragma once

#include "platform/fleet/FleetSnapshot.hpp"
#include "platform/time/NSTimer.hpp"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace vantor::platform::remote {

/// Several sources as one: their machines one after the other, in the order in which the sources were given.
/// Main thread.
class FleetOf final : public FleetSource {
public:
    /// They must outlive this, which takes their handlers.
    explicit FleetOf(std::vector<FleetSource*> sources);
    ~FleetOf() override;

    void start() override;
    void pause() override;
    [[nodiscard]] std::shared_ptr<const FleetSnapshot> snapshot() const override { return m_snapshot; }
    [[nodiscard]] bool isSettled() const override;
    void setHandler(std::function<void()> handler) override { m_handler = std::move(handler); }

private:
    void joinSoon();
    void join();

    std::vector<FleetSource*> m_sources;
    std::shared_ptr<const FleetSnapshot> m_snapshot;
    std::function<void()> m_handler;
    std::shared_ptr<NSTimer> m_joining;
    std::optional<Instant> m_joined;
};

} // namespace vantor::platform::remote
