// SPDX-License-Identifier: MIT
#include "platform/time/WorkerPool.hpp"

#include "platform/time/RunLoop.hpp"

#include <atomic>
#include <system_error>
#include <utility>

namespace vantor::platform {

namespace {

using Clock = std::chrono::steady_clock;

/// Of a block that waits behind one which has not said that it will take long.
constexpr std::chrono::milliseconds patience{100};

std::atomic<std::uint64_t> workItems{0};
thread_local std::uint64_t workItem = 0;
thread_local WorkerPool* ownPool = nullptr; // of a thread that is one's
thread_local std::uint64_t ownTerm = 0;

void run(WorkItem block) {
    workItem = ++workItems;
    block();
    block = {}; // what it holds goes while its work is still going on
    workItem = 0;
}

} // namespace

std::uint64_t currentWorkItem() {
    return workItem;
}

void dispatch_will_wait() {
    WorkerPool::willWait();
}

WorkerPool::WorkerPool(std::size_t most) : m_most(most) {}

WorkerPool::~WorkerPool() {
    {
        const std::scoped_lock lock(m_mutex);
        m_ending = true;
    }
    m_called.notify_all();
    for (std::thread& thread : m_threads) {
        thread.join();
    }
}

void WorkerPool::async(WorkItem block) {
    {
        const std::scoped_lock lock(m_mutex);
        m_blocks.push_back({std::move(block), Clock::now()});
        if (!m_hasCharge || m_blocks.back().since - m_blocks.front().since > patience) {
            appoint();
        }
        if (!m_threads.empty()) {
            return;
        }
        block = std::move(m_blocks.back().block);
        m_blocks.pop_back();
    }
    run(std::move(block)); // a user who may have no more threads still gets figures
}

/// Puts a thread that rests, or a new one, in charge; where there is none, the first that gets through with
/// its block takes it.
void WorkerPool::appoint() {
    m_hasCharge = false;
    if (m_resting > m_calls) {
        ++m_calls;
        m_called.notify_one();
    } else if (m_threads.size() < m_most && !m_ending) {
        try {
            m_threads.emplace_back([this] { work(); });
        } catch (const std::system_error&) { // none to be had now (ulimit -u); the next block tries again
            return;
        }
    } else {
        return;
    }
    ++m_term;
    m_hasCharge = true;
}

void WorkerPool::willWait() {
    RunLoop::main().endQuietPosts();
    if (ownPool != nullptr) {
        const std::scoped_lock lock(ownPool->m_mutex);
        if (ownPool->isInCharge()) {
            ownPool->m_hasCharge = false;
            if (!ownPool->m_blocks.empty()) {
                ownPool->appoint();
            }
        }
    }
}

bool WorkerPool::isInCharge() const {
    return m_hasCharge && ownTerm == m_term;
}

void WorkerPool::takeCharge() {
    ownTerm = ++m_term;
    m_hasCharge = true;
}

void WorkerPool::work() {
    std::unique_lock lock(m_mutex);
    ownPool = this;
    ownTerm = m_term;
    for (;;) {
        if (!m_hasCharge && !m_blocks.empty()) {
            takeCharge();
        }
        if (isInCharge() && !m_blocks.empty()) {
            takeBlock(lock);
        } else if (m_ending) {
            break;
        } else {
            rest(lock);
        }
    }
    lock.unlock();
    RunLoop::main().endQuietPosts();
}

void WorkerPool::takeBlock(std::unique_lock<std::mutex>& lock) {
    WorkItem block = std::move(m_blocks.front().block);
    m_blocks.pop_front();
    lock.unlock();
    RunLoop::beginQuietPosts();
    run(std::move(block));
    lock.lock();
}

void WorkerPool::rest(std::unique_lock<std::mutex>& lock) {
    m_hasCharge = m_hasCharge && !isInCharge();
    ++m_resting;
    lock.unlock();
    RunLoop::main().endQuietPosts();
    lock.lock();
    m_called.wait(lock, [this] { return m_ending || m_calls > 0; });
    --m_resting;
    if (m_calls > 0) {
        --m_calls;
        ownTerm = m_term;
    }
}

} // namespace vantor::platform
