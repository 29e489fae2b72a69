// SPDX-License-Identifier: MIT
#pragma once

#include "platform/fleet/FleetSnapshot.hpp"
#include "platform/remote/sources/MachineTable.hpp"
#include "platform/remote/sources/PrometheusOptions.hpp"
#include "platform/remote/sources/ServerAnswer.hpp"

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vantor::platform::remote {

/// The questions of one refresh after the other, all of one moment on the server's clock, and the snapshot
/// that comes of them. For whoever asks: one question at a time, `request` and `take` in turn until `isDone`.
/// Any thread, one at a time.
class FleetRefresh {
public:
    explicit FleetRefresh(PrometheusOptions options);

    /// Begins anew. `now` is the time on the steady clock.
    void begin(std::chrono::nanoseconds now);
    [[nodiscard]] FetchRequest request() const;
    void take(const FetchAnswer& answer);
    [[nodiscard]] bool isDone() const { return m_next == m_plan.size(); }

    /// Of the last whole refresh; with the problem where the server has been silent since. Null before
    /// either.
    [[nodiscard]] const std::shared_ptr<const FleetSnapshot>& snapshot() const { return m_snapshot; }
    [[nodiscard]] bool isSilent() const { return m_isSilent; }
    /// From the beginning of one refresh to the next: what the user wants, else the time between the server's
    /// own questions, at least 15 s, and a minute for more than a thousand machines.
    [[nodiscard]] std::chrono::duration<double> interval() const;

private:
    void plan();
    void takeSpacing(const AnswerSeries& series);
    void takeRows(FleetQuestion question, const MachineTable::Rows& rows);
    void doubt(std::string what);
    void fallSilent(std::string problem);
    void finish();
    [[nodiscard]] FleetOrigin origin() const;

    PrometheusOptions m_options;
    MachineTable m_table;
    std::vector<FleetQuestion> m_plan;
    std::size_t m_next = 0;
    std::size_t m_refreshes = 0;
    std::chrono::nanoseconds m_asked{}; ///< when the refresh began
    std::optional<double> m_time;       ///< its moment on the server's clock, seconds since 1970
    std::optional<double> m_spacing;    ///< seconds between two readings of a machine
    std::optional<double> m_delay;      ///< seconds that the youngest reading of all has been old, at least
    std::size_t m_ambiguous = 0;        ///< identities that several machines share
    bool m_isPartial = false;
    bool m_lacksAnswer = false; ///< to the last question
    bool m_isSilent = false;
    std::vector<std::string> m_doubts;
    std::shared_ptr<const FleetSnapshot> m_snapshot;
};

} // namespace vantor::platform::remote
