// SPDX-License-Identifier: MIT
#pragma once

#include "platform/remote/NodeProgress.hpp"
#include "platform/time/NSTimer.hpp"

#include <chrono>
#include <functional>
#include <memory>

namespace vantor::platform::remote {

/// Asks an exporter again and again, when NodeProgress says so, one question at a time. Main thread; answers
/// are parsed on the fetcher's.
class NodeWatch final : public MachineWatch {
public:
    /// The fetcher must outlive the watch and all that it was asked.
    NodeWatch(NodeAddress address, Fetcher& fetcher,
              std::chrono::milliseconds interval = NodeProgress::usualInterval,
              std::shared_ptr<const Access> access = nullptr);
    ~NodeWatch() override;

    /// Before the start: what is known already, so that the state has figures, and the first answer rates.
    void goOnFrom(const NodeProgress& progress) { m_progress = progress; }
    void start() override;
    void setHandler(std::function<void()> handler) override { m_handler = std::move(handler); }
    [[nodiscard]] const NodeState& state() const override { return m_progress.state(); }

private:
    void ask();
    void take(NodeTold told);

    NodeAddress m_address;
    Fetcher& m_fetcher;
    std::shared_ptr<const Access> m_access;
    std::function<void()> m_handler;
    NodeProgress m_progress;
    std::shared_ptr<NSTimer> m_timer;
    std::shared_ptr<NodeWatch*> m_self; ///< null once the watch has gone
};

} // namespace vantor::platform::remote
