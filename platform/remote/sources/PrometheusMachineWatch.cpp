// SPDX-License-Identifier: MIT
#include "platform/remote/sources/PrometheusMachineWatch.hpp"

#include "platform/remote/sources/FleetQuestions.hpp"
#include "platform/remote/sources/MachineTable.hpp"
#include "platform/remote/sources/ServerAnswer.hpp"
#include "platform/remote/sources/ServerRequest.hpp"
#include "platform/time/RunLoop.hpp"

#include <algorithm>
#include <utility>

namespace vantor::platform::remote {

namespace {

constexpr double leastInterval = 5; // seconds
constexpr double mostInterval = 60;
constexpr double patience = 5;
constexpr std::size_t mostSeries = 65536;

} // namespace

PrometheusMachineWatch::PrometheusMachineWatch(const PrometheusOptions& options, std::string_view key,
                                               Fetcher& fetcher)
    : m_options(options),
      m_matchers(machineMatchers(options, MachineTable::identityIn(key))),
      m_fetcher(fetcher),
      m_interval(options.every.value_or(std::chrono::duration<double>(leastInterval))),
      m_self(std::make_shared<PrometheusMachineWatch*>(this)) {}

PrometheusMachineWatch::~PrometheusMachineWatch() {
    *m_self = nullptr;
    if (m_timer != nullptr) {
        m_timer->invalidate();
    }
}

void PrometheusMachineWatch::start() {
    askTime();
}

void PrometheusMachineWatch::askAfter(std::chrono::duration<double> time) {
    m_timer = NSTimer::scheduledTimerWithTimeInterval(
        time.count(), [this] { askTime(); }, false);
}

void PrometheusMachineWatch::askTime() {
    m_asked = RunLoop::main().now();
    m_fetcher.fetch(serverRequest(m_options, "time()", std::nullopt, patience),
                    [self = m_self](const FetchAnswer& answer) {
                        double seconds = 0;
                        const ServerTold told =
                            readServerAnswer(answer, [&seconds](const AnswerSeries& scalar) {
                                seconds = scalar.points.front().value;
                            });
                        RunLoop::main().post([self, seconds, problem = told.problem] {
                            if (*self != nullptr) {
                                (*self)->takeTime(seconds, problem);
                            }
                        });
                    });
}

void PrometheusMachineWatch::takeTime(double seconds, const std::string& problem) {
    if (!problem.empty()) {
        fail(problem, std::chrono::system_clock::now());
        return;
    }
    m_time = seconds;
    m_fetcher.fetch(serverRequest(m_options, machineText(m_matchers), m_time, patience),
                    [self = m_self](const FetchAnswer& answer) {
                        std::vector<AnswerSeries> all;
                        const ServerTold told = readServerAnswer(answer, [&all](const AnswerSeries& series) {
                            if (all.size() < mostSeries) {
                                all.push_back(series);
                            }
                        });
                        auto moments = std::make_shared<MachineMoments>(
                            told.problem.empty() ? machineMoments(all) : MachineMoments());
                        RunLoop::main().post([self, moments, problem = told.problem] {
                            if (*self != nullptr) {
                                (*self)->takeMoments(*moments, problem);
                            }
                        });
                    });
}

void PrometheusMachineWatch::takeMoments(const MachineMoments& moments, const std::string& problem) {
    if (!problem.empty()) {
        fail(problem, std::chrono::system_clock::now());
    } else if (moments.downSince) {
        fail("its exporter does not answer the server", localTime(*moments.downSince));
    } else if (!moments.after) {
        fail("the server has no figures of it", std::chrono::system_clock::now());
    } else if (!moments.after->memory) {
        fail("its node_exporter tells no memory figures", std::chrono::system_clock::now());
    } else {
        takeReadings(moments);
    }
}

void PrometheusMachineWatch::takeReadings(const MachineMoments& moments) {
    m_backOff.reset();
    m_state.problem.clear();
    m_state.downSince.reset();
    const std::chrono::duration<double> age(std::max(0.0, m_time - moments.afterSeconds));
    m_state.taken = m_asked.time_since_epoch() - std::chrono::duration_cast<std::chrono::nanoseconds>(age);
    if (moments.before) {
        m_state.figures = figuresBetween(*moments.before, *moments.after);
        const double apart = moments.afterSeconds - moments.beforeSeconds;
        m_interval = m_options.every.value_or(
            std::chrono::duration<double>(std::clamp(apart, leastInterval, mostInterval)));
    }
    askAfter(m_interval);
    if (m_handler) {
        m_handler();
    }
}

/// The server's clock may be another than ours: only how long ago something was carries over.
std::chrono::system_clock::time_point PrometheusMachineWatch::localTime(double seconds) const {
    const std::chrono::duration<double> ago(std::max(0.0, m_time - seconds));
    return std::chrono::system_clock::now() -
           std::chrono::duration_cast<std::chrono::system_clock::duration>(ago);
}

/// A machine that is down is asked for as one that is up: the server is there, and the question is small.
void PrometheusMachineWatch::fail(std::string problem, std::chrono::system_clock::time_point since) {
    m_state.problem = std::move(problem);
    m_state.downSince = std::min(m_state.downSince.value_or(since), since);
    askAfter(m_backOff.next());
    if (m_handler) {
        m_handler();
    }
}

} // namespace vantor::platform::remote
