// SPDX-License-Identifier: MIT
#pragma once

#include "platform/fleet/FleetSnapshot.hpp"
#include "platform/remote/NodeProgress.hpp"
#include "platform/time/RunLoop.hpp"

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vantor::platform::remote {

/// An exporter to be asked, and what its list says about it.
struct NodeTarget {
    NodeAddress address;
    std::shared_ptr<const Access> access = {};
    /// Ordered by name, printable; may be null.
    std::shared_ptr<const std::vector<std::pair<std::string, std::string>>> labels = {};
};

/// One of many exporters, and what is known of it. Main thread.
class WatchedNode {
public:
    WatchedNode(NodeTarget target, std::chrono::milliseconds interval);

    /// Takes an answer up; the next question is due after it.
    void take(NodeTold told);
    /// Its list says something else about the same address.
    void describe(const NodeTarget& target);
    /// What a wall shows of it, under the name that it goes by.
    [[nodiscard]] FleetMachine machine(const std::string& name) const;
    /// Whether it has told figures or failed to.
    [[nodiscard]] bool isSettled() const;

    [[nodiscard]] const NodeTarget& target() const { return m_target; }
    [[nodiscard]] const NodeProgress& progress() const { return m_progress; }
    [[nodiscard]] NodeProgress& progress() { return m_progress; }
    /// What the machine calls itself, where its address is no name: a number, or the end of a tunnel.
    [[nodiscard]] const std::string& ownName() const { return m_ownName; }

    Instant asked;              ///< when it was, last
    std::optional<Instant> due; ///< absent while a question is under way
    bool isGone = false;        ///< from the list, while it was asked

private:
    NodeTarget m_target;
    NodeProgress m_progress;
    std::string m_ownName;
    std::string m_volume;
    std::array<std::optional<double>, 5> m_figures;
    std::optional<std::chrono::nanoseconds> m_taken;
};

} // namespace vantor::platform::remote
