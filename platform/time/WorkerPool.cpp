// SPDX-License-Identifier: MIT
#include "platform/time/WorkerPool.hpp"

#include <atomic>
#include <system_error>
#include <utility>

namespace vantor::platform {

namespace {
std::atomic<std::uint64_t> workItems{0};
thread_local std::uint64_t workItem = 0;

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

WorkerPool::WorkerPool(std::size_t most) : m_most(most) {}

WorkerPool::~WorkerPool() {
    {
        const std::scoped_lock lock(m_mutex);
        m_ending = true;
    }
    m_changed.notify_all();
    for (std::thread& thread : m_threads) {
        thread.join();
    }
}

void WorkerPool::async(WorkItem block) {
    {
        const std::scoped_lock lock(m_mutex);
        if (m_blocks.size() >= m_idle && m_threads.size() < m_most) {
            startThread();
        }
        if (!m_threads.empty()) {
            m_blocks.push_back(std::move(block));
            m_changed.notify_one();
            return;
        }
    }
    run(std::move(block)); // a user who may have no more threads still gets figures
}

void WorkerPool::startThread() {
    try {
        m_threads.emplace_back([this] { work(); });
    } catch (const std::system_error&) { // none to be had now (ulimit -u); the next block tries again
    }
}

void WorkerPool::work() {
    std::unique_lock lock(m_mutex);
    for (;;) {
        ++m_idle;
        m_changed.wait(lock, [this] { return m_ending || !m_blocks.empty(); });
        --m_idle;
        if (m_blocks.empty()) {
            return;
        }
        WorkItem block = std::move(m_blocks.front());
        m_blocks.pop_front();
        lock.unlock();
        run(std::move(block));
        lock.lock();
    }
}

} // namespace vantor::platform
