// SPDX-License-Identifier: MIT
#pragma once

#include "platform/core/Current.hpp"

#include <concepts>
#include <functional>
#include <type_traits>
#include <utility>

namespace vantor::platform {

/// Work for later, or for another thread: it runs with what was current on the thread that made it, at that
/// moment. Queues, the run loop and timers take these, so that what a block samples is the machine of whoever
/// submitted it. For a thread of one's own: `std::thread(WorkItem([…] { … }))`.
class WorkItem {
public:
    WorkItem() = default; ///< nothing to run: must not be called

    template<std::invocable Work>
        requires(!std::same_as<std::remove_cvref_t<Work>, WorkItem>)
    WorkItem(Work work) : m_work(std::move(work)) {}

    void operator()() const {
        const Entered entered(m_context);
        m_work();
    }

private:
    class Entered {
    public:
        explicit Entered(const Context& context)
            : m_before(std::exchange(Context::ofThisThread(), context)) {}
        ~Entered() { Context::ofThisThread() = m_before; }
        Entered(const Entered&) = delete;
        Entered& operator=(const Entered&) = delete;

    private:
        Context m_before;
    };

    Context m_context = Context::ofThisThread();
    std::function<void()> m_work;
};

} // namespace vantor::platform
