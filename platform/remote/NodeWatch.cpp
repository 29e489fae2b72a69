// SPDX-License-Identifier: MIT
#include "platform/remote/NodeWatch.hpp"

#include "platform/time/RunLoop.hpp"

#include <tuple>
#include <utility>

namespace vantor::platform::remote {

NodeWatch::NodeWatch(NodeAddress address, Fetcher& fetcher, std::chrono::milliseconds interval,
                     std::shared_ptr<const Access> access)
    : m_address(std::move(address)),
      m_fetcher(fetcher),
      m_access(std::move(access)),
      m_progress(interval, mayFilter(m_address)),
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
    const bool isFiltered = m_progress.isFiltered();
    m_fetcher.fetch(nodeQuestion(m_address, m_access, isFiltered),
                    [self = m_self, isFiltered](const FetchAnswer& answer) {
                        auto told = std::make_shared<NodeTold>(nodeTold(answer, isFiltered));
                        RunLoop::main().post([self, told] {
                            if (*self != nullptr) {
                                (*self)->take(std::move(*told));
                            }
                        });
                    });
}

void NodeWatch::take(NodeTold told) {
    if (told.isFilterUnknown) { // the other question follows at once: nothing has changed yet
        std::ignore = m_progress.take(std::move(told));
        ask();
        return;
    }
    const std::chrono::duration<double> wait = m_progress.take(std::move(told));
    m_timer = NSTimer::scheduledTimerWithTimeInterval(
        wait.count(), [this] { ask(); }, false);
    if (m_handler) {
        m_handler();
    }
}

} // namespace vantor::platform::remote
