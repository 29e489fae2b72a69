// SPDX-License-Identifier: MIT
#include "hosts/common/ListedNodes.hpp"

#include <utility>

namespace vantor::hosts::common {

namespace remote = platform::remote;

ListedNodes::ListedNodes(std::string name, std::vector<remote::NodeTarget> fixed, TargetFiles files,
                         std::shared_ptr<const remote::Access> access, remote::Fetcher& fetcher,
                         std::chrono::milliseconds interval)
    : m_nodes(std::move(name), fetcher, interval),
      m_fixed(std::move(fixed)),
      m_files(std::move(files)),
      m_access(std::move(access)) {
    takeUp();
}

void ListedNodes::start() {
    constexpr double seconds = 2;
    look();
    m_nodes.start();
    stopLooking();
    m_looking = platform::NSTimer::scheduledTimerWithTimeInterval(
        seconds, [this] { look(); }, true);
}

void ListedNodes::pause() {
    stopLooking();
    m_nodes.pause();
}

void ListedNodes::stopLooking() {
    if (m_looking != nullptr) {
        m_looking->invalidate();
    }
}

void ListedNodes::look() {
    if (m_files.mayHaveChanged()) {
        takeUp();
    }
}

void ListedNodes::takeUp() {
    m_files.read();
    std::vector<remote::NodeTarget> targets = m_fixed;
    for (remote::NodeTarget& target : m_files.targets()) {
        target.access = m_access;
        targets.push_back(std::move(target));
    }
    m_nodes.complain(m_files.problem(), !m_files.isKnown() && m_fixed.empty());
    m_nodes.watch(targets);
}

} // namespace vantor::hosts::common
