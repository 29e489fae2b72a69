// SPDX-License-Identifier: MIT
#pragma once

#include "platform/remote/fetch/Fetcher.hpp"
#include "platform/remote/fetch/NodeAddress.hpp"
#include "platform/remote/readings/Figures.hpp"
#include "platform/time/NSTimer.hpp"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace vantor::platform::remote {

/// What is known of a node.
struct NodeState {
    std::optional<NodeFigures> figures; ///< of the last two readings; absent before there were two
    std::chrono::nanoseconds taken{};   ///< when the last reading came, on the steady clock
    std::string problem;                ///< why the last question brought none; empty while it is up
    bool wasRefused = false;            ///< nobody listens there
    std::optional<std::chrono::system_clock::time_point>
        downSince; ///< the first question in vain of this row
};

/// Asks an exporter again and again: twice a second apart, so that there are rates, then at an interval; a
/// node that does not answer after 1, 2, 4 … 60 seconds, each a fifth more or less, so that many do not ask
/// at once. One question at a time. Main thread; answers are parsed on the fetcher's.
class NodeWatch {
public:
    static constexpr std::chrono::milliseconds secondQuestion{1000};
    static constexpr std::chrono::milliseconds usualInterval{5000};

    /// The fetcher must outlive the watch and all that it was asked.
    NodeWatch(NodeAddress address, Fetcher& fetcher, std::chrono::milliseconds interval = usualInterval,
              std::shared_ptr<const Access> access = nullptr);
    ~NodeWatch();
    NodeWatch(const NodeWatch&) = delete;
    NodeWatch& operator=(const NodeWatch&) = delete;

    /// Called on the main thread after each change of the state.
    void setHandler(std::function<void()> handler) { m_handler = std::move(handler); }
    void start();

    [[nodiscard]] const NodeAddress& address() const { return m_address; }
    [[nodiscard]] const NodeState& state() const { return m_state; }

private:
    struct Told {
        std::optional<Reading> reading;
        std::string problem;
        bool wasRefused = false;
        bool isFilterUnknown = false;
    };

    [[nodiscard]] static Told toldBy(const FetchAnswer& answer, bool isFiltered);
    void ask();
    void askAfter(std::chrono::duration<double> time);
    void take(Told told);
    void takeReading(Reading reading);

    NodeAddress m_address;
    Fetcher& m_fetcher;
    std::chrono::milliseconds m_interval;
    std::shared_ptr<const Access> m_access;
    std::function<void()> m_handler;
    NodeState m_state;
    std::optional<Reading> m_last;
    bool m_isFiltered; ///< only the collectors that are needed are asked for
    int m_inVain = 0;
    std::shared_ptr<NSTimer> m_timer;
    std::shared_ptr<NodeWatch*> m_self; ///< null once the watch has gone
};

} // namespace vantor::platform::remote
