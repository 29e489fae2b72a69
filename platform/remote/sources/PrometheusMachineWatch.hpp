// SPDX-License-Identifier: MIT
#pragma once

#include "platform/remote/BackOff.hpp"
#include "platform/remote/MachineWatch.hpp"
#include "platform/remote/fetch/Fetcher.hpp"
#include "platform/remote/sources/MachineMoments.hpp"
#include "platform/remote/sources/PrometheusOptions.hpp"
#include "platform/time/NSTimer.hpp"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace vantor::platform::remote {

/// Asks a Prometheus server for one of its machines: what time it is there, then all samples of the last
/// minutes. Its last two moments make the figures. As often as the server measures the machine, at least 5 s
/// apart, or as the user wants. Main thread; answers are parsed on the fetcher's.
class PrometheusMachineWatch final : public MachineWatch {
public:
    /// `key` is the machine's in the source's snapshot. The fetcher must outlive the watch.
    PrometheusMachineWatch(const PrometheusOptions& options, std::string_view key, Fetcher& fetcher);
    ~PrometheusMachineWatch() override;

    void start() override;
    [[nodiscard]] const NodeState& state() const override { return m_state; }
    void setHandler(std::function<void()> handler) override { m_handler = std::move(handler); }

private:
    void askTime();
    void askAfter(std::chrono::duration<double> time);
    void takeTime(double seconds, const std::string& problem);
    void takeMoments(const MachineMoments& moments, const std::string& problem);
    void takeReadings(const MachineMoments& moments);
    void fail(std::string problem, std::chrono::system_clock::time_point since);
    [[nodiscard]] std::chrono::system_clock::time_point localTime(double seconds) const;

    PrometheusOptions m_options;
    std::string m_matchers;
    Fetcher& m_fetcher;
    std::function<void()> m_handler;
    NodeState m_state;
    BackOff m_backOff;
    std::chrono::duration<double> m_interval{};
    Instant m_asked{}; ///< for the time
    double m_time = 0; ///< on the server's clock then, seconds since 1970
    std::shared_ptr<NSTimer> m_timer;
    std::shared_ptr<PrometheusMachineWatch*> m_self; ///< null once the watch has gone
};

} // namespace vantor::platform::remote
