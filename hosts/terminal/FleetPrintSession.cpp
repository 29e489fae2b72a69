// SPDX-License-Identifier: MIT
#include "hosts/terminal/FleetPrintSession.hpp"

#include "fleet/FleetTable.hpp"
#include "hosts/common/HeadlessLoop.hpp"
#include "hosts/terminal/ReportSink.hpp"
#include "hosts/terminal/formats/FleetReport.hpp"
#include "platform/time/RunLoop.hpp"

#include <algorithm>
#include <limits>

namespace vantor::hosts::terminal {

using platform::NSTimer;
using platform::RunLoop;

namespace {

constexpr double settlingSeconds = 30; // for all to answer or fail
constexpr double forEver = std::numeric_limits<std::int32_t>::max();

/// How often without being told: as often as there are new figures.
double secondsBetween(const Options& options, const platform::FleetSnapshot* snapshot) {
    double seconds = 5;
    if (snapshot != nullptr) {
        for (const platform::FleetOrigin& origin : snapshot->sources) {
            seconds = std::max(seconds, origin.interval.count());
        }
    }
    return options.watchSeconds.value_or(options.interval.value_or(seconds));
}

class FleetPrintSession {
public:
    FleetPrintSession(const Options& options, const common::FleetChoice& choice, common::FleetHost& fleet)
        : m_options(options), m_fleet(fleet), m_sink(options.output) {
        m_table.orderBy(fleet::orderNamed(choice.sort).value_or(fleet::FleetOrder::worst), {});
        m_table.groupBy(choice.groupBy, {});
    }

    int run() {
        platform::FleetSource& source = m_fleet.source();
        source.start();
        common::turnUntil([&source] { return source.isSettled(); }, settlingSeconds);
        print();
        if (m_options.watch && !m_sink.isClosed()) {
            watch();
        }
        source.pause();
        return m_isAnySilent || m_sink.hasFailed() ? 1 : 0;
    }

private:
    void watch() {
        const auto timer = NSTimer::scheduledTimerWithTimeInterval(
            secondsBetween(m_options, m_fleet.source().snapshot().get()), [this] { print(); }, true);
        common::turnUntil([this] { return m_sink.isClosed(); }, forEver,
                          [](platform::Instant now) { RunLoop::main().restartTimers(now); });
        timer->invalidate();
    }

    void print() {
        const std::chrono::nanoseconds now = std::chrono::steady_clock::now().time_since_epoch();
        m_table.take(m_fleet.source().snapshot(), now);
        m_isAnySilent = m_fleet.tellSilent("vantor-term") || m_table.snapshot() == nullptr;
        const FleetReport report{m_fleet.name(), m_table, now, std::chrono::system_clock::now()};
        const Format format = m_options.format.value_or(Format::text);
        m_sink.write(formatted(report, format), format == Format::text);
    }

    const Options& m_options;
    common::FleetHost& m_fleet;
    ReportSink m_sink;
    fleet::FleetTable m_table;
    bool m_isAnySilent = false; ///< at the last report
};

} // namespace

int printFleet(const Options& options, const common::FleetChoice& choice, common::FleetHost& fleet) {
    return FleetPrintSession(options, choice, fleet).run();
}

} // namespace vantor::hosts::terminal
