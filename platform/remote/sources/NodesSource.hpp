// SPDX-License-Identifier: MIT
#pragma once

#include "platform/fleet/FleetSnapshot.hpp"
#include "platform/remote/MachineWatch.hpp"
#include "platform/remote/sources/AnswerInbox.hpp"
#include "platform/time/NSTimer.hpp"

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vantor::platform::remote {

/// How long a snapshot of so many machines stands at least before the next one: fresh figures of a handful
/// are seen at once, and thousands do not make everything anew for each of theirs.
[[nodiscard]] std::chrono::milliseconds snapshotPace(std::size_t machines);

/// Many exporters asked directly, each when NodeProgress says so, and the first time spread over a moment, so
/// that a thousand do not ask at once. Answers are parsed on the fetcher's thread and taken up in bursts: a
/// snapshot each. A machine's key is its address. Main thread.
class NodesSource final : public FleetSource {
public:
    /// The fetcher must outlive the source. The name is printable.
    NodesSource(std::string name, Fetcher& fetcher,
                std::chrono::milliseconds interval = NodeProgress::usualInterval);
    ~NodesSource() override;

    /// Whom to ask: of those that were asked before, what is known is kept. Two of the same address are one.
    void watch(const std::vector<NodeTarget>& targets);
    /// What is wrong with the list, English and printable; empty where nothing is. Silent: there is no list.
    void complain(std::string problem, bool isSilent);

    void start() override;
    void pause() override;
    [[nodiscard]] std::shared_ptr<const FleetSnapshot> snapshot() const override { return m_snapshot; }
    [[nodiscard]] bool isSettled() const override;
    void setHandler(std::function<void()> handler) override { m_handler = std::move(handler); }

    /// A watch of the machine of that key alone, which goes on from what is known; null where there is none.
    [[nodiscard]] std::unique_ptr<MachineWatch> watchOf(std::string_view key) const;

private:
    void spread();
    void askDue();
    void ask(const std::shared_ptr<WatchedNode>& node);
    void gather();
    void takeAnswers();
    void publish();
    [[nodiscard]] FleetOrigin origin() const;

    FleetOrigin m_origin; ///< its name and problem
    Fetcher& m_fetcher;
    std::chrono::milliseconds m_interval;
    std::function<void()> m_handler;
    std::map<std::string, std::shared_ptr<WatchedNode>, std::less<>> m_nodes; ///< by address
    std::shared_ptr<AnswerInbox> m_inbox;
    std::shared_ptr<const FleetSnapshot> m_snapshot;
    std::shared_ptr<NSTimer> m_asking;
    std::shared_ptr<NSTimer> m_gathering;
    std::optional<Instant> m_gathered; ///< when answers were taken up, last
    bool m_isRunning = false;
    bool m_isKnown = false;               ///< whom to ask, or why nobody
    std::shared_ptr<NodesSource*> m_self; ///< null once the source has gone
};

} // namespace vantor::platform::remote
