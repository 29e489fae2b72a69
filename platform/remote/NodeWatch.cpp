// SPDX-License-Identifier: MIT
#include "platform/remote/NodeWatch.hpp"

#include "platform/remote/readings/ReadingFrom.hpp"
#include "platform/time/RunLoop.hpp"

#include <algorithm>
#include <random>
#include <utility>

namespace vantor::platform::remote {

namespace {

/// A third of the exporter's work and of the bytes. Others are on by default since long, or fail alone.
constexpr std::string_view filter = "?collect[]=cpu&collect[]=meminfo&collect[]=filesystem&collect[]=netdev"
                                    "&collect[]=netclass&collect[]=uname&collect[]=stat&collect[]=zfs";
constexpr std::string_view accepted = "text/plain;version=0.0.4;q=0.9,*/*;q=0.1";
constexpr double longestWait = 60; // seconds

/// Absent for what is no exporter's answer: a page, a picture, JSON.
std::optional<ExpositionFormat> formatOf(const std::string& contentType) {
    if (contentType.starts_with("application/openmetrics-text")) {
        return ExpositionFormat::openMetrics;
    }
    const bool isText = contentType.empty() || contentType.starts_with("text/plain");
    return isText ? std::optional(ExpositionFormat::text) : std::nullopt;
}

/// Somewhere within a fifth of a time.
double scattered(double seconds) {
    static std::minstd_rand numbers{std::random_device()()};
    return seconds * std::uniform_real_distribution<double>(0.8, 1.2)(numbers);
}

} // namespace

NodeWatch::NodeWatch(NodeAddress address, Fetcher& fetcher, std::chrono::milliseconds interval,
                     std::shared_ptr<const Access> access)
    : m_address(std::move(address)),
      m_fetcher(fetcher),
      m_interval(interval),
      m_access(std::move(access)),
      m_isFiltered(m_address.url.find('?') == std::string::npos),
      m_self(std::make_shared<NodeWatch*>(this)) {}

NodeWatch::~NodeWatch() {
    *m_self = nullptr;
    if (m_timer != nullptr) {
        m_timer->invalidate();
    }
}

void NodeWatch::start() {
    ask();
}

void NodeWatch::ask() {
    FetchRequest request;
    request.url = m_address.url;
    request.url += m_isFiltered ? filter : "";
    request.accept = accepted;
    request.access = m_access;
    m_fetcher.fetch(std::move(request),
                    [self = m_self, isFiltered = m_isFiltered](const FetchAnswer& answer) {
                        auto told = std::make_shared<Told>(toldBy(answer, isFiltered));
                        RunLoop::main().post([self, told] {
                            if (*self != nullptr) {
                                (*self)->take(std::move(*told));
                            }
                        });
                    });
}

void NodeWatch::askAfter(std::chrono::duration<double> time) {
    m_timer = NSTimer::scheduledTimerWithTimeInterval(
        time.count(), [this] { ask(); }, false);
}

/// On the fetcher's thread.
NodeWatch::Told NodeWatch::toldBy(const FetchAnswer& answer, bool isFiltered) {
    constexpr int fine = 200;
    constexpr int badRequest = 400;
    Told told;
    if (!answer.problem.empty()) {
        told.problem = answer.problem;
        told.wasRefused = answer.wasRefused;
        return told;
    }
    if (answer.status != fine) {
        told.isFilterUnknown = isFiltered && answer.status == badRequest;
        told.problem = "it answers with status " + std::to_string(answer.status);
        return told;
    }
    const std::optional<ExpositionFormat> format = formatOf(answer.contentType);
    if (format) {
        told.reading = readingFrom(answer.body, *format, answer.taken);
    }
    if (!told.reading || told.reading->isEmpty()) {
        told.reading.reset();
        told.problem = "there is no node_exporter at this address";
    } else if (!told.reading->memory) {
        told.reading.reset();
        told.problem = "its node_exporter tells no memory figures";
    }
    return told;
}

void NodeWatch::take(Told told) {
    if (told.isFilterUnknown) { // a collector is switched off there
        m_isFiltered = false;
        ask();
        return;
    }
    if (told.reading) {
        takeReading(std::move(*told.reading));
    } else {
        m_state.problem = std::move(told.problem);
        m_state.wasRefused = told.wasRefused;
        if (!m_state.downSince) {
            m_state.downSince = std::chrono::system_clock::now();
        }
        constexpr int steps = 6;
        const double wait = std::min(longestWait, static_cast<double>(1 << std::min(m_inVain++, steps)));
        askAfter(std::chrono::duration<double>(scattered(wait)));
    }
    if (m_handler) {
        m_handler();
    }
}

void NodeWatch::takeReading(Reading reading) {
    m_inVain = 0;
    m_state.problem.clear();
    m_state.wasRefused = false;
    m_state.downSince.reset();
    m_state.taken = reading.taken;
    if (m_last) {
        m_state.figures = figuresBetween(*m_last, reading);
    }
    m_last = std::move(reading);
    askAfter(m_state.figures ? m_interval : secondQuestion);
}

} // namespace vantor::platform::remote
