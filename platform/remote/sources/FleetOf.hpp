// SPDX-License-Identifier: MIT
#pragma once

#include "platform/fleet/FleetSnapshot.hpp"
#include "platform/time/NSTimer.hpp"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vantor::platform::remote {

/// Several sources as one: their machines one after the other, in the order in which the sources were given,
/// each of which has one origin. Main thread.
class FleetOf final : public FleetSource {
public:
    /// What it is called before it tells so itself.
    struct Part {
        FleetSource* source;
        std::string name;
    };

    /// They must outlive this, which takes their handlers.
    explicit FleetOf(std::vector<Part> parts);
    ~FleetOf() override;

    void start() override;
    void pause() override;
    [[nodiscard]] std::shared_ptr<const FleetSnapshot> snapshot() const override { return m_snapshot; }
    [[nodiscard]] bool isSettled() const override;
    void setHandler(std::function<void()> handler) override { m_handler = std::move(handler); }

private:
    void joinSoon();
    void join();

    std::vector<Part> m_parts;
    std::shared_ptr<const FleetSnapshot> m_snapshot;
    std::function<void()> m_handler;
    std::shared_ptr<NSTimer> m_joining;
    std::optional<Instant> m_joined;
};

} // namespace vantor::platform::remote
