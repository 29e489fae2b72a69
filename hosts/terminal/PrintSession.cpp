// SPDX-License-Identifier: MIT
#include "hosts/terminal/PrintSession.hpp"

#include "controller/ReportInterface.hpp"
#include "hosts/common/Complaints.hpp"
#include "hosts/common/Failures.hpp"
#include "hosts/common/HeadlessLoop.hpp"
#include "hosts/common/HostMachine.hpp"
#include "hosts/terminal/ReportSink.hpp"
#include "hosts/terminal/TimedSources.hpp"
#include "hosts/terminal/formats/Formats.hpp"
#include "settings/SharedStore.hpp"

#include <chrono>
#include <cmath>
#include <functional>
#include <limits>
#include <memory>
#include <set>
#include <utility>

namespace vantor::hosts::terminal {

using platform::NSTimer;
using platform::RunLoop;

namespace {

constexpr double rateSeconds = 1.0;   // what the shares and rates of the first reading cover
constexpr double patienceSeconds = 5; // for sources that do not answer
constexpr int failureStatus = 1;

using Resumed = std::function<void(platform::Instant now)>;
using TurnUntil =
    std::function<bool(const std::function<bool()>& done, double atMost, const Resumed& resumed)>;

Reading::Remote remoteOf(const common::RemoteNode& node) {
    const common::NodeMoment moment = node.moment();
    return {node.heading(), !moment.downSince, moment.sampled, moment.interval, moment.age};
}

/// Drives the widget so that a reading's shares and rates cover the time since the reading before: its own
/// interval timer is stopped, its network timer ticks on.
class PrintSession {
public:
    PrintSession(const Options& options, const common::RemoteNode* node, TurnUntil turnUntil)
        : m_options(options),
          m_node(node),
          m_host(node != nullptr ? node->name() : common::machineName(options.demo)),
          m_turnUntil(std::move(turnUntil)) {}

    int run() {
        m_complaints.tellStore();
        m_controller->setReportHandler([this](platform::Source source) { took(source); });
        m_controller->view();
        const auto interval = m_controller->refreshTime()->timeInterval();
        m_controller->refreshTime()->invalidate();
        m_controller->reportNETWORKStatus(); // the first tick only notes the counters: have it now
        m_start = RunLoop::main().now();
        const bool hasRates = needs(platform::Source::processor) || needs(platform::Source::network);
        const auto first = NSTimer::scheduledTimerWithTimeInterval(
            hasRates ? rateSeconds : 0,
            [this, interval] {
                ask();
                if (m_options.watch) {
                    NSTimer::scheduledTimerWithTimeInterval(
                        m_options.watchSeconds.value_or(m_options.interval.value_or(interval)),
                        [this] { ask(); }, true);
                }
            },
            false);
        m_turnUntil([this] { return m_ended; },
                    m_options.watch ? std::numeric_limits<std::int32_t>::max()
                                    : rateSeconds + patienceSeconds,
                    [this](platform::Instant now) {
                        m_controller->resumeReports(); // no rate covers the pause
                        RunLoop::main().restartTimers(now);
                    });
        if (!m_ended) {
            print(); // what there is
        }
        m_controller->setReportHandler({});
        return m_status;
    }

private:
    /// What a reading waits for: the sections with a ring, or the one of them that it is about.
    [[nodiscard]] std::set<platform::Source> timed() const {
        std::set<platform::Source> sources = timedSources();
        if (m_options.field) {
            std::erase_if(sources, [this](platform::Source source) { return source != *m_options.field; });
        }
        return sources;
    }
    /// Whether a reading holds what is counted over a time: the network's rates, the processor's shares.
    [[nodiscard]] bool needs(platform::Source source) const {
        return !m_options.field || *m_options.field == source;
    }

    void ask() {
        m_asked = true;
        m_missing = timed();
        m_controller->makeReports();
    }

    void took(platform::Source source) {
        const ReportRecords& records = m_controller->records();
        if (source == platform::Source::processor && std::isnan(records.processor->idle)) {
            return; // no tick passed; the widget has asked again by itself
        }
        if (source != platform::Source::network && m_asked) {
            m_missing.erase(source);
        }
        const bool hasRates =
            !needs(platform::Source::network) || (records.network && !records.network->isFirst);
        if (m_asked && m_missing.empty() && hasRates && !m_ended) {
            m_missing = timed();
            print();
        }
    }

    [[nodiscard]] std::chrono::system_clock::time_point time() const {
        if (!m_options.demo || m_options.watch) {
            return std::chrono::system_clock::now();
        }
        using Clock = std::chrono::system_clock;
        constexpr std::chrono::sys_days demoDay = std::chrono::year(2024) / 1 / 1;
        return demoDay + std::chrono::duration_cast<Clock::duration>(RunLoop::main().now() - m_start);
    }

    [[nodiscard]] std::string mountPoint() const {
        if (m_node == nullptr) {
            return common::storageMountPoint(m_options.demo);
        }
        const auto folders = platform::currentMachine().documentDirectories();
        return folders->empty() ? std::string() : folders->front(); // another machine names the volume itself
    }

    void print() {
        Reading reading = readingOf(*m_controller, hosts::common::currentFailures(), time());
        reading.host = m_host;
        reading.mountPoint = mountPoint();
        if (m_node != nullptr) {
            reading.remote = remoteOf(*m_node);
        }
        m_complaints.tell(reading.failures);
        m_status = reading.failures.empty() ? 0 : failureStatus;
        const Format format = m_options.format.value_or(Format::text);
        m_sink.write(formatted(reading, format, m_options.field), format == Format::text && !m_options.field);
        m_status = m_sink.hasFailed() ? failureStatus : m_status;
        m_ended = m_sink.isClosed() || !m_options.watch;
    }

    const Options& m_options;
    const common::RemoteNode* m_node;
    const std::string m_host;
    TurnUntil m_turnUntil;
    ReportSink m_sink{m_options.output};
    hosts::common::Complaints m_complaints{"vantor-term"};
    std::shared_ptr<TEReportTableViewController> m_controller = ReportInterface::instantiate();
    platform::Instant m_start;
    std::set<platform::Source> m_missing; // not yet reported since the last question
    bool m_asked = false;                 // what came before tells of the time since boot
    bool m_ended = false;
    int m_status = 0;
};

} // namespace

int printReadings(const Options& options, const common::RemoteNode* node) {
    if (options.demo && !options.watch) {
        hosts::common::VirtualTime time;
        const auto turn = [&](const auto& done, double atMost, const Resumed&) {
            return time.turnUntil(done, atMost);
        };
        return PrintSession(options, node, turn).run();
    }
    return PrintSession(options, node, hosts::common::turnUntil).run();
}

} // namespace vantor::hosts::terminal
