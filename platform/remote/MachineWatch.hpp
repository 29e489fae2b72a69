// SPDX-License-Identifier: MIT
#pragma once

#include "platform/remote/readings/Figures.hpp"

#include <chrono>
#include <functional>
#include <optional>
#include <string>

namespace vantor::platform::remote {

/// What is known of another machine.
struct NodeState {
    std::optional<NodeFigures> figures; ///< of the last two readings; absent before there were two
    std::chrono::nanoseconds taken{};   ///< when the last reading came, on the steady clock
    std::string problem;                ///< why the last question brought none; empty while it is up
    std::optional<std::chrono::system_clock::time_point>
        downSince; ///< the first question in vain of this row
};

/// Asks for one machine again and again, wherever its figures come from: what a RemoteMachine is fed by. Its
/// figures always have memory. Main thread.
class MachineWatch {
public:
    MachineWatch() = default;
    virtual ~MachineWatch() = default;
    MachineWatch(const MachineWatch&) = delete;
    MachineWatch& operator=(const MachineWatch&) = delete;

    virtual void start() = 0;
    [[nodiscard]] virtual const NodeState& state() const = 0;
    /// Called on the main thread after each change of the state.
    virtual void setHandler(std::function<void()> handler) = 0;
};

} // namespace vantor::platform::remote
