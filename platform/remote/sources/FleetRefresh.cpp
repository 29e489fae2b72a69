// SPDX-License-Identifier: MIT
#include "platform/remote/sources/FleetRefresh.hpp"

#include "platform/remote/sources/ServerRequest.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

namespace vantor::platform::remote {

namespace {

constexpr double leastInterval = 15;  // seconds
constexpr double manyInterval = 60;   // seconds
constexpr std::size_t many = 1000;    // machines
constexpr double mostDelay = 60;      // seconds that an engine may hold its readings back
constexpr std::size_t lookAgain = 20; // refreshes after which what rarely changes is asked for again

/// The middle one of the times between samples: one scrape that was lost does not change it.
std::optional<double> spacingOf(const std::vector<AnswerSeries::Point>& points) {
    std::vector<double> gaps;
    for (std::size_t i = 1; i < points.size(); ++i) {
        gaps.push_back(points[i].seconds - points[i - 1].seconds);
    }
    if (gaps.empty()) {
        return std::nullopt;
    }
    const auto middle = gaps.begin() + static_cast<std::ptrdiff_t>(gaps.size() / 2);
    std::ranges::nth_element(gaps, middle);
    return *middle > 0 ? std::optional(*middle) : std::nullopt;
}

std::string counted(std::size_t count, const char* one, const char* several) {
    return std::to_string(count) + ' ' + (count == 1 ? one : several);
}

} // namespace

FleetRefresh::FleetRefresh(PrometheusOptions options)
    : m_options(std::move(options)), m_table(m_options.identity) {}

std::chrono::duration<double> FleetRefresh::interval() const {
    if (m_options.every) {
        return *m_options.every;
    }
    const double usual = std::max(leastInterval, m_spacing.value_or(0));
    return std::chrono::duration<double>(m_table.size() > many ? std::max(usual, manyInterval) : usual);
}

void FleetRefresh::begin(std::chrono::nanoseconds now) {
    m_table.begin();
    m_plan = {FleetQuestion::up};
    m_next = 0;
    m_asked = now;
    m_time.reset();
    m_isPartial = false;
    m_doubts.clear();
    m_lacksAnswer = false;
}

/// Behind `up`, which told the machines and the moment.
void FleetRefresh::plan() {
    const bool isFirst = m_refreshes == 0;
    const bool isLook = m_refreshes % lookAgain == 0;
    m_plan.assign(everyRefresh.begin(), everyRefresh.end());
    const auto add = [this](FleetQuestion question) { m_plan.insert(m_plan.begin() + 1, question); };
    if (isFirst) {
        add(FleetQuestion::ambiguous);
    }
    if (isLook || !m_spacing) {
        add(FleetQuestion::spacing);
    }
    if (isLook || m_table.hasNameless()) {
        add(FleetQuestion::names);
    }
}

FetchRequest FleetRefresh::request() const {
    constexpr double least = 5;
    constexpr double most = 60;
    const double patience = std::clamp(interval().count() / 2, least, most);
    const FleetQuestion question = m_plan[m_next];
    const std::string text = question == FleetQuestion::spacing
                                 ? spacingText(machineMatchers(m_options, m_table.someIdentity()))
                                 : questionText(question, m_options);
    return serverRequest(m_options, text, m_time, patience);
}

void FleetRefresh::takeSpacing(const AnswerSeries& series) {
    const std::optional<double> spacing = spacingOf(series.points);
    m_spacing = spacing ? spacing : m_spacing;
}

void FleetRefresh::take(const FetchAnswer& answer) {
    const FleetQuestion question = m_plan[m_next];
    MachineTable::Rows rows;
    const ServerTold told = readServerAnswer(answer, [&](const AnswerSeries& series) {
        if (question == FleetQuestion::up && !m_time) {
            m_time = series.points.back().seconds;
        }
        if (question == FleetQuestion::spacing) {
            takeSpacing(series);
        } else {
            m_table.take(question, series, rows);
        }
    });
    m_isPartial = m_isPartial || told.hasWarnings;
    // One question may be too much for a server that answers the others; a second in a row is not waited for.
    const bool isAnswered = told.outcome == ServerTold::Outcome::answered;
    const bool wasSilent =
        std::exchange(m_lacksAnswer, told.outcome == ServerTold::Outcome::silent) && m_lacksAnswer;
    if (!isAnswered && (question == FleetQuestion::up || wasSilent)) {
        fallSilent(told.problem);
        return;
    }
    if (question == FleetQuestion::up && rows.all == rows.unknown) {
        fallSilent(rows.all == 0 ? "it knows no machine with a node_exporter that is meant here"
                                 : "its machines have not the labels that tell them apart");
        return;
    }
    if (isAnswered) {
        takeRows(question, rows);
    } else {
        doubt(std::string(questionName(question)) + ": " + told.problem);
    }
    if (question == FleetQuestion::up) {
        plan();
    }
    ++m_next;
    if (isDone()) {
        finish();
    }
}

void FleetRefresh::takeRows(FleetQuestion question, const MachineTable::Rows& rows) {
    const std::string name(questionName(question));
    if (question == FleetQuestion::ambiguous) {
        m_ambiguous = rows.all;
    } else if (question == FleetQuestion::names) {
        m_table.noteNamesAsked();
    } else if (rows.again > 0) {
        doubt(name + ": " +
              counted(rows.again, "answer more than one for a machine, the first counts",
                      "answers more than one for a machine, the first counts"));
    }
    if (rows.all > 0 && rows.unknown == rows.all && question != FleetQuestion::ambiguous) {
        doubt(name + ": its answers have not the labels that tell machines apart");
    }
}

void FleetRefresh::doubt(std::string what) {
    constexpr std::size_t most = 5;
    if (m_doubts.size() < most) {
        m_doubts.push_back(std::move(what));
    }
}

FleetOrigin FleetRefresh::origin() const {
    FleetOrigin origin;
    origin.name = m_options.name;
    origin.interval = std::chrono::duration<double>(m_spacing.value_or(0));
    constexpr double intervals = 3;
    const double longer = std::max(interval().count(), m_spacing.value_or(0));
    origin.staleAfter = std::chrono::duration<double>(intervals * longer + m_delay.value_or(0));
    return origin;
}

/// The last figures stay as they are and grow old.
void FleetRefresh::fallSilent(std::string problem) {
    m_next = m_plan.size();
    m_isSilent = true;
    auto snapshot =
        m_snapshot ? std::make_shared<FleetSnapshot>(*m_snapshot) : std::make_shared<FleetSnapshot>();
    if (snapshot->sources.empty()) {
        snapshot->sources.push_back(origin());
    }
    snapshot->sources.front().problem = std::move(problem);
    snapshot->sources.front().isSilent = true;
    m_snapshot = std::move(snapshot);
}

void FleetRefresh::finish() {
    m_table.finish(m_asked, m_isPartial);
    ++m_refreshes;
    m_isSilent = false;
    // Some engines hide what is younger than half a minute. What only grows old is no engine's habit.
    if (const std::optional<double> age = m_table.leastAge()) {
        m_delay = std::min({m_delay.value_or(*age), *age, mostDelay});
    }
    if (m_isPartial) {
        m_doubts.insert(m_doubts.begin(), "it warns that a part of the figures is missing");
    }
    if (m_ambiguous > 0) {
        doubt(counted(m_ambiguous, "machine is several in one: the identity needs one more label",
                      "machines are several in one: the identity needs one more label"));
    }
    if (m_table.askedTwice() > 0) {
        doubt(std::to_string(m_table.askedTwice()) +
              " entries share an address: several jobs ask the same machine");
    }
    auto snapshot = std::make_shared<FleetSnapshot>();
    snapshot->sources.push_back(origin());
    snapshot->sources.front().answered = m_asked;
    for (const std::string& what : m_doubts) {
        std::string& problem = snapshot->sources.front().problem;
        problem += (problem.empty() ? "" : "; ") + what;
    }
    snapshot->machines = m_table.machines();
    m_snapshot = std::move(snapshot);
}

} // namespace vantor::platform::remote
