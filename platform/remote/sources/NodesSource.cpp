// SPDX-License-Identifier: MIT
#include "platform/remote/sources/NodesSource.hpp"

#include "platform/remote/NodeWatch.hpp"
#include "platform/time/RunLoop.hpp"

#include <algorithm>
#include <random>
#include <unordered_map>
#include <utility>

namespace vantor::platform::remote {

namespace {

using std::chrono::milliseconds;

/// Answers that come in this close to each other are taken up together.
constexpr milliseconds burst{100};

milliseconds staleAfter(milliseconds interval) {
    constexpr milliseconds least{10000}; // an answer may take five seconds
    return std::max(least, 3 * interval);
}

void cancel(const std::shared_ptr<NSTimer>& timer) {
    if (timer != nullptr) {
        timer->invalidate();
    }
}

std::shared_ptr<NSTimer> after(Instant::duration time, WorkItem work) {
    return NSTimer::scheduledTimerWithTimeInterval(std::chrono::duration<double>(time).count(),
                                                   std::move(work), false);
}

} // namespace

milliseconds snapshotPace(std::size_t machines) {
    constexpr milliseconds least{200};
    constexpr milliseconds most{2000};
    return std::min(most, least + milliseconds(machines));
}

NodesSource::NodesSource(std::string name, Fetcher& fetcher, milliseconds interval)
    : m_fetcher(fetcher),
      m_interval(interval),
      m_inbox(std::make_shared<AnswerInbox>()),
      m_self(std::make_shared<NodesSource*>(this)) {
    m_origin.name = std::move(name);
}

NodesSource::~NodesSource() {
    *m_self = nullptr;
    cancel(m_asking);
    cancel(m_gathering);
}

void NodesSource::watch(const std::vector<NodeTarget>& targets) {
    auto before = std::exchange(m_nodes, {});
    for (const NodeTarget& target : targets) {
        std::shared_ptr<WatchedNode>& node = m_nodes[target.address.url];
        if (node != nullptr) {
            continue;
        }
        if (const auto known = before.find(target.address.url); known != before.end()) {
            node = std::move(known->second);
            node->describe(target);
        } else {
            node = std::make_shared<WatchedNode>(target, m_interval);
        }
    }
    for (const auto& [url, node] : before) {
        if (node != nullptr) {
            node->isGone = true;
        }
    }
    m_isKnown = true;
    if (m_isRunning) {
        spread();
    }
    publish();
}

void NodesSource::complain(std::string problem, bool isSilent) {
    m_origin.problem = std::move(problem);
    m_origin.isSilent = isSilent;
    m_isKnown = m_isKnown || isSilent;
    publish();
}

void NodesSource::start() {
    if (std::exchange(m_isRunning, true)) {
        return;
    }
    const auto now = RunLoop::main().now().time_since_epoch();
    for (const auto& [url, node] : m_nodes) {
        // A share of an hour in which nobody looked is no figure of now.
        if (now - node->progress().state().taken > 2 * m_interval) {
            node->progress().forgetReading();
        }
    }
    spread();
}

void NodesSource::pause() {
    m_isRunning = false;
    cancel(m_asking);
}

/// Gives each machine that has waited for its question a place in the next moment.
void NodesSource::spread() {
    static std::minstd_rand numbers{std::random_device()()};
    constexpr milliseconds each{2};
    const Instant now = RunLoop::main().now();
    const milliseconds all = std::min(m_interval, each * static_cast<int>(m_nodes.size()));
    std::uniform_int_distribution<milliseconds::rep> place(0, all.count());
    for (const auto& [url, node] : m_nodes) {
        const bool isNew = node->asked == Instant();
        if (isNew || (node->due && *node->due <= now)) {
            node->asked = now;
            node->due = now + milliseconds(place(numbers));
        }
    }
    askDue();
}

/// Asks all whose time has come, or comes in a moment: one waking for many.
void NodesSource::askDue() {
    cancel(m_asking);
    constexpr milliseconds most{250};
    const Instant now = RunLoop::main().now();
    const Instant soon = now + std::min(most, m_interval / 20);
    std::optional<Instant> next;
    for (const auto& [url, node] : m_nodes) {
        if (node->due && *node->due <= soon) {
            ask(node);
        } else if (node->due) {
            next = std::min(next.value_or(*node->due), *node->due);
        }
    }
    if (next) {
        m_asking = after(*next - now, [this] { askDue(); });
    }
}

void NodesSource::ask(const std::shared_ptr<WatchedNode>& node) {
    node->asked = RunLoop::main().now();
    node->due.reset();
    m_inbox->expect();
    const bool isFiltered = node->progress().isFiltered();
    FetchRequest question = nodeQuestion(node->target().address, node->target().access, isFiltered);
    question.isLastForNow = m_nodes.size() > mostConnections;
    question.isDoubtful = !node->progress().state().problem.empty();
    m_fetcher.fetch(std::move(question),
                    [self = m_self, inbox = m_inbox, node, isFiltered](const FetchAnswer& answer) {
                        if (inbox->put({node, nodeTold(answer, isFiltered)})) {
                            RunLoop::main().post([self] {
                                if (*self != nullptr) {
                                    (*self)->gather();
                                }
                            });
                        }
                    });
}

/// Answers have come in: takes them up when all are there, or with those that follow closely, and no faster
/// than snapshots of so many are of use.
void NodesSource::gather() {
    const Instant now = RunLoop::main().now();
    const Instant earliest = m_gathered ? std::max(now, *m_gathered + snapshotPace(m_nodes.size())) : now;
    if (m_inbox->isComplete() && earliest == now) {
        takeAnswers();
    } else if (m_gathering == nullptr || !m_gathering->isValid()) {
        m_gathering = after(std::max<Instant::duration>(burst, earliest - now), [this] { takeAnswers(); });
    }
}

void NodesSource::takeAnswers() {
    cancel(m_gathering);
    m_gathered = RunLoop::main().now();
    for (AnswerInbox::Answer& answer : m_inbox->take()) {
        if (!answer.node->isGone) {
            answer.node->take(std::move(answer.told));
        }
    }
    if (m_isRunning) {
        askDue();
    }
    publish();
}

bool NodesSource::isSettled() const {
    return m_isKnown &&
           std::ranges::all_of(m_nodes, [](const auto& entry) { return entry.second->isSettled(); });
}

FleetOrigin NodesSource::origin() const {
    FleetOrigin origin = m_origin;
    origin.staleAfter = staleAfter(m_interval);
    std::chrono::nanoseconds interval{};
    for (const auto& [url, node] : m_nodes) {
        const NodeState& state = node->progress().state();
        if (state.figures && state.problem.empty()) {
            interval = std::max(interval, state.figures->interval);
            origin.answered = std::max(origin.answered.value_or(state.taken), state.taken);
        }
    }
    origin.interval = interval.count() > 0 ? std::chrono::duration<double>(interval) : m_interval;
    return origin;
}

void NodesSource::publish() {
    auto snapshot = std::make_shared<FleetSnapshot>();
    snapshot->sources.push_back(origin());
    snapshot->machines.reserve(m_nodes.size());
    std::unordered_map<std::string_view, int> ownNames;
    for (const auto& [url, node] : m_nodes) {
        ++ownNames[node->ownName()];
    }
    for (const auto& [url, node] : m_nodes) {
        const std::string& own = node->ownName();
        const bool isOwn = !own.empty() && ownNames.at(own) == 1;
        snapshot->machines.push_back(node->machine(isOwn ? own : node->target().address.name));
    }
    m_snapshot = std::move(snapshot);
    if (m_handler) {
        m_handler();
    }
}

std::unique_ptr<MachineWatch> NodesSource::watchOf(std::string_view key) const {
    const auto known = m_nodes.find(key);
    if (known == m_nodes.end()) {
        return nullptr;
    }
    const WatchedNode& node = *known->second;
    auto watch =
        std::make_unique<NodeWatch>(node.target().address, m_fetcher, m_interval, node.target().access);
    watch->goOnFrom(node.progress());
    return watch;
}

} // namespace vantor::platform::remote
