// SPDX-License-Identifier: MIT
#pragma once

#include "platform/fleet/FleetSnapshot.hpp"
#include "platform/remote/BackOff.hpp"
#include "platform/remote/MachineWatch.hpp"
#include "platform/remote/fetch/Fetcher.hpp"
#include "platform/remote/sources/PrometheusOptions.hpp"
#include "platform/time/NSTimer.hpp"

#include <functional>
#include <memory>
#include <string_view>

namespace vantor::platform::remote {

class FleetRefresh;

/// The machines that a Prometheus server knows, or another engine with its HTTP API: asked in seven questions
/// or a few more, one after the other, at an interval that the server can bear; a silent server after a
/// growing pause. Answers are parsed and merged on the fetcher's thread, and a snapshot comes to the main one
/// whole. A machine's key holds the values of the identity's labels. Main thread.
class PrometheusSource final : public FleetSource {
public:
    /// The fetcher must outlive the source. Nothing is wrong with the options (problemWith).
    PrometheusSource(const PrometheusOptions& options, Fetcher& fetcher);
    ~PrometheusSource() override;

    void start() override;
    void pause() override;
    [[nodiscard]] std::shared_ptr<const FleetSnapshot> snapshot() const override { return m_snapshot; }
    [[nodiscard]] bool isSettled() const override { return m_snapshot != nullptr; }
    void setHandler(std::function<void()> handler) override { m_handler = std::move(handler); }

    /// A watch of the machine of that key alone, by the same server; null where there is none.
    [[nodiscard]] std::unique_ptr<MachineWatch> watchOf(std::string_view key) const;

private:
    void refresh();
    void ask();
    void take();

    PrometheusOptions m_options;
    Fetcher& m_fetcher;
    std::function<void()> m_handler;
    std::shared_ptr<FleetRefresh> m_refresh; ///< the fetcher's thread has it while it is asked
    std::shared_ptr<const FleetSnapshot> m_snapshot;
    std::shared_ptr<NSTimer> m_timer;
    BackOff m_backOff;
    Instant m_begun{};            ///< the refresh
    std::optional<Instant> m_due; ///< the next one
    bool m_isRunning = false;
    bool m_isAsked = false;                    ///< a question is under way
    std::shared_ptr<PrometheusSource*> m_self; ///< null once the source has gone
};

} // namespace vantor::platform::remote
