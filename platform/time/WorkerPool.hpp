// SPDX-License-Identifier: MIT
#pragma once

#include "platform/time/DispatchQueue.hpp"

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <mutex>
#include <thread>
#include <vector>

namespace vantor::platform {

/// A concurrent queue on at most `most` threads. A thread is started only when a block finds none idle; where
/// not even one can be started, the submitting thread runs the block itself. The destructor runs what was
/// submitted and joins.
class WorkerPool final : public DispatchQueue {
public:
    explicit WorkerPool(std::size_t most);
    ~WorkerPool() override;
    WorkerPool(const WorkerPool&) = delete;
    WorkerPool& operator=(const WorkerPool&) = delete;

    void async(WorkItem block) override;

private:
    void startThread();
    void work();

    const std::size_t m_most;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<WorkItem> m_blocks;
    std::vector<std::thread> m_threads;
    std::size_t m_idle = 0;
    bool m_ending = false;
};

} // namespace vantor::platform
