// SPDX-License-Identifier: MIT
#pragma once

#include "platform/time/DispatchQueue.hpp"

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <mutex>
#include <thread>
#include <vector>

namespace vantor::platform {

/// A concurrent queue on at most `most` threads. To wake a thread costs more than most blocks take, so one
/// thread is in charge of all that are waiting; the main loop is told of what they posted when it is through.
/// Another one takes over, and is started if need be, where it says that it will wait, or where a new block
/// finds one that has waited for a tenth of a second. Where not even one thread can be started, the
/// submitting thread runs the block itself. The destructor runs what was submitted and joins.
class WorkerPool final : public DispatchQueue {
public:
    explicit WorkerPool(std::size_t most);
    ~WorkerPool() override;
    WorkerPool(const WorkerPool&) = delete;
    WorkerPool& operator=(const WorkerPool&) = delete;

    void async(WorkItem block) override;

    /// `dispatch_will_wait`, for the pool whose thread calls it.
    static void willWait();

private:
    struct Waiting {
        WorkItem block;
        std::chrono::steady_clock::time_point since;
    };

    void appoint();
    void work();
    [[nodiscard]] bool isInCharge() const;
    void takeCharge();
    void takeBlock(std::unique_lock<std::mutex>& lock);
    void rest(std::unique_lock<std::mutex>& lock);

    const std::size_t m_most;
    std::mutex m_mutex;
    std::condition_variable m_called;
    std::deque<Waiting> m_blocks;
    std::vector<std::thread> m_threads;
    std::uint64_t m_term = 0;  ///< of charge; whoever has an earlier one has been relieved
    bool m_hasCharge = false;  ///< whether a thread is in charge, or on its way
    std::size_t m_resting = 0; ///< threads that wait to be called
    std::size_t m_calls = 0;   ///< not yet heard by them
    bool m_ending = false;
};

} // namespace vantor::platform
